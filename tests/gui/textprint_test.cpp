// Text printing: the page set-up's checks, the print preview's pages, headings and numbers,
// the selection, and a PDF printed from the preview, read back with pdftotext and pdftoppm.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <functional>

#include "GuiTestSupport.h"
#include "shell/MDIForm1.h"
#include "shell/SessionState.h"
#include "textdocs/RES_PAGESETUP.h"
#include "textdocs/RES_ShowFile.h"
#include "textdocs/TextReport.h"

using namespace zarvion::gui;
using namespace zarvion::gui::testing;

namespace {

//! Lines "Line 001 ..." to "Line n ...", each of 40 characters.
QString numberedLines(int n)
{
    QStringList lines;
    for (int i = 1; i <= n; ++i)
        lines << QStringLiteral("Line %1 of the reaction list text").arg(i, 3, 10, QLatin1Char('0')).leftJustified(40, '.');
    return lines.join('\n');
}

//! What one preview showed, and the PDF printed from it.
struct PreviewRun {
    int pages = -1;
    QString pdf;
};

//! Sets the set-up dialog's fields, presses "Print Preview", and prints the preview into a
//! PDF through its own print button and the print dialog it brings up.
PreviewRun previewAndPrint(RES_ShowFile* doc, const QString& pdf,
                           const std::function<void(RES_PAGESETUP*)>& fill)
{
    PreviewRun run;
    QFile::remove(pdf);
    SetPreviewObserver([&run, pdf](QPrintPreviewDialog* preview, QPrinter* printer) {
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(pdf);
        QTimer::singleShot(0, preview, [preview, &run] {
            auto* widget = preview->findChild<QPrintPreviewWidget*>();
            run.pages = widget ? widget->pageCount() : -1;
            // The print dialog that the print button brings up, accepted as it stands: its
            // destination is the PDF file of the printer.
            QTimer::singleShot(200, [] {
                if (auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget()))
                    dialog->accept();
            });
            for (QAction* action : preview->findChildren<QAction*>()) {
                if (action->text() == QLatin1String("Print")) {
                    action->trigger();
                    return;
                }
            }
            preview->reject();
        });
    });
    RES_PAGESETUP dialog(doc);
    dialog.show();
    fill(&dialog);
    dialog.Command5->click();
    SetPreviewObserver({});
    run.pdf = pdf;
    return run;
}

QString pdfText(const QString& pdf, int page)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-f"), QString::number(page),
                                          QStringLiteral("-l"), QString::number(page), pdf, QStringLiteral("-")});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

//! Page `page` rendered in grey at 72 dots per inch (one dot per point).
QImage pdfPage(const QString& pdf, int page)
{
    const QString base = pdf + QStringLiteral(".page");
    QProcess p;
    p.start(QStringLiteral("pdftoppm"), {QStringLiteral("-gray"), QStringLiteral("-r"), QStringLiteral("72"),
                                         QStringLiteral("-f"), QString::number(page), QStringLiteral("-l"),
                                         QString::number(page), QStringLiteral("-singlefile"), pdf, base});
    p.waitForFinished(30000);
    return QImage(base + QStringLiteral(".pgm"));
}

//! The box around every dark dot of an image.
QRect inkBox(const QImage& image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 128)
                box |= QRect(x, y, 1, 1);
    return box;
}

void setMargins(RES_PAGESETUP* d, const QStringList& margins)
{
    for (int k = 0; k < 4; ++k)
        d->Text1[k]->setText(margins[k]);
}

} // namespace

class TextPrintTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init()
    {
        auto& s = zarvion::shell::Session();
        s.PageParameters = {0.5f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f};
        s.PageNumberAlignment = 0;
    }

    void pageSetUpChecksItsFieldsInOrder()
    {
        struct Case {
            QStringList margins;
            QString first;
            bool landscape;
            QString message;
            QString focus;
        };
        const QString reduce = QStringLiteral("Print setup, reduce the page margins.");
        const QList<Case> cases = {
            {{"abc", "x", "1", "1"}, "1", false, "Left margin, please enter a positive number.", "Text1_0"},
            {{"0.5", "0", "1", "1"}, "1", false, "Right margin, please enter a positive number.", "Text1_1"},
            {{"0.5", "0.5", "-1", "1"}, "1", false, "Top margin, please enter a positive number.", "Text1_2"},
            {{"0.5", "0.5", "1", ""}, "1", false, "Bottom margin, please enter a positive number.", "Text1_3"},
            {{"0.5", "0.5", "1", "1"}, "2.5", false, "First page number, please enter an integer.", "Text3"},
            // Letter is 8.5 in wide, taken at 97 %: 8.245 in; 4 + 3.3 + 1 in of text is more.
            {{"4", "3.3", "1", "1"}, "1", false, reduce, "Text1_0"},
            // 11 in high at 97 % is 10.67 in: 5 + 5 + 1 is more; on its side it is 8.245 in.
            {{"0.5", "0.5", "5", "5"}, "", false, reduce, "Text1_2"},
            {{"0.5", "0.5", "4", "3.5"}, "", true, reduce, "Text1_2"},
        };
        MessageRecorder boxes;
        RES_ShowFile doc;
        doc.box()->setPlainText(QStringLiteral("text"));
        for (const Case& c : cases) {
            RES_PAGESETUP dialog(&doc);
            dialog.show();
            dialog.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            setMargins(&dialog, c.margins);
            dialog.Text3->setText(c.first);
            (c.landscape ? dialog.Option2 : dialog.Option1)->setChecked(true);
            boxes.shown.clear();
            dialog.Command5->click();
            QCOMPARE(boxes.texts(), QStringList{c.message});
            QCOMPARE(boxes.shown.last().style, 48);
            QCOMPARE(QApplication::focusWidget()->objectName(), c.focus);
            auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
            QCOMPARE(box->selectedText(), box->text());
            QVERIFY(dialog.isVisible()); // a refusal keeps the dialog
        }
        // Margins pass through "0.##" and are held to 0.25 .. 10 in; they are kept even when
        // the size check then refuses them (12 + 0.1 + 1 in is more than 8.245 in).
        RES_PAGESETUP dialog(&doc);
        setMargins(&dialog, {QStringLiteral("12"), QStringLiteral("0.1"), QStringLiteral("1.234"), QStringLiteral("1.006")});
        dialog.Command5->click();
        const auto& p = zarvion::shell::Session().PageParameters;
        QCOMPARE(p[0], 10.0f);
        QCOMPARE(p[1], 0.25f);
        QCOMPARE(p[2], 1.23f);
        QCOMPARE(p[3], 1.01f);
    }

    void printKeyOfTheTextToolbarOpensThePageSetUp()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        MDIForm1 frame(folder.frameOptions());
        RES_ShowFile::NewTextDocument();
        QVERIFY(QTest::qWaitFor([&frame] { return qobject_cast<RES_ShowFile*>(frame.activeChild()) != nullptr; }));
        QAction* print = frame.toolbarAction(frame.Toolbar5, QStringLiteral("PRINT"));
        QVERIFY(print && print->isEnabled());
        print->trigger();
        RES_PAGESETUP* dialog = RES_PAGESETUP::Instance();
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Text Editor Print"));
        QVERIFY(dialog->isModal());
        // A new document prints the name it was given when it was made as its heading.
        QVERIFY2(dialog->Text4->text().startsWith(QStringLiteral("Zarvion,  ")), qPrintable(dialog->Text4->text()));
        dialog->Command3->click();
        QVERIFY(QTest::qWaitFor([] { return RES_PAGESETUP::Instance() == nullptr; }));
        QVERIFY(boxes.shown.isEmpty());
    }

    void aboutBoxShowsNameAndVersion()
    {
        ProgramFolder folder;
        MDIForm1 frame(folder.frameOptions());
        auto* about = frame.findChild<QAction*>(QStringLiteral("ABOUTCK"));
        QVERIFY(about && about->isEnabled());
        QString shown;
        QTimer::singleShot(100, [&shown] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                shown = box->windowTitle() + '|' + box->text();
                box->accept();
            }
        });
        about->trigger();
        QCOMPARE(shown, QStringLiteral("About ZARVION-II|<h2>ZARVION-II</h2><p>Program for Chemical "
                                       "Kinetics of Gas Phase Reactions</p><p>Version 3.7</p>"));
    }

    void theNoteSaysWhatWillBePrinted()
    {
        RES_ShowFile doc;
        doc.box()->setPlainText(numberedLines(5));
        RES_PAGESETUP whole(&doc);
        QCOMPARE(whole.Label1->text(), QStringLiteral("The entire document will be printed. To print a portion of the text, you should select this portion."));
        QTextCursor c = doc.box()->textCursor();
        c.setPosition(3);
        c.setPosition(20, QTextCursor::KeepAnchor);
        doc.box()->setTextCursor(c);
        RES_PAGESETUP part(&doc);
        QCOMPARE(part.Label1->text(), QStringLiteral("Selected portion of the text will be printed. To print the entire document, you should cancel text selection."));
        // The fields start from the page parameters, margins through "0.##" (1 in shows as
        // "1.", the pattern keeps its point), and the document.
        QCOMPARE(part.Text1[2]->text(), QStringLiteral("1."));
        QCOMPARE(part.Text1[0]->text(), QStringLiteral("0.5"));
        QCOMPARE(part.Combo2->currentText(), QStringLiteral(" Letter, 8 1/2 x 11 in"));
        QVERIFY(part.Option1->isChecked());
    }

    void threePagesWithHeadingAndNumbersAsSet()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        RES_ShowFile doc;
        // 130 lines of 11 pt text: a line takes 11 to 14 pt, and a Letter page with 1 in
        // margins and the 0.25 in header leaves 8.75 in = 630 pt, 45 to 57 lines: 3 pages.
        doc.box()->setPlainText(numberedLines(130));
        doc.FntSize(11);
        const QString pdf = QDir(folder.path()).filePath(QStringLiteral("three.pdf"));
        const PreviewRun run = previewAndPrint(&doc, pdf, [](RES_PAGESETUP* d) {
            d->Text4->setText(QStringLiteral("Kinetics of H2-O2"));
            d->Check1->setChecked(true);
            d->Text3->setText(QStringLiteral("5"));
            d->Combo1->setCurrentIndex(1); // right
        });
        QCOMPARE(run.pages, 3);
        QVERIFY(QFileInfo(pdf).size() > 0);
        QVERIFY(boxes.shown.isEmpty());
        QString heading;
        bool numbers = false;
        int first = 0;
        doc.Get_Page_SetUp(heading, numbers, first);
        QCOMPARE(heading, QStringLiteral("Kinetics of H2-O2"));
        QVERIFY(numbers);
        QCOMPARE(first, 5);
        QCOMPARE(zarvion::shell::Session().PageNumberAlignment, 1);
        QString all;
        for (int page = 1; page <= 3; ++page) {
            const QStringList lines = pdfText(pdf, page).split('\n', Qt::SkipEmptyParts);
            QVERIFY(lines.size() > 10);
            // The header line: the heading in the middle, the number (first page 5) right.
            QVERIFY2(lines[0].contains(QStringLiteral("Kinetics of H2-O2")), qPrintable(lines[0]));
            QVERIFY2(lines[0].trimmed().endsWith(QString::number(4 + page)), qPrintable(lines[0]));
            all += lines.mid(1).join('\n') + '\n';
        }
        // Every line printed once, in order, none lost at a page break.
        for (int i = 1; i <= 130; ++i)
            QCOMPARE(all.count(QStringLiteral("Line %1 ").arg(i, 3, 10, QLatin1Char('0'))), 1);
    }

    void aSelectionPrintsAloneWithTheMarginsSet()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        RES_ShowFile doc;
        // Lines 10 to 12 selected; line 12 is made long enough to wrap.
        QStringList lines = numberedLines(30).split('\n');
        lines[11] += QString(300, QLatin1Char('W'));
        doc.box()->setPlainText(lines.join('\n'));
        const QString text = doc.box()->toPlainText();
        QTextCursor c = doc.box()->textCursor();
        c.setPosition(static_cast<int>(text.indexOf(QStringLiteral("Line 010"))));
        c.setPosition(static_cast<int>(text.indexOf(QStringLiteral("Line 013"))), QTextCursor::KeepAnchor);
        doc.box()->setTextCursor(c);
        const QString pdf = QDir(folder.path()).filePath(QStringLiteral("selection.pdf"));
        const PreviewRun run = previewAndPrint(&doc, pdf, [](RES_PAGESETUP* d) {
            setMargins(d, {QStringLiteral("1.5"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("1")});
            d->Text4->clear();
            d->Check1->setChecked(false); // no header band: the text starts at the top margin
        });
        QCOMPARE(run.pages, 1);
        const QString printed = pdfText(pdf, 1);
        for (int i = 1; i <= 30; ++i)
            QCOMPARE(printed.contains(QStringLiteral("Line %1 ").arg(i, 3, 10, QLatin1Char('0'))), i >= 10 && i <= 12);

        // At 72 dots per inch: the text starts 10 twips inside the 1.5 in left margin (108.5)
        // and at the 2 in top margin (144); the wrapped line fills the detail band, which ends
        // at 10 twips + 1.5 in + (8.5 in x 0.97 - 2.5 in - 300 twips) = 507.1. Glyphs stand up
        // to 2 dots inside their cell.
        const QRect ink = inkBox(pdfPage(pdf, 1));
        QVERIFY2(ink.left() >= 108 && ink.left() <= 111, qPrintable(QString::number(ink.left())));
        QVERIFY2(ink.top() >= 144 && ink.top() <= 150, qPrintable(QString::number(ink.top())));
        QVERIFY2(ink.right() <= 508 && ink.right() >= 498, qPrintable(QString::number(ink.right())));
    }

    void landscapeA4TurnsThePage()
    {
        ProgramFolder folder;
        MessageRecorder boxes;
        RES_ShowFile doc;
        doc.box()->setPlainText(numberedLines(10));
        const QString pdf = QDir(folder.path()).filePath(QStringLiteral("landscape.pdf"));
        previewAndPrint(&doc, pdf, [](RES_PAGESETUP* d) {
            d->Combo2->setCurrentIndex(1);
            d->Option2->setChecked(true);
        });
        // A4 on its side: 297 x 210 mm = 842 x 595 pt.
        const QImage page = pdfPage(pdf, 1);
        QCOMPARE(page.width(), 842);
        QCOMPARE(page.height(), 595);
        const auto& p = zarvion::shell::Session().PageParameters;
        QCOMPARE(p[4], 9.0f);
        QCOMPARE(p[5], 2.0f);
    }
};

QTEST_MAIN(TextPrintTest)
#include "textprint_test.moc"
