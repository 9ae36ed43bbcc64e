// The text window, its undo, find and replace, and the frame's close walk, driven through
// the real widgets.
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QToolBar>

#include "GuiTestSupport.h"
#include "shell/MDIForm1.h"
#include "shell/SessionState.h"
#include "textdocs/Help1.h"
#include "textdocs/RES_FIND.h"
#include "textdocs/RES_ShowFile.h"
#include "textdocs/UndoAdapter.h"

using namespace zarvion::gui;
using namespace zarvion::gui::testing;

namespace {

//! Waits past the 250 ms pause until the undo engine has taken its snapshot (its timer has
//! stopped), however loaded the machine is; false if it never does.
[[nodiscard]] bool waitForSnapshot(const RES_ShowFile& doc)
{
    QTest::qWait(330);
    return QTest::qWaitFor([&doc] { return !doc.undo()->timerRunning(); }, 10000);
}

} // namespace

class TextWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void undoKeepsAtMostTwentyOneStatesAndRedoEndsWithTheNextSnapshot()
    {
        RES_ShowFile doc;
        doc.show();
        QVERIFY(waitForSnapshot(doc)); // baseline
        QCOMPARE(doc.undo()->undoCount(), 1);
        QVERIFY(!doc.canUndo());
        for (int i = 0; i < 25; ++i) {
            QTest::keyClick(doc.box(), Qt::Key_A);
            QVERIFY(waitForSnapshot(doc));
        }
        // Baseline and 25 edits make 26 states; the five earliest (lengths 0-4) are gone.
        QCOMPARE(doc.undo()->undoCount(), 21);
        for (int i = 0; i < 25; ++i)
            QTest::keyClick(doc.box(), Qt::Key_Z, Qt::ControlModifier);
        // 20 steps back from 21 states; the extra Ctrl+Z are consumed without effect.
        QCOMPARE(doc.undo()->undoCount(), 1);
        QCOMPARE(doc.undo()->redoCount(), 20);
        QCOMPARE(doc.box()->toPlainText(), QString(5, QLatin1Char('a')));
        QTest::keyClick(doc.box(), Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(doc.box()->toPlainText(), QString(6, QLatin1Char('a')));
        // Typing after an undo: redo stays possible until the pause has passed.
        QTest::keyClick(doc.box(), Qt::Key_B);
        QVERIFY(doc.canRedo());
        QVERIFY(waitForSnapshot(doc));
        QVERIFY(!doc.canRedo());
        QVERIFY(doc.canUndo());
    }

    void harmlessKeysLeaveADocumentClean()
    {
        RES_ShowFile doc;
        doc.show();
        doc.box()->setPlainText(QStringLiteral("some text"));
        QVERIFY(!doc.isModified());
        for (int key : {int(Qt::Key_F1), int(Qt::Key_Left), int(Qt::Key_End), int(Qt::Key_Escape)})
            QTest::keyClick(doc.box(), Qt::Key(key));
        QTest::keyClick(doc.box(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(doc.box(), Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!doc.isModified());
        QTest::keyClick(doc.box(), Qt::Key_X);
        QVERIFY(doc.isModified());
    }

    void replaceAllCountsEveryHitAndEnds()
    {
        MessageRecorder boxes;
        RES_ShowFile doc;
        doc.show();
        doc.box()->setPlainText(QStringLiteral("foo bar Foo foofoo\nfoo."));
        // The replacement holds the search text: the search passes each replacement and ends.
        QCOMPARE(doc.Replace_ALL(QStringLiteral("foo"), QStringLiteral("foofoo"), 0), 5);
        QCOMPARE(boxes.last(), QStringLiteral("In the document, 5 replacement(s) have been made."));
        QCOMPARE(doc.box()->toPlainText(),
                 QStringLiteral("foofoo bar foofoo foofoofoofoo\nfoofoo."));

        doc.box()->setPlainText(QStringLiteral("foo bar Foo foofoo\nfoo."));
        // Whole word and match case: "foo" at 0 and in "foo." only.
        QCOMPARE(doc.Replace_ALL(QStringLiteral("foo"), QStringLiteral("x"), 2 + 4), 2);
        QCOMPARE(doc.box()->toPlainText(), QStringLiteral("x bar Foo foofoo\nx."));

        RES_ShowFile clean;
        clean.show();
        clean.box()->setPlainText(QStringLiteral("abc"));
        QVERIFY(!clean.isModified());
        QCOMPARE(clean.Replace_ALL(QStringLiteral("zzz"), QStringLiteral("y"), 0), 0);
        QCOMPARE(boxes.last(), QStringLiteral("In the document, 0 replacement(s) have been made."));
        QVERIFY(clean.isModified()); // marked even when nothing was replaced
    }

    void findWrapsAfterOneEndMessage()
    {
        MessageRecorder boxes;
        RES_ShowFile doc;
        doc.show();
        doc.box()->setPlainText(QStringLiteral("one two one"));
        doc.Find_Rich(QStringLiteral("one"), 0, true);
        QCOMPARE(doc.FindResult(), 0);
        doc.Find_Rich(QStringLiteral("one"), 0, true);
        QCOMPARE(doc.FindResult(), 8);
        QCOMPARE(doc.box()->textCursor().selectedText(), QStringLiteral("one"));
        QVERIFY(boxes.shown.isEmpty());
        doc.Find_Rich(QStringLiteral("one"), 0, true);
        QCOMPARE(doc.FindResult(), -1);
        QCOMPARE(boxes.texts(), QStringList{QStringLiteral("End of search.")});
        doc.Find_Rich(QStringLiteral("one"), 0, true);
        QCOMPARE(doc.FindResult(), 0); // wrapped to the top
    }

    void solverDocumentIsLockedAndFindOnlyFinds()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        MDIForm1 frame(folder.frameOptions());
        const QString path = folder.copy(fixture("toy_mechanism.txt"), QStringLiteral("toy.txt"));
        frame.OpenDocument(path);
        QCOMPARE(frame.Children().size(), 1);
        auto* doc = qobject_cast<RES_ShowFile*>(frame.Children().first());
        QVERIFY(doc);
        QVERIFY(doc->GetIsSolFile());
        QVERIFY(doc->box()->isReadOnly());
        QCOMPARE(doc->box()->palette().color(QPalette::Base), QColor(180, 190, 210));
        const QString before = doc->box()->toPlainText();
        QTest::keyClicks(doc->box(), QStringLiteral("xyz"));
        QCOMPARE(doc->box()->toPlainText(), before);

        RES_FIND* find = RES_FIND::Open();
        QVERIFY(find->Command1->isEnabled());
        QVERIFY(!find->Command3->isEnabled());
        QVERIFY(!find->Command4->isEnabled());
        QVERIFY(!find->Text2->isEnabled());
        find->Text1->setText(QStringLiteral("THERMO"));
        find->Command1->click();
        QCOMPARE(doc->box()->textCursor().selectedText(), QStringLiteral("THERMO"));

        // The same file again: a notice and no second window.
        frame.OpenDocument(path);
        QCOMPARE(frame.Children().size(), 1);
        QVERIFY(boxes.last().startsWith(QStringLiteral("The solver file is already opened.")));

        // A refused extension gets its message and opens nothing.
        const QString pdf = folder.copy(fixture("toy_mechanism.txt"), QStringLiteral("a.PDF"));
        frame.OpenDocument(pdf);
        QCOMPARE(boxes.last(), QStringLiteral("The specified Path/File name ") + pdf +
                                   QStringLiteral(" cannot be accessed or is invalid."));
        QCOMPARE(frame.Children().size(), 1);
    }

    void toolbarKeysCallTheActiveChildByName()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        MDIForm1 frame(folder.frameOptions());
        QVERIFY(!frame.Toolbar5->isVisibleTo(&frame)); // no child: no toolbar
        const QString caption = RES_ShowFile::NewTextDocument();
        QCOMPARE(caption, QStringLiteral("Text Doc1"));
        QCOMPARE(RES_ShowFile::NewTextDocument(), QStringLiteral("Text Doc2"));
        auto* doc = qobject_cast<RES_ShowFile*>(frame.activeChild());
        QVERIFY(doc);
        frame.SetToolbarMode(5);
        QVERIFY(frame.Toolbar5->isVisibleTo(&frame));
        QVERIFY(!frame.Toolbar2->isVisibleTo(&frame));
        doc->box()->setPlainText(QStringLiteral("abc"));
        QVERIFY(waitForSnapshot(*doc));
        doc->box()->setPlainText(QStringLiteral("abcd"));
        QVERIFY(waitForSnapshot(*doc));
        frame.toolbarAction(frame.Toolbar5, QStringLiteral("RICH_UNDO"))->trigger();
        QCOMPARE(doc->box()->toPlainText(), QStringLiteral("abc"));
        frame.toolbarAction(frame.Toolbar5, QStringLiteral("RICH_REDO"))->trigger();
        QCOMPARE(doc->box()->toPlainText(), QStringLiteral("abcd"));

        // A chart key on a text window: the operation is missing and the reporter says so.
        frame.toolbarAction(frame.Toolbar2, QStringLiteral("CUTSUBSET"))->trigger();
        QVERIFY(boxes.last().startsWith(QStringLiteral("MDI#102. ")));
        QVERIFY(boxes.last().contains(QStringLiteral("CUTSS")));
    }

    void closeWalkStopsAtACancelledSaveQuestion()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        MDIForm1 frame(folder.frameOptions());
        const QString plain = QDir(folder.path()).filePath(QStringLiteral("notes.txt"));
        {
            QFile file(plain);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("plain notes\r\n");
        }
        frame.OpenDocument(plain);
        QVERIFY2(boxes.shown.isEmpty(), qPrintable(boxes.last()));
        RES_ShowFile::NewTextDocument();
        QCOMPARE(frame.Children().size(), 2);
        for (QWidget* w : frame.Children())
            qobject_cast<RES_ShowFile*>(w)->MUStSaVE_RICH();

        boxes.answers = {AnswerCancel};
        QVERIFY(!frame.CloseWalk());
        QVERIFY(zarvion::shell::Session().CancelClose);
        QCOMPARE(frame.Children().size(), 2); // the walk stopped; the frame stays
        QCOMPARE(boxes.shown.size(), 1);
        QCOMPARE(boxes.shown.first().style & 7, 3); // Yes, No and Cancel
        QCOMPARE(boxes.shown.first().title, QStringLiteral("ZARVION"));
        QVERIFY(boxes.shown.first().text.startsWith(QStringLiteral("Do you want to save ")));

        // Answering No for both: every window closes and the frame closes.
        boxes.shown.clear();
        boxes.answers = {AnswerNo, AnswerNo};
        QVERIFY(frame.CloseWalk());
        QCOMPARE(boxes.shown.size(), 2);
        const QStringList asked = boxes.texts();
        QVERIFY(asked.contains(QStringLiteral("Do you want to save the text document Text Doc1?")));
        QVERIFY(asked.contains(QStringLiteral("Do you want to save changes to ") + plain + "?"));
    }

    void saveWritesTheBytesBackAndANewDocumentAsksForAName()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        const QString path = QDir(folder.path()).filePath(QStringLiteral("latin.txt"));
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("caf\xe9 1\r\nline 2\r\n");
        }
        RES_ShowFile doc;
        bool failed = true;
        doc.OPEN_Rich(path, failed);
        QVERIFY(!failed);
        doc.box()->moveCursor(QTextCursor::End);
        QTest::keyClicks(doc.box(), QStringLiteral("end"));
        QVERIFY(doc.isModified());
        doc.SVTXT(failed);
        QVERIFY(!failed);
        QVERIFY(!doc.isModified());
        QFile back(path);
        QVERIFY(back.open(QIODevice::ReadOnly));
        QCOMPARE(back.readAll(), QByteArray("caf\xe9 1\r\nline 2\r\nend"));

        // Without a path, Save asks for one; a cancelled dialog fails the save.
        RES_ShowFile fresh;
        fresh.box()->setPlainText(QStringLiteral("x"));
        fresh.SVTXT(failed);
        QVERIFY(failed);
        const QString chosen = QDir(folder.path()).filePath(QStringLiteral("chosen.txt"));
        SetFileDialogHandler([&](bool save, const QString&) { return save ? chosen : QString(); });
        fresh.SVTXT(failed);
        QVERIFY(!failed);
        QCOMPARE(fresh.MePath(), chosen);
        QVERIFY(QFile::exists(chosen));
    }

    void helpWindowKeepsItsTableAndCannotBeChanged()
    {
        Help1 help;
        help.show();
        QCOMPARE(help.windowTitle(), QStringLiteral("Zarvion   Number Format"));
        const QString text = help.box()->toPlainText();
        QVERIFY(text.startsWith(QStringLiteral("Number Format\n\nIn most text databases")));
        QVERIFY(text.contains(QStringLiteral(
            "Decimal Symbol          . (Point)   123456789.00    123456789,00   \n")));
        QVERIFY(help.box()->isReadOnly());
        QTest::keyClicks(help.box(), QStringLiteral("abc"));
        QCOMPARE(help.box()->toPlainText(), text);
        help.setTextSize(14);
        QCOMPARE(help.box()->font().pointSize(), 14);
    }
};

QTEST_MAIN(TextWindowTest)
#include "textwindow_test.moc"
