#include "charts/PLOT.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "charts/ChartFile.h"
#include "charts/ChartText.h"
#include "charts/ChartView.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBox.h"
#include "platform/WaitCursor.h"
#include "shell/FileGuards.h"
#include "shell/SessionState.h"
#include "shell/TextFormat.h"

namespace zarvion::gui {

namespace {

charts::RandomSource& randomSource()
{
    static charts::RandomSource source = charts::DefaultRandomSource();
    return source;
}

//! Runs the source the window has now, so that a source set later takes effect.
charts::RandomSource currentRandom()
{
    return [] { return randomSource()(); };
}

} // namespace

void PLOT::SetRandomSource(charts::RandomSource source)
{
    randomSource() = source ? std::move(source) : charts::DefaultRandomSource();
}

PLOT::PLOT(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("PLOT"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    buildBars();
    m_view = new ChartView(this);
    m_view->setFocusPolicy(Qt::StrongFocus);
    m_view->installEventFilter(this);
    layout->addWidget(m_editBar);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_readoutBar);
    buildMenus();
    connectView();

    Timer1.setSingleShot(true);
    Timer1.setInterval(charts::DoubleClickWindowMs);
    connect(&Timer1, &QTimer::timeout, this, [this] { charts::ClickWindowElapsed(m_state); });
    Timer2.setSingleShot(true);
    Timer2.setInterval(QApplication::doubleClickInterval() + 50);
    connect(&Timer2, &QTimer::timeout, this, [this] {
        if (m_zoomRedrawPending) {
            m_zoomRedrawPending = false;
            m_view->replot();
        }
    });
    Timer3.setSingleShot(true);
    Timer3.setInterval(5000);
    connect(&Timer3, &QTimer::timeout, this, [this] {
        if (m_state.textBox.kind == charts::EditKind::None)
            hideTextBox();
    });
    m_sizeTimer.setSingleShot(true);
    m_sizeTimer.setInterval(1500);
    m_sizeOverlay = new QLabel(m_view);
    m_sizeOverlay->setObjectName(QStringLiteral("ChartSize"));
    m_sizeOverlay->setStyleSheet(QStringLiteral(
        "background: rgba(255, 255, 225, 230); border: 1px solid #888; padding: 2px 6px;"));
    m_sizeOverlay->hide();
    connect(&m_sizeTimer, &QTimer::timeout, m_sizeOverlay, &QLabel::hide);
    resize(760, 520);
    setAttribute(Qt::WA_Resized, false);
    m_view->showChart(m_doc, true);
    updateCommands();
}

PLOT::~PLOT() = default;

bool PLOT::isTemporaryChart() const
{
    return windowTitle().toUpper() == QString::fromLatin1(charts::TemporaryChartCaption).toUpper();
}

PLOT* PLOT::NewChart()
{
    QStringList captions;
    if (Frame()) {
        for (QWidget* w : Frame()->Children())
            captions << w->windowTitle().toUpper();
    }
    int n = 1;
    while (captions.contains(QStringLiteral("CHART %1").arg(n)))
        ++n;
    auto* chart = new PLOT;
    chart->setWindowTitle(QStringLiteral("Chart %1").arg(n));
    // A blank chart is one subset of one point without a value; the first paste replaces it.
    charts::PlotExchange blank;
    blank.SubsetCount = 1;
    blank.PointCount = 1;
    blank.sizeChartBuffers();
    charts::Intit(chart->m_doc, blank, false, false, currentRandom());
    charts::SHOWALLTEXT(chart->m_doc);
    chart->m_doc.mustSave = false;
    chart->redraw(true);
    if (Frame()) {
        Frame()->AddChild(chart);
        Frame()->ZordTimer(chart->windowTitle());
    } else {
        chart->show();
    }
    return chart;
}

void PLOT::buildBars()
{
    // The in-place text box for titles, labels and annotations.
    m_editBar = new QWidget(this);
    m_editBar->setObjectName(QStringLiteral("EditBar"));
    auto* edit = new QHBoxLayout(m_editBar);
    edit->setContentsMargins(6, 4, 6, 4);
    Text1Hint = new QLabel(m_editBar);
    Text1Hint->setObjectName(QStringLiteral("Text1Hint"));
    Text1 = new QLineEdit(m_editBar);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setClearButtonEnabled(true);
    Text1->installEventFilter(this);
    Text1Ok = new QPushButton(tr("OK"), m_editBar);
    Text1Ok->setObjectName(QStringLiteral("Text1Ok"));
    edit->addWidget(Text1Hint);
    edit->addWidget(Text1, 1);
    edit->addWidget(Text1Ok);
    connect(Text1, &QLineEdit::returnPressed, this, &PLOT::commitTextBox);
    connect(Text1Ok, &QPushButton::clicked, this, &PLOT::commitTextBox);
    connect(Text1, &QLineEdit::textEdited, this, [this](const QString& t) {
        m_state.textBox.text = fromQt(t);
        Timer3.stop();
    });
    m_editBar->hide();

    // The value read-out: a format list and a box for X and for Y.
    m_readoutBar = new QWidget(this);
    m_readoutBar->setObjectName(QStringLiteral("ReadoutBar"));
    auto* readout = new QHBoxLayout(m_readoutBar);
    readout->setContentsMargins(6, 3, 6, 3);
    Combo1 = new QComboBox(m_readoutBar);
    Combo1->setObjectName(QStringLiteral("Combo1"));
    Text3 = new QLineEdit(m_readoutBar);
    Text3->setObjectName(QStringLiteral("Text3"));
    Combo2 = new QComboBox(m_readoutBar);
    Combo2->setObjectName(QStringLiteral("Combo2"));
    Text2 = new QLineEdit(m_readoutBar);
    Text2->setObjectName(QStringLiteral("Text2"));
    for (QLineEdit* box : {Text3, Text2}) {
        box->setReadOnly(true);
        box->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("10^X = -0.00000E+000")) + 16);
    }
    for (QComboBox* combo : {Combo1, Combo2})
        combo->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("10^X = -0.000E+00")) + 40);
    readout->addWidget(new QLabel(tr("X:"), m_readoutBar));
    readout->addWidget(Combo1);
    readout->addWidget(Text3);
    readout->addSpacing(12);
    readout->addWidget(new QLabel(tr("Y:"), m_readoutBar));
    readout->addWidget(Combo2);
    readout->addWidget(Text2);
    readout->addStretch(1);
    connect(Combo1, &QComboBox::activated, this, [this](int index) {
        charts::ChooseXFormat(m_state, index);
        Text3->setText(toQt(m_state.readout.xText));
        m_view->setFocus();
    });
    connect(Combo2, &QComboBox::activated, this, [this](int index) {
        charts::ChooseYFormat(m_state, index);
        Text2->setText(toQt(m_state.readout.yText));
        m_view->setFocus();
    });
    m_readoutBar->hide();
}

QAction* PLOT::menuAction(const QString& name) const
{
    return m_actions.value(name, nullptr);
}

void PLOT::buildMenus()
{
    auto add = [this](QMenu* menu, const QString& name, const QString& text, auto slot,
                      const QKeySequence& key = {}) {
        QAction* a = menu->addAction(text, this, slot);
        a->setObjectName(name);
        if (!key.isEmpty()) {
            a->setShortcut(key);
            a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            addAction(a);
        }
        m_actions.insert(name, a);
        return a;
    };
    auto submenu = [this](QMenu* parent, const QString& name, const QString& text) {
        QMenu* m = parent->addMenu(text);
        m->setObjectName(name);
        m_actions.insert(name, m->menuAction());
        return m;
    };

    auto* file = new QMenu(tr("&File"), this);
    file->setObjectName(QStringLiteral("GRAPH"));
    add(file, "PLOT_NEW", tr("&New Chart"), [] { PLOT::NewChart(); });
    add(file, "OPENPLOTMn", tr("&Open..."), [] {
        if (Frame())
            Frame()->OpenDocument(QString());
    }, QKeySequence::Open);
    add(file, "CLOSEPLOT", tr("&Close"), [this] {
        if (auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget()))
            sub->close();
        else
            close();
    }, QKeySequence(Qt::CTRL | Qt::Key_W));
    file->addSeparator();
    add(file, "SAVEGRAPH", tr("&Save"), [this] { SaveTT(); }, QKeySequence::Save);
    add(file, "SAVEASGRAPH", tr("Save &As..."), [this] {
        bool cancelled = false;
        SaveGraphTT(cancelled);
    }, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    file->addSeparator();
    add(file, "Plot_PRT", tr("&Print..."), [this] { Plot_PRT(); }, QKeySequence::Print);
    QMenu* exportMenu = submenu(file, "MyExport", tr("&Export to"));
    add(exportMenu, "ExpToFile", tr("&File..."), [this] { ExportChart(false, false); });
    QMenu* clip = submenu(exportMenu, "ExpToClipboard", tr("&Clipboard"));
    add(clip, "BITMAPCLOP", tr("in &Bitmap Format"), [this] { ExportChart(false, true); });
    add(clip, "MetafileCLIP", tr("in &Metafile Format"), [this] { ExportChart(true, true); });
    file->addSeparator();
    add(file, "EXITPLOT", tr("E&xit"), [] {
        if (Frame())
            Frame()->FrameWidget()->close();
    }, QKeySequence(Qt::CTRL | Qt::Key_Q));

    auto* edit = new QMenu(tr("&Edit"), this);
    edit->setObjectName(QStringLiteral("EDITPlot"));
    add(edit, "CUTPLOT", tr("Cu&t"), [this] { CUTSS(); }, QKeySequence::Cut);
    add(edit, "SAVESUBSET", tr("&Copy"), [this] { SAVESS(); }, QKeySequence::Copy);
    add(edit, "PASTESUBSET", tr("&Paste"), [this] { PASTESS(); }, QKeySequence::Paste);
    add(edit, "DELETESUBSET", tr("&Delete"), [this] { DeleteSubset(); });
    edit->addSeparator();
    add(edit, "NEWANNOTATION", tr("New &Annotation"), [this] {
        m_annotationPixel.reset();
        NEWANNOTATION();
    });

    auto* viewMenu = new QMenu(tr("&View"), this);
    viewMenu->setObjectName(QStringLiteral("VIEWPLOT"));
    add(viewMenu, "ALLGRAPHTEXT", tr("&All Graph Texts"), [this] { SHOWALLTEXT(); });
    add(viewMenu, "View_GHJ", tr("&Text/Data Only"), [this] { ViewDataOnly(); });
    QMenu* values = submenu(viewMenu, "XYVALUEST", tr("&X,Y Values"));
    add(values, "VALX_Y", tr("&Show"), [this] { XYShowSub(); });
    add(values, "XY_HIDE", tr("&Hide"), [this] { XYHIDESub(); });
    viewMenu->addSeparator();
    add(viewMenu, "UNDOZOOM", tr("&Undo Zoom"), [this] { UndoZM(); },
        QKeySequence(Qt::CTRL | Qt::Key_Z));

    auto* options = new QMenu(tr("&Options"), this);
    options->setObjectName(QStringLiteral("TOOLSPLOT"));
    add(options, "GENERALAXIS", tr("&Customization Dialog..."), [this] { CastomDial(); });

    // The pop-up menu repeats the views and adds the quick settings.
    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("POPMENU"));
    m_popup->addAction(m_actions["ALLGRAPHTEXT"]);
    m_popup->addAction(m_actions["View_GHJ"]);
    m_popup->addMenu(values);
    m_popup->addSeparator();
    QMenu* axes = submenu(m_popup, "XYAxes", tr("X,Y &Axes"));
    add(axes, "LineaXY", tr("&Linear"), [this] { LineaXY(); });
    add(axes, "AUTOXY", tr("&Auto"), [this] { AUTOXY(); });
    QMenu* cursor = submenu(m_popup, "CURSORSTYLEPOP", tr("Plot &Cursor Style"));
    add(cursor, "CURSORSQUAREPOP", tr("&Square"), [this] { SetCursorStyle(charts::CursorSquare); });
    add(cursor, "CURSORCROSSPOP", tr("&Cross"), [this] { SetCursorStyle(charts::CursorCross); });
    QMenu* textSize = submenu(m_popup, "FONTSIZE", tr("&Text Size"));
    add(textSize, "FONTLADGE", tr("&Large"), [this] { SetTextSize(charts::TextLarge); });
    add(textSize, "FONTMedium", tr("&Medium"), [this] { SetTextSize(charts::TextMedium); });
    add(textSize, "FONTSmall", tr("&Small"), [this] { SetTextSize(charts::TextSmall); });
    QMenu* pointSize = submenu(m_popup, "POINSSIZE", tr("&Point Size"));
    add(pointSize, "POINTSLADGE", tr("&Large"), [this] { SetPointSize(charts::PointLarge); });
    add(pointSize, "POINTSMEDIUM", tr("&Medium"), [this] { SetPointSize(charts::PointMedium); });
    add(pointSize, "POINTSSMALL", tr("&Small"), [this] { SetPointSize(charts::PointSmall); });
    for (const char* name : {"FONTLADGE", "FONTMedium", "FONTSmall", "POINTSLADGE",
                             "POINTSMEDIUM", "POINTSSMALL"})
        m_actions[name]->setCheckable(true);
    QMenu* legendMenu = submenu(m_popup, "LrgendPOP", tr("L&egend"));
    add(legendMenu, "SHOWLEGENDPOP", tr("&Show"), [this] { SetLegend(true); });
    add(legendMenu, "HIDELEGENDPOP", tr("&Hide"), [this] { SetLegend(false); });
    m_popup->addSeparator();
    m_popup->addAction(m_actions["UNDOZOOM"]);
    m_popup->addAction(tr("New &Annotation Here"), this, [this] { NEWANNOTATION(); });
    m_popup->addSeparator();
    add(m_popup, "CUSTOMDIALOG", tr("C&ustomization Dialog..."), [this] { CastomDial(); });
    // The quick settings are also in the View menu, where the keyboard reaches them.
    viewMenu->addSeparator();
    viewMenu->addMenu(textSize);
    viewMenu->addMenu(pointSize);
    viewMenu->addMenu(legendMenu);
    viewMenu->addMenu(axes);
    viewMenu->addMenu(cursor);

    m_menus = {file, edit, viewMenu, options};
    // Printing and the customisation dialog come with their own windows.
    for (const char* name : {"Plot_PRT", "GENERALAXIS", "CUSTOMDIALOG"})
        m_actions[name]->setEnabled(false);
}

void PLOT::redraw(bool dataChanged)
{
    m_dataDirty = m_dataDirty || dataChanged;
    m_view->showChart(m_doc, m_dataDirty);
    m_dataDirty = false;
    if (m_state.cursorMode != charts::CursorNone)
        m_view->setCursorPoint(m_state.cursorMode, m_state.cursorSubset, m_state.cursorPoint);
    m_view->replot();
    updateCommands();
}

void PLOT::changed(bool dataChanged)
{
    m_doc.MustSave();
    redraw(dataChanged);
}

void PLOT::updateCommands()
{
    const bool selected = m_doc.selected.active;
    m_actions["SAVEGRAPH"]->setEnabled(!isTemporaryChart());
    for (const char* name : {"CUTPLOT", "SAVESUBSET", "DELETESUBSET"})
        m_actions[name]->setEnabled(selected && m_state.editItemsEnabled);
    syncToolbar();
    emit commandsChanged();
}

bool PLOT::buttonState(const QString& key, bool fallback) const
{
    QAction* a = Frame() ? Frame()->ToolbarButton(2, key) : nullptr;
    return a ? a->isChecked() : fallback;
}

void PLOT::setButtonState(const QString& key, bool state)
{
    if (QAction* a = Frame() ? Frame()->ToolbarButton(2, key) : nullptr)
        a->setChecked(state);
}

void PLOT::syncToolbar()
{
    // The chart toolbar shows the state of the active chart only.
    if (!Frame() || !isActiveChild())
        return;
    const bool selected = m_doc.selected.active && m_state.editItemsEnabled;
    if (QAction* a = Frame()->ToolbarButton(2, QStringLiteral("SAVE")))
        a->setEnabled(!isTemporaryChart());
    for (const char* key : {"CUTSUBSET", "SAVESUBSET"}) {
        if (QAction* a = Frame()->ToolbarButton(2, QString::fromLatin1(key)))
            a->setEnabled(selected);
    }
    setButtonState(QStringLiteral("MARKER"), m_doc.markDataPoints);
    setButtonState(QStringLiteral("GRIDLINE"), m_doc.gridLines);
    setButtonState(QStringLiteral("LEGEND"), !m_doc.monochrome);
}

bool PLOT::isActiveChild() const
{
    if (!Frame())
        return false;
    const QList<QWidget*> children = Frame()->Children();
    return !children.isEmpty() && children.first() == this;
}

void PLOT::ToolBr()
{
    if (Frame())
        Frame()->SetToolbarMode(2);
    syncToolbar();
}

void PLOT::Intit(bool skipTitles, bool histogram)
{
    charts::Intit(m_doc, charts::SharedPlotExchange(), skipTitles, histogram, currentRandom());
    redraw(true);
}

void PLOT::OPENPLOT(const QString& path, bool& failed, QString& caption)
{
    WaitCursor wait;
    const charts::OpenPlotResult result = charts::OPENPLOT(m_doc, fromQt(path));
    failed = result.failed;
    if (failed)
        return;
    caption = toQt(result.caption);
    m_state = charts::ChartWindowState{};
    hideTextBox();
    XYHIDESub();
    redraw(true);
}

bool PLOT::storeTo(const QString& path)
{
    WaitCursor wait;
    return charts::StoreChart(m_doc, fromQt(path));
}

void PLOT::SaveTT()
{
    SubSetSelCancel();
    if (charts::SaveTT(m_doc)) {
        updateCommands();
        return;
    }
    bool cancelled = false;
    SaveGraphTT(cancelled);
}

void PLOT::SaveGraphTT(bool& cancelled)
{
    QString path = ShowSaveDialog(cancelled, toQt(shell::SaveDialogFilter(4)),
                                  m_doc.ChartPath.empty()
                                      ? QString()
                                      : QFileInfo(toQt(m_doc.ChartPath)).absolutePath());
    if (cancelled)
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".pg");
    SubSetSelCancel();
    redraw(false);
    bool ok = false;
    {
        WaitCursor wait;
        ok = charts::SaveGraphTT(m_doc, fromQt(path));
    }
    if (!ok) {
        ReportError(QStringLiteral("Plot#102. "),
                    QStringLiteral("The chart cannot be written to ") + path + QStringLiteral("."));
        return;
    }
    // The temporary chart stays the temporary chart; any other chart takes the file's name.
    if (!isTemporaryChart())
        setWindowTitle(QFileInfo(path).fileName());
    updateCommands();
}

void PLOT::MustSave()
{
    m_doc.MustSave();
}

void PLOT::PlotCol()
{
    m_doc.PlotCol();
    setButtonState(QStringLiteral("LEGEND"), true);
    redraw(false);
}

void PLOT::Monochr()
{
    m_doc.Monochr();
    setButtonState(QStringLiteral("LEGEND"), false);
    redraw(false);
}

void PLOT::ViewingStyle()
{
    if (buttonState(QStringLiteral("LEGEND"), m_doc.COLORBOOLTT()))
        PlotCol();
    else
        Monochr();
}

void PLOT::Refr()
{
    redraw(m_dataDirty);
}

void PLOT::CheckDiv()
{
    charts::CheckDiv(m_doc);
    redraw(false);
}

void PLOT::ViewDataOnly()
{
    shell::Message message;
    const std::filesystem::path file = shell::TmpPlotPath(shell::Session());
    try {
        WaitCursor wait;
        message = charts::WriteChartDataTableFile(m_doc, file.parent_path());
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Plot#110. "), toQt(e.what()));
        return;
    }
    if (!message.empty()) {
        ShowMessage(message);
        return;
    }
    if (Frame())
        Frame()->ShowTextView(toQt(file.string()), toQt(charts::DataTableTitle));
}

void PLOT::CUTSS()
{
    const auto action = charts::CUTSS(m_doc, m_state, fromQt(windowTitle()), shell::Now());
    if (!action.done)
        return;
    QApplication::clipboard()->setText(toQt(action.clipboardText));
    hideTextBox();
    if (!action.message.empty())
        ShowMessage(action.message);
    redraw(true);
}

void PLOT::SAVESS()
{
    const auto action = charts::SAVESS(m_doc, m_state, fromQt(windowTitle()), shell::Now());
    if (!action.done)
        return;
    QApplication::clipboard()->setText(toQt(action.clipboardText));
    hideTextBox();
    Refr();
}

void PLOT::PASTESS()
{
    const std::string text = fromQt(QApplication::clipboard()->text());
    const shell::Message message =
        charts::PASTESS(m_doc, charts::SharedPlotExchange(), text, currentRandom());
    if (!message.empty()) {
        ResetCursor();
        ShowMessage(message);
        return;
    }
    m_dataDirty = true;
    MarkDataPnt();
    ViewingStyle();
    redraw(true);
}

void PLOT::DeleteSubset()
{
    if (!m_doc.selected.active)
        return;
    hideTextBox();
    const shell::Message message = charts::DeleteSelectedSubset(m_doc, m_state);
    if (!message.empty())
        ShowMessage(message);
    redraw(true);
}

void PLOT::SubsetDel(int subset)
{
    const shell::Message message = charts::SubsetDel(m_doc, m_state, subset);
    if (!message.empty())
        ShowMessage(message);
    redraw(true);
}

void PLOT::SubSetSelect(int subset)
{
    charts::SubSetSelect(m_doc, m_state, subset);
    syncTextBox();
    redraw(false);
}

void PLOT::SubSetSelCancel()
{
    if (!m_doc.selected.active)
        return;
    charts::SubSetSelCancel(m_doc, m_state);
    redraw(false);
}

charts::PlotProfileResult PLOT::plotProfile(charts::ProfileRequest& request)
{
    hideTextBox();
    const charts::PlotProfileResult result = charts::PlotProfile(
        m_doc, m_state, charts::SharedPlotExchange(), request, currentRandom());
    TxtBoxEn(false);
    m_view->setZoomPermitted(true);
    redraw(true);
    return result;
}

void PLOT::showHistogram(const std::string& title, const std::vector<charts::HistogramBar>& bars)
{
    hideTextBox();
    m_state = charts::ChartWindowState{};
    charts::LayoutHistogram(m_doc, charts::SharedPlotExchange(), title, bars);
    XYHIDESub();
    m_view->setZoomPermitted(true);
    redraw(true);
}

void PLOT::closeEvent(QCloseEvent* event)
{
    const shell::Message question = charts::SaveQuestion(m_doc, fromQt(windowTitle()));
    if (!question.empty()) {
        auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget());
        if (sub && sub->isMinimized())
            sub->showNormal();
        if (sub && sub->mdiArea())
            sub->mdiArea()->setActiveSubWindow(sub);
        const int answer = ShowMessage(question);
        if (answer == AnswerYes) {
            SaveTT();
            if (m_doc.mustSave) {
                // Not saved (the dialog was cancelled or the file could not be written).
                shell::Session().CancelClose = true;
                event->ignore();
                return;
            }
        } else if (answer == AnswerCancel) {
            shell::Session().CancelClose = true;
            event->ignore();
            return;
        }
    }
    event->accept();
}

} // namespace zarvion::gui
