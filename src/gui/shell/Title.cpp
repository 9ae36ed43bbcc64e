#include "shell/Title.h"

#include <QApplication>
#include <QDir>
#include <QImageReader>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/FileDialogs.h"
#include "platform/MessageBox.h"
#include "platform/ProgramInfo.h"
#include "platform/WaitCursor.h"
#include "shell/FileGuards.h"
#include "shell/MDIForm1.h"
#include "shell/SessionState.h"

namespace zarvion::gui {

Title::Title(MDIForm1* frame, QStringList filesToOpen)
    : QDialog(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint), m_frame(frame),
      m_files(std::move(filesToOpen))
{
    setObjectName(QStringLiteral("Title"));
    setAttribute(Qt::WA_DeleteOnClose);
    // 5920 twips wide at the screen's logical DPI; the height is the width / 0.65.
    const double dpi = logicalDpiX() > 0 ? logicalDpiX() : 96;
    const int w = static_cast<int>(5920.0 / 1440.0 * dpi);
    setFixedSize(w, static_cast<int>(w / 0.65));
    setStyleSheet(QStringLiteral("QDialog { background: rgb(0, 30, 90); } QLabel { color: white; }"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 40, 24, 28);
    auto* name = new QLabel(QStringLiteral("ZARVION-II"));
    QFont big = name->font();
    big.setPointSize(30);
    big.setBold(true);
    name->setFont(big);
    name->setAlignment(Qt::AlignCenter);
    auto* subtitle = new QLabel(QStringLiteral("Program for Chemical Kinetics of Gas Phase Reactions"));
    QFont mid = subtitle->font();
    mid.setPointSize(15);
    subtitle->setFont(mid);
    subtitle->setWordWrap(true);
    subtitle->setAlignment(Qt::AlignCenter);
    auto* version = new QLabel(QStringLiteral(" Version ") + QLatin1String(ProgramVersion));
    QFont small = version->font();
    small.setPointSize(12);
    version->setFont(small);
    version->setAlignment(Qt::AlignCenter);
    ProgressBar1 = new QProgressBar;
    ProgressBar1->setRange(0, 100);
    ProgressBar1->setTextVisible(false);
    ProgressBar1->setFixedHeight(12);
    layout->addStretch(2);
    layout->addWidget(name);
    layout->addSpacing(24);
    layout->addWidget(subtitle);
    layout->addSpacing(16);
    layout->addWidget(version);
    layout->addStretch(3);
    layout->addWidget(ProgressBar1);
    if (QScreen* screen = QApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    QApplication::setOverrideCursor(Qt::WaitCursor);

    Timer3.setInterval(20);
    connect(&Timer3, &QTimer::timeout, this, [this] {
        m_progress = std::min(100, m_progress + 3);
        ProgressBar1->setValue(m_progress);
    });
    Timer2.setInterval(600);
    connect(&Timer2, &QTimer::timeout, this, [this] {
        Timer2.stop();
        const auto message = shell::TotOpnErr(shell::OptionsFilePath(shell::Session()));
        if (!message.empty())
            fail(toQt(message.text));
    });
    Timer5.setInterval(2500);
    connect(&Timer5, &QTimer::timeout, this, [this] {
        m_progress = 2;
        Timer3.start();
    });
    Timer1.setInterval(7500);
    connect(&Timer1, &QTimer::timeout, this, &Title::onTimer1);
    Timer3.start();
    Timer2.start();
    Timer5.start();
    Timer1.start();

    // The cursor and the icon must be loadable before anything uses them.
    const auto check = shell::CursorFiles_Check(shell::Session().AssistPath, [](const auto& p) {
        return QImageReader(toQt(p.string())).canRead();
    });
    if (!check.empty())
        QTimer::singleShot(0, this, [this, check] { fail(toQt(check.text)); });
}

void Title::stopTimers()
{
    Timer1.stop();
    Timer2.stop();
    Timer3.stop();
    Timer5.stop();
}

void Title::fail(const QString& message)
{
    stopTimers();
    m_terminate = true;
    ResetCursor();
    ShowMessage(message, 16);
    close();
    m_frame->Exit();
}

void Title::onTimer1()
{
    stopTimers();
    ResetCursor();
    close();
    m_frame->SetToolbarMode(0);
    m_frame->show();
    if (!m_files.isEmpty()) {
        for (const QString& f : m_files)
            m_frame->OpenDocument(f);
        return;
    }
    bool cancelled = false;
    const QString path =
        ShowOpenDialog(cancelled, toQt(shell::OpenDialogFilter(1)),
                       toQt(shell::SamplesPath(shell::Session()).string()));
    if (!cancelled)
        m_frame->OpenDocument(path);
}

} // namespace zarvion::gui
