#include "textdocs/Help1.h"

#include <QAction>
#include <QDir>
#include <QIcon>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "platform/MessageBox.h"
#include "platform/ProgramInfo.h"
#include "shell/SessionState.h"

namespace zarvion::gui {

QString Help1::HelpText()
{
    const char* const table[] = {
        "Format Feature         Symbol       Correct         Incorrect",
        "-------------------------------------------------------------------",
        "Decimal Symbol          . (Point)   123456789.00    123456789,00   ",
        "                                    123.456E+23     123,456E+23    ",
        "-------------------------------------------------------------------",
        "Digit Grouping          No          123456789.00    123.456.789.00 ",
        "                                                    123,456,789.00 ",
        "-------------------------------------------------------------------",
        "Negative Sign Symbol     -                                         ",
        "-------------------------------------------------------------------",
        "Negative Sign Format                 -1.1            (1.1)         ",
        "                                                     1.1-          ",
        "-------------------------------------------------------------------",
    };
    QString text = QStringLiteral("Number Format\r\n\r\n");
    text += QStringLiteral(
        "In most text databases on thermodynamics and chemical kinetics, a number "
        "format with the decimal point as Decimal Symbol is used. The Zarvion "
        "subroutines must process numeric data from these databases. Because of "
        "this you must set an appropriate number format on your system. Main features "
        "of the format are presented in the table.");
    text += QStringLiteral("\r\n\r\n");
    for (const char* line : table)
        text += QString::fromLatin1(line) + QStringLiteral("\r\n");
    return text;
}

Help1::Help1(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("Help1"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Zarvion   Number Format"));
    m_box = new QPlainTextEdit(this);
    m_box->setObjectName(QStringLiteral("RichTextBox1"));
    m_box->setReadOnly(true);
    m_box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // The paragraph wraps at the window's width; the window is made wide enough for the table.
    m_box->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_box);

    auto* edit = new QMenu(tr("&Edit"), this);
    edit->setObjectName(QStringLiteral("HELPED"));
    edit->addAction(tr("&Copy"), m_box, &QPlainTextEdit::copy)->setObjectName(QStringLiteral("HELPCOPY"));
    edit->addAction(tr("Select &All"), m_box, &QPlainTextEdit::selectAll)
        ->setObjectName(QStringLiteral("HELPSELALL"));
    edit->addSeparator();
    edit->addAction(tr("E&xit"), this, &QWidget::close)->setObjectName(QStringLiteral("HELPEXIT"));
    auto* format = new QMenu(tr("F&ormat"), this);
    format->setObjectName(QStringLiteral("HFORMAT"));
    QMenu* size = format->addMenu(tr("Text &Size"));
    size->setObjectName(QStringLiteral("HFONT"));
    const std::pair<const char*, int> items[3] = {{"&Large", 14}, {"&Medium", 11}, {"&Small", 9}};
    for (int i = 0; i < 3; ++i) {
        const int s = items[i].second;
        m_sizes[i] = size->addAction(tr(items[i].first), this, [this, s] { setTextSize(s); });
        m_sizes[i]->setCheckable(true);
    }
    m_menus = {edit, format};

    m_box->setPlainText(QString(HelpText()).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    setTextSize(11);
    m_box->moveCursor(QTextCursor::Start);
    // Wide enough for the table at the starting size.
    const QFontMetrics fm(m_box->font());
    const int width = fm.horizontalAdvance(QString(70, QLatin1Char('-'))) + 60;
    resize(width, fm.lineSpacing() * 26 + 40);
}

void Help1::setTextSize(int size)
{
    if (size == m_size)
        return;
    m_size = size;
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    if (!QFontInfo(font).fixedPitch())
        font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(size);
    m_box->setFont(font);
    for (int i = 0; i < 3; ++i)
        m_sizes[i]->setChecked((i == 0 ? 14 : i == 1 ? 11 : 9) == size);
}

void Help1::ToolBr()
{
    if (Frame())
        Frame()->SetToolbarMode(0);
}

Help1* ShowHelp1()
{
    auto* help = new Help1;
    if (Frame()) {
        Frame()->AddChild(help);
        Frame()->ZordTimer(help->windowTitle());
    } else {
        help->show();
    }
    return help;
}

void ShowAbout(QWidget* parent)
{
    QMessageBox box(parent);
    box.setObjectName(QStringLiteral("ABOUT"));
    box.setWindowTitle(QStringLiteral("About %1").arg(QLatin1String(ProgramName)));
    // The program's icon, from the auxiliary files.
    const QIcon icon(QDir(toQt(shell::Session().AssistPath)).filePath(QStringLiteral("MISC05.ICO")));
    box.setIconPixmap(icon.pixmap(64, 64));
    box.setText(QStringLiteral("<h2>%1</h2><p>%2</p><p>Version %3</p>")
                    .arg(QLatin1String(ProgramName), QLatin1String(ProgramFullName),
                         QLatin1String(ProgramVersion)));
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

} // namespace zarvion::gui
