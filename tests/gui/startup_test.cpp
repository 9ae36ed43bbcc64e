// Start-up of the frame with its splash: the auxiliary files, OPTIONS.txt, and the first
// open dialog.
#include <QApplication>
#include <QFile>
#include <QMdiArea>
#include <QStandardPaths>
#include <QTest>

#include "GuiTestSupport.h"
#include "shell/MDIForm1.h"
#include "shell/SessionState.h"

using namespace zarvion::gui;
using namespace zarvion::gui::testing;

class StartupTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void readOnlyOptionsFileEndsTheProgram()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        const QString options = QDir(folder.path()).filePath(QStringLiteral("AssistFiles/OPTIONS.txt"));
        QVERIFY(QFile::exists(options));
        QFile::setPermissions(options, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
        FrameOptions o;
        o.appPath = folder.path();
        MDIForm1 frame(o);
        QTRY_VERIFY_WITH_TIMEOUT(!boxes.shown.isEmpty(), 3000);
        QCOMPARE(boxes.shown.first().style, 16);
        QCOMPARE(boxes.shown.first().text, QStringLiteral("File ") + options +
                     QStringLiteral(" is read-only, remove this attribute. The program has been terminated."));
        QTRY_VERIFY_WITH_TIMEOUT(!frame.isVisible(), 3000); // the close walk ran
        QCOMPARE(frame.mdiArea()->subWindowList().size(), 0);
    }

    void missingCursorFileEndsTheProgram()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        const QString cursor = QDir(folder.path()).filePath(QStringLiteral("AssistFiles/Dragcopy.cur"));
        QVERIFY(QFile::remove(cursor));
        FrameOptions o;
        o.appPath = folder.path();
        MDIForm1 frame(o);
        QTRY_VERIFY_WITH_TIMEOUT(!boxes.shown.isEmpty(), 3000);
        QCOMPARE(boxes.shown.first().style, 16);
        QVERIFY(boxes.shown.first().text.startsWith(QStringLiteral("The auxiliary file ")));
        QVERIFY(boxes.shown.first().text.contains(QStringLiteral("Dragcopy.cur")));
        QVERIFY(boxes.shown.first().text.endsWith(QStringLiteral("The program has been terminated.")));
        QTRY_VERIFY_WITH_TIMEOUT(!frame.isVisible(), 3000);
    }

    void brokenOptionsAreReportedAndCancellingTheFirstDialogLeavesAnEmptyFrame()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        QFile options(QDir(folder.path()).filePath(QStringLiteral("AssistFiles/OPTIONS.txt")));
        QVERIFY(options.open(QIODevice::WriteOnly));
        options.write("1, 2, 3\r\n"); // far fewer than 17 values
        options.close();
        QStringList dialogs;
        SetFileDialogHandler([&](bool save, const QString& filter) {
            dialogs << (save ? QStringLiteral("save ") : QStringLiteral("open ")) + filter;
            return QString(); // cancelled
        });
        FrameOptions o;
        o.appPath = folder.path();
        MDIForm1 frame(o);
        QCOMPARE(boxes.texts(), QStringList{QString::fromLatin1(zarvion::shell::OptionsErrorText)});
        QCOMPARE(boxes.shown.first().style, 16);
        // The splash ends after 7.5 s in the first open dialog, with the general filter.
        QTRY_VERIFY_WITH_TIMEOUT(!dialogs.isEmpty(), 12000);
        QCOMPARE(dialogs.first(),
                 QStringLiteral("open All Files (*.*)|*.*|Windows Text (*.txt)|*.txt|Zarvion Charts (*.pg)|*.pg"));
        QVERIFY(frame.isVisible());
        QCOMPARE(frame.mdiArea()->subWindowList().size(), 0);
        QCOMPARE(boxes.shown.size(), 1);
    }

    void commaAsDecimalSymbolShowsTheHelpInsteadOfStarting()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        QFile::remove(QDir(folder.path()).filePath(QStringLiteral("AssistFiles/OPTIONS.txt")));
        bool dialogShown = false;
        SetFileDialogHandler([&](bool, const QString&) {
            dialogShown = true;
            return QString();
        });
        FrameOptions o;
        o.appPath = folder.path();
        // A system that writes -1058201048,571428... with a comma.
        o.numberFormatter = [](double v) { return QString::number(v, 'f', 6).replace('.', ',').toStdString(); };
        MDIForm1 frame(o);
        QVERIFY(!frame.numberFormatMessage().isEmpty());
        QVERIFY(boxes.shown.isEmpty()); // the message waits for the frame's timer
        QTRY_VERIFY_WITH_TIMEOUT(!boxes.shown.isEmpty(), 3000);
        QCOMPARE(boxes.shown.first().style, 16);
        QCOMPARE(boxes.shown.first().text,
                 QStringLiteral("Decimal symbol of the number format isn't recognized; Zarvion requires "
                                "the point as the decimal symbol.  The next message contains an "
                                "information about setting the number format."));
        QTRY_COMPARE(frame.mdiArea()->subWindowList().size(), 1);
        QCOMPARE(frame.activeChild()->windowTitle(), QStringLiteral("Zarvion   Number Format"));
        // Neither the splash nor the options file ran: a missing OPTIONS.txt went unreported.
        QTest::qWait(1000);
        QCOMPARE(boxes.shown.size(), 1);
        QVERIFY(!dialogShown);
    }
};

QTEST_MAIN(StartupTest)
#include "startup_test.moc"
