#include "shell/MDIForm1.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>

#include "charts/PLOT.h"
#include "comparison/Comparison.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBox.h"
#include "platform/WaitCursor.h"
#include "reduction/ChemkinText.h"
#include "reduction/RED_Gen.h"
#include "shell/FileGuards.h"
#include "shell/SessionState.h"
#include "shell/Title.h"
#include "solverfile/SOL_RUN.h"
#include "solverfile/SolverFileChecks.h"
#include "textdocs/Help1.h"
#include "textdocs/RES_FIND.h"
#include "textdocs/RES_ShowFile.h"

namespace zarvion::gui {

MDIForm1::MDIForm1(FrameOptions options, QWidget* parent)
    : QMainWindow(parent), m_options(std::move(options))
{
    setObjectName(QStringLiteral("MDIForm1"));
    setWindowTitle(QStringLiteral("  Zarvion-II"));
    SetFrame(this);
    m_area = new QMdiArea(this);
    m_area->setViewMode(QMdiArea::SubWindowView);
    m_area->setBackground(QColor(128, 128, 128));
    setCentralWidget(m_area);
    connect(m_area, &QMdiArea::subWindowActivated, &m_childSignals,
            [this](QMdiSubWindow* window) { onSubWindowActivated(window); });
    resize(1280, 860);

    auto& session = shell::Session();
    shell::MDILoadConstants(session);
    const std::filesystem::path appPath =
        m_options.appPath.isEmpty() ? shell::ProgramFolder()
                                    : std::filesystem::path(fromQt(m_options.appPath));
    shell::SetPaths(session, appPath);
    buildToolbars();
    buildMenus();
    SetToolbarMode(0);

    Timer1.setInterval(700);
    Timer2.setInterval(300);
    Timer3.setInterval(500);
    Timer4.setInterval(300);
    connect(&Timer1, &QTimer::timeout, this, [this] {
        Timer1.stop();
        ShowMessage(m_numberFormatMessage, 16);
        ShowHelp1();
    });
    connect(&Timer2, &QTimer::timeout, this, [this] {
        Timer2.stop();
        CloseWalk();
    });
    connect(&Timer3, &QTimer::timeout, this, [this] {
        Timer3.stop();
        if (SOL_RUN* old = SOL_RUN::Instance())
            old->close();
        NormalForStartWindow();
        auto* window = new SOL_RUN(this);
        window->GETPASS(m_timer3Path, m_timer3Caption);
        window->show();
    });
    connect(&Timer4, &QTimer::timeout, this, [this] {
        Timer4.stop();
        if (!m_zordWindow)
            return;
        for (QMdiSubWindow* sub : m_area->subWindowList()) {
            if (sub->widget() == m_zordWindow) {
                m_area->setActiveSubWindow(sub);
                sub->raise();
            }
        }
    });

    m_numberFormatMessage = toQt(shell::CheckNumberFormat(m_options.numberFormatter));
    if (!m_numberFormatMessage.isEmpty()) {
        ResetCursor();
        Timer1.start();
        show();
        return;
    }
    if (m_options.showSplash) {
        m_title = new Title(this, m_options.filesToOpen);
        m_title->show();
    }
    MDILoad();
    if (!m_options.showSplash) {
        show();
        for (const QString& f : m_options.filesToOpen)
            OpenDocument(f);
    }
}

MDIForm1::~MDIForm1()
{
    if (Frame() == this)
        SetFrame(nullptr);
}

void MDIForm1::MDILoad()
{
    SetToolbarMode(0);
    const auto message = shell::OptionOpen(shell::Session(), shell::Session().AppPath);
    if (!message.empty())
        ShowMessage(message);
}

void MDIForm1::buildMenus()
{
    m_fileMenu = new QMenu(tr("&File"), this);
    m_fileMenu->setObjectName(QStringLiteral("FILE"));
    QAction* newChart = m_fileMenu->addAction(tr("&New Chart"), this, [] { PLOT::NewChart(); });
    newChart->setObjectName(QStringLiteral("MDI_NEW"));
    QAction* newText = m_fileMenu->addAction(tr("New &Text Document"), this,
                                             [] { RES_ShowFile::NewTextDocument(false); });
    newText->setObjectName(QStringLiteral("MDI_TEXT"));
    newText->setShortcut(QKeySequence::New);
    QAction* open = m_fileMenu->addAction(style()->standardIcon(QStyle::SP_DialogOpenButton),
                                          tr("&Open..."), this, [this] { OpenDocument(QString()); });
    open->setObjectName(QStringLiteral("OPEN"));
    open->setShortcut(QKeySequence::Open);
    m_closeAction = m_fileMenu->addAction(tr("&Close"), this, [this] {
        if (QMdiSubWindow* sub = m_area->currentSubWindow())
            sub->close();
    });
    m_closeAction->setObjectName(QStringLiteral("CLOSE"));
    m_closeAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    m_fileMenu->addSeparator();
    m_saveAction = m_fileMenu->addAction(tr("&Save"), this, [this] { callOnActiveChild("SVTXT"); });
    m_saveAction->setObjectName(QStringLiteral("SAVE"));
    m_saveAction->setShortcut(QKeySequence::Save);
    m_saveAsAction = m_fileMenu->addAction(tr("Save &As..."), this, [this] { callOnActiveChild("SaveAs"); });
    m_saveAsAction->setObjectName(QStringLiteral("SAVEAS"));
    m_fileMenu->addSeparator();
    m_printAction = m_fileMenu->addAction(tr("&Print..."), this, [this] { callOnActiveChild("PrintText"); });
    m_printAction->setShortcut(QKeySequence::Print);
    m_fileMenu->addSeparator();
    QAction* exit = m_fileMenu->addAction(tr("E&xit"), this, &MDIForm1::Exit);
    exit->setObjectName(QStringLiteral("EXIT"));
    exit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    m_kineticsMenu = new QMenu(tr("&Kinetics"), this);
    m_kineticsMenu->setObjectName(QStringLiteral("MDIREACKIN"));
    m_kineticsMenu->addAction(tr("Open &Solver File..."), this, [this] { OpenSolverFile(QString()); });
    m_toolsMenu = new QMenu(tr("&Tools"), this);
    m_toolsMenu->setObjectName(QStringLiteral("MDITools"));
    m_toolsMenu->addAction(tr("&Find and Replace..."), this, [] { RES_FIND::Open(); });
    m_windowMenu = new QMenu(tr("&Window"), this);
    m_windowMenu->setObjectName(QStringLiteral("WINDOW"));
    connect(m_windowMenu, &QMenu::aboutToShow, this, &MDIForm1::fillWindowMenu);
    m_helpMenu = new QMenu(tr("&Help"), this);
    m_helpMenu->setObjectName(QStringLiteral("HELPDD"));
    m_helpMenu->addAction(tr("&Number Format"), this, [] { ShowHelp1(); });
    QAction* about = m_helpMenu->addAction(tr("&About ZARVION-II"), this, [this] { ShowAbout(this); });
    about->setObjectName(QStringLiteral("ABOUTCK"));
    rebuildMenuBar();
}

void MDIForm1::fillWindowMenu()
{
    m_windowMenu->clear();
    m_windowMenu->addAction(tr("&Cascade"), m_area, &QMdiArea::cascadeSubWindows);
    m_windowMenu->addAction(tr("&Tile"), m_area, &QMdiArea::tileSubWindows);
    const auto windows = m_area->subWindowList();
    if (!windows.isEmpty())
        m_windowMenu->addSeparator();
    int n = 1;
    for (QMdiSubWindow* sub : windows) {
        QAction* a = m_windowMenu->addAction(QStringLiteral("&%1 %2").arg(n++).arg(sub->windowTitle()),
                                             this, [this, sub] { m_area->setActiveSubWindow(sub); });
        a->setCheckable(true);
        a->setChecked(sub == m_area->currentSubWindow());
    }
}

void MDIForm1::rebuildMenuBar()
{
    QMenuBar* bar = menuBar();
    bar->clear();
    const auto* child = dynamic_cast<ChildMenus*>(activeChild());
    // A chart brings its own File menu ("GRAPH"), which stands in place of the frame's.
    const bool ownFileMenu = child && !child->menus().isEmpty() &&
                             child->menus().first()->objectName() == QLatin1String("GRAPH");
    if (!ownFileMenu)
        bar->addMenu(m_fileMenu);
    if (child) {
        for (QMenu* m : child->menus())
            bar->addMenu(m);
    }
    bar->addMenu(m_kineticsMenu);
    bar->addMenu(m_toolsMenu);
    bar->addMenu(m_windowMenu);
    bar->addMenu(m_helpMenu);
    UpdateCommands();
}

void MDIForm1::buildToolbars()
{
    auto addKey = [this](QToolBar* bar, const QString& key, const QString& operation,
                         QStyle::StandardPixmap icon, const QString& tip) {
        QAction* a = bar->addAction(style()->standardIcon(icon), tip);
        a->setObjectName(key);
        a->setData(operation);
        a->setToolTip(tip);
        return a;
    };
    Toolbar2 = addToolBar(tr("Chart"));
    Toolbar2->setObjectName(QStringLiteral("Toolbar2"));
    addKey(Toolbar2, "SAVE", "SaveTT", QStyle::SP_DialogSaveButton, tr("Save Chart"));
    addKey(Toolbar2, "PlotPrint", "Plot_PRT", QStyle::SP_FileDialogDetailedView, tr("Print"));
    addKey(Toolbar2, "CUTSUBSET", "CUTSS", QStyle::SP_DialogDiscardButton, tr("Cut Subset"));
    addKey(Toolbar2, "SAVESUBSET", "SAVESS", QStyle::SP_DialogApplyButton, tr("Copy Subset"));
    addKey(Toolbar2, "PASTESUBSET", "PASTESS", QStyle::SP_ArrowDown, tr("Paste Subset"));
    addKey(Toolbar2, "ANNOTATIONS", "", QStyle::SP_FileDialogInfoView, tr("New Annotation"));
    addKey(Toolbar2, "SHOWTEXT", "SHOWALLTEXT", QStyle::SP_FileDialogListView, tr("Show Texts"));
    addKey(Toolbar2, "MARKER", "MarkDataPnt", QStyle::SP_DialogYesButton, tr("Markers"));
    addKey(Toolbar2, "GRIDLINE", "GridLine", QStyle::SP_FileDialogContentsView, tr("Grid Lines"));
    addKey(Toolbar2, "LEGEND", "ViewingStyle", QStyle::SP_MessageBoxInformation, tr("Legend"));
    // These three show a state of the chart: point marks, grid lines, colour (down) or
    // monochrome (up); the chart reads them when it applies them.
    for (const char* key : {"MARKER", "GRIDLINE", "LEGEND"})
        toolbarAction(Toolbar2, QString::fromLatin1(key))->setCheckable(true);
    connect(Toolbar2, &QToolBar::actionTriggered, this, &MDIForm1::onToolbarKey);

    Toolbar5 = addToolBar(tr("Text"));
    Toolbar5->setObjectName(QStringLiteral("Toolbar5"));
    addKey(Toolbar5, "SAVE", "SVTXT", QStyle::SP_DialogSaveButton, tr("Save"));
    addKey(Toolbar5, "PRINT", "PrintText", QStyle::SP_FileDialogDetailedView, tr("Page Setup and Print"));
    Toolbar5->addSeparator();
    addKey(Toolbar5, "TXT_CUT", "TEXT_CUT", QStyle::SP_DialogDiscardButton, tr("Cut"));
    addKey(Toolbar5, "TXT_COPY", "TEXT_COPY", QStyle::SP_FileDialogNewFolder, tr("Copy"));
    addKey(Toolbar5, "TXT_PASTE", "ClipInRich", QStyle::SP_DialogApplyButton, tr("Paste"));
    Toolbar5->addSeparator();
    addKey(Toolbar5, "RICH_UNDO", "Rich_Undo", QStyle::SP_ArrowBack, tr("Undo"));
    addKey(Toolbar5, "RICH_REDO", "Rich_Redo", QStyle::SP_ArrowForward, tr("Redo"));
    Toolbar5->addSeparator();
    addKey(Toolbar5, "FIND", "", QStyle::SP_FileDialogContentsView, tr("Find and Replace"));
    connect(Toolbar5, &QToolBar::actionTriggered, this, &MDIForm1::onToolbarKey);
    for (QToolBar* bar : {Toolbar2, Toolbar5}) {
        bar->setMovable(false);
        bar->setIconSize(QSize(22, 22));
    }
}

QAction* MDIForm1::toolbarAction(QToolBar* bar, const QString& key) const
{
    for (QAction* a : bar->actions()) {
        if (a->objectName() == key)
            return a;
    }
    return nullptr;
}

void MDIForm1::onToolbarKey(QAction* action)
{
    const QString key = action->objectName();
    if (key == QLatin1String("FIND")) {
        RES_FIND::Open();
        return;
    }
    if (key == QLatin1String("ANNOTATIONS"))
        return;
    callOnActiveChild(action->data().toString());
}

void MDIForm1::callOnActiveChild(const QString& operation)
{
    QWidget* child = activeChild();
    if (!child || operation.isEmpty())
        return;
    // The frame knows its children only by the names of their operations.
    if (!QMetaObject::invokeMethod(child, operation.toLatin1().constData())) {
        ReportError(QStringLiteral("MDI#102. "),
                    QStringLiteral("Object doesn't support this property or method: ") + operation);
    }
    UpdateCommands();
}

QAction* MDIForm1::ToolbarButton(int toolbar, const QString& key)
{
    QToolBar* bar = toolbar == 2 ? Toolbar2 : toolbar == 5 ? Toolbar5 : nullptr;
    return bar ? toolbarAction(bar, key) : nullptr;
}

void MDIForm1::ShowTextView(const QString& path, const QString& caption)
{
    // An open view of the caption goes first; the new one takes its place.
    for (QWidget* w : Children()) {
        if (w->windowTitle() == caption)
            CloseChild(w);
    }
    const QString name = RES_ShowFile::NewTextDocument(false);
    for (QWidget* w : Children()) {
        auto* doc = qobject_cast<RES_ShowFile*>(w);
        if (!doc || doc->windowTitle() != name)
            continue;
        bool failed = false;
        doc->OPEN_Rich(path, failed);
        if (!failed) {
            doc->setWindowTitle(caption);
            doc->MenuCap(caption);
            ZordTimer(caption);
        }
        break;
    }
    QFile::remove(path);
}

QWidget* MDIForm1::activeChild() const
{
    QMdiSubWindow* sub = m_area->currentSubWindow();
    return sub ? sub->widget() : nullptr;
}

void MDIForm1::SetToolbarMode(int mode)
{
    Toolbar2->setVisible(mode == 2);
    Toolbar5->setVisible(mode == 5);
}

void MDIForm1::UpdateCommands()
{
    auto* doc = qobject_cast<RES_ShowFile*>(activeChild());
    const bool editable = doc && !doc->GetIsSolFile();
    m_saveAction->setEnabled(editable);
    m_saveAsAction->setEnabled(editable);
    m_closeAction->setEnabled(activeChild() != nullptr);
    m_printAction->setEnabled(doc != nullptr);
    toolbarAction(Toolbar5, "SAVE")->setEnabled(editable);
    if (doc) {
        const bool hasSelection = doc->box()->textCursor().hasSelection();
        toolbarAction(Toolbar5, "TXT_CUT")->setEnabled(editable && hasSelection);
        toolbarAction(Toolbar5, "TXT_COPY")->setEnabled(hasSelection);
        toolbarAction(Toolbar5, "TXT_PASTE")->setEnabled(editable);
        toolbarAction(Toolbar5, "RICH_UNDO")->setEnabled(doc->canUndo());
        toolbarAction(Toolbar5, "RICH_REDO")->setEnabled(doc->canRedo());
    }
}

void MDIForm1::onSubWindowActivated(QMdiSubWindow* window)
{
    if (!window)
        return;
    // The start window closes when the text window of its file is left.
    if (SOL_RUN* run = SOL_RUN::Instance()) {
        if (window->widget()->windowTitle().toUpper() != run->CallerCaption().toUpper())
            run->close();
    }
    if (!QMetaObject::invokeMethod(window->widget(), "ToolBr"))
        SetToolbarMode(0);
    rebuildMenuBar();
}

void MDIForm1::AddChild(QWidget* child)
{
    QMdiSubWindow* sub = m_area->addSubWindow(child);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->setWindowIcon(child->windowIcon());
    if (auto* doc = qobject_cast<RES_ShowFile*>(child)) {
        connect(doc, &RES_ShowFile::commandsChanged, &m_childSignals, [this, doc] {
            if (activeChild() == doc)
                UpdateCommands();
        });
    }
    const QSize area = m_area->size();
    if (child->testAttribute(Qt::WA_Resized)) {
        // A window that chose its size keeps it, within the frame.
        const QSize frameExtra = sub->size() - child->size();
        sub->resize((child->size() + frameExtra.expandedTo(QSize(8, 30))).boundedTo(area));
    } else {
        sub->resize(std::max(640, area.width() * 4 / 5), std::max(420, area.height() * 4 / 5));
    }
    if (!QRect(QPoint(0, 0), area).contains(sub->geometry()))
        sub->move(0, 0);
    if (child->windowIcon().cacheKey() == QApplication::windowIcon().cacheKey())
        sub->setWindowIcon(style()->standardIcon(QStyle::SP_FileIcon));
    connect(child, &QObject::destroyed, &m_childSignals, [this] {
        if (m_area->subWindowList().isEmpty()) {
            SetToolbarMode(0);
            rebuildMenuBar();
        }
    });
    child->show();
    m_area->setActiveSubWindow(sub);
}

QList<QWidget*> MDIForm1::Children() const
{
    // The active child first, then the others in the order they were opened.
    QList<QWidget*> list;
    QMdiSubWindow* current = m_area->currentSubWindow();
    if (current && current->widget())
        list << current->widget();
    for (QMdiSubWindow* sub : m_area->subWindowList(QMdiArea::CreationOrder)) {
        if (sub != current && sub->widget())
            list << sub->widget();
    }
    return list;
}

bool MDIForm1::CloseChild(QWidget* child)
{
    for (QMdiSubWindow* sub : m_area->subWindowList()) {
        if (sub->widget() == child)
            return sub->close();
    }
    return child->close();
}

void MDIForm1::ZordTimer(const QString& caption)
{
    m_zordWindow = nullptr;
    for (QWidget* w : Children()) {
        if (w->windowTitle().toUpper() == caption.toUpper()) {
            m_zordWindow = w;
            break;
        }
    }
    Timer4.start();
}

void MDIForm1::Timer3Run(const QString& path, const QString& caption)
{
    m_timer3Path = path;
    m_timer3Caption = caption;
    Timer3.start();
}

void MDIForm1::NormalForStartWindow()
{
    shell::Session().FrameWasMaximised = isMaximized();
    if (!isMaximized())
        return;
    showNormal();
    if (QScreen* screen = QApplication::primaryScreen()) {
        const QRect r = screen->availableGeometry();
        setGeometry(r.left(), r.top(), r.width(), r.height() - 14);
    }
}

void MDIForm1::CloseDialogs(const QString& except)
{
    if (except != QLatin1String("RES_FIND")) {
        if (RES_FIND* find = RES_FIND::Instance())
            find->close();
    }
    if (except != QLatin1String("SOL_RUN")) {
        if (SOL_RUN* run = SOL_RUN::Instance())
            run->close();
    }
    if (except != QLatin1String("RED_Gen")) {
        if (RED_Gen* reduction = RED_Gen::Instance())
            reduction->close();
    }
    if (except != QLatin1String("Comparison")) {
        if (Comparison* comparison = Comparison::Instance())
            CloseChild(comparison);
    }
}

void MDIForm1::OpenReduction(const QString& path)
{
    RED_Gen::Open(path);
}

void MDIForm1::OpenComparison(const QString& path)
{
    Comparison::Open(path);
}

void MDIForm1::ReactionsInChemkinFormat(const QString& path)
{
    ConvertReactions(path);
}

void MDIForm1::OpenDocument(const QString& given)
{
    QString path = given;
    for (;;) {
        if (given.isEmpty()) {
            bool cancelled = false;
            path = ShowOpenDialog(cancelled, toQt(shell::OpenDialogFilter(1)));
            if (cancelled)
                return;
        }
        solverfile::DocumentDecision decision;
        try {
            decision = solverfile::DecideOpenDocument(fromQt(path));
        } catch (const std::exception& e) {
            ResetCursor();
            ReportError(QStringLiteral("MDI#301. "), toQt(e.what()));
            return;
        }
        if (decision.kind == solverfile::DocumentKind::Refused) {
            ResetCursor();
            ShowMessage(decision.message);
            if (given.isEmpty())
                continue;
            return;
        }
        if (!decision.readOnlyNotice.empty())
            ShowMessage(decision.readOnlyNotice);
        WaitCursor wait;
        switch (decision.kind) {
        case solverfile::DocumentKind::Chart: {
            auto* chart = new PLOT;
            bool failed = false;
            QString caption;
            chart->OPENPLOT(path, failed, caption);
            if (failed) {
                delete chart;
                ResetCursor();
                ShowMessage(shell::ChartOpenFailedMessage(fromQt(path)));
                return;
            }
            chart->setWindowTitle(caption);
            AddChild(chart);
            ZordTimer(caption);
            return;
        }
        case solverfile::DocumentKind::SolverFileRefused:
            ResetCursor();
            ShowMessage(decision.message);
            return;
        case solverfile::DocumentKind::SolverDocument:
            OpenSolverFile(path);
            return;
        default: {
            auto* doc = new RES_ShowFile;
            bool failed = false;
            doc->OPEN_Rich(path, failed);
            if (failed) {
                delete doc;
                return;
            }
            AddChild(doc);
            ZordTimer(doc->windowTitle());
            return;
        }
        }
    }
}

void MDIForm1::OpenSolverFile(const QString& given)
{
    QString path = given;
    if (path.isEmpty()) {
        bool cancelled = false;
        path = ShowOpenDialog(cancelled, toQt(shell::OpenDialogFilter(6)));
        if (cancelled)
            return;
        const auto refusal = solverfile::SelectSolverFileCheck(fromQt(path));
        ResetCursor();
        if (!refusal.empty()) {
            ShowMessage(refusal);
            return;
        }
    }
    for (QWidget* w : Children()) {
        auto* doc = qobject_cast<RES_ShowFile*>(w);
        if (doc && doc->MePath() == path) {
            for (QMdiSubWindow* sub : m_area->subWindowList()) {
                if (sub->widget() == doc) {
                    sub->showNormal();
                    m_area->setActiveSubWindow(sub);
                }
            }
            ResetCursor();
            ShowMessage(solverfile::AlreadyOpenedMessage(fromQt(path)));
            return;
        }
    }
    auto* doc = new RES_ShowFile;
    bool failed = false;
    doc->OPEN_Rich(path, failed);
    if (failed) {
        delete doc;
        return;
    }
    doc->IsSolferFile(true);
    const QString icon = QDir(toQt(shell::Session().AssistPath)).filePath(QStringLiteral("MISC05.ICO"));
    doc->setWindowIcon(QIcon(icon));
    AddChild(doc);
    ZordTimer(doc->windowTitle());
}

void MDIForm1::ShowSolverResults(const QString& path)
{
    const auto refusal = solverfile::ShowSolverResultsCheck(fromQt(path));
    if (!refusal.empty()) {
        ShowMessage(refusal);
        return;
    }
    // The results may be read; the post-processor window opens on them once it is part of
    // the program.
    shell::Session().ResultsFilePath = fromQt(path);
}

void MDIForm1::Exit()
{
    Timer2.start();
}

bool MDIForm1::CloseWalk()
{
    QApplication::clipboard()->clear();
    CloseDialogs(QString());
    auto& session = shell::Session();
    session.CancelClose = false;
    const auto windows = m_area->subWindowList();
    for (QMdiSubWindow* sub : windows) {
        QPointer<QMdiSubWindow> guard(sub);
        const bool closed = sub->close();
        if (!closed || session.CancelClose) {
            session.CancelClose = true;
            return false;
        }
    }
    m_closingDue = true;
    close();
    return true;
}

void MDIForm1::closeEvent(QCloseEvent* event)
{
    if (!m_closingDue) {
        // The window's close button goes the one way out, through the walk.
        event->ignore();
        Exit();
        return;
    }
    unload();
    event->accept();
}

void MDIForm1::unload()
{
    shell::RemoveTemporaryFiles(shell::Session());
}

} // namespace zarvion::gui
