#include "comparison/Comparison.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSortFilterProxyModel>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

#include "comparison/ComparisonChart.h"
#include "platform/FileDialogs.h"
#include "platform/Frame.h"
#include "platform/MessageBox.h"
#include "platform/NamedControl.h"
#include "platform/SortByHeader.h"
#include "platform/WaitCursor.h"
#include "shell/SessionState.h"
#include "shell/TextFormat.h"

namespace zarvion::gui {

namespace {

Comparison* g_instance = nullptr;

QString numberText(const std::optional<int>& n)
{
    return n ? QString::number(*n) : QString();
}

} // namespace

// ---------------------------------------------------------------------------------------------

void MergedTableModel::setRows(const std::vector<comparison::MergedRow>* rows)
{
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

int MergedTableModel::rowCount(const QModelIndex&) const
{
    return m_rows ? static_cast<int>(m_rows->size()) : 0;
}

QVariant MergedTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const auto& row = (*m_rows)[static_cast<std::size_t>(index.row())];
    if (role == Qt::TextAlignmentRole)
        return index.column() == Species ? QVariant(Qt::AlignLeft | Qt::AlignVCenter)
                                         : QVariant(Qt::AlignCenter);
    if (role == Qt::UserRole) { // sort key
        switch (index.column()) {
        case Num: return index.row() + 1;
        case Species: return toQt(row.name);
        case N1: return toQt(row.mark1);
        case N2: return toQt(row.mark2);
        case Number1: return row.number1 ? *row.number1 : -1;
        default: return row.number2 ? *row.number2 : -1;
        }
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Num: return index.row() + 1;
    case Species: return toQt(row.name);
    case N1: return toQt(row.mark1);
    case N2: return toQt(row.mark2);
    case Number1: return numberText(row.number1);
    default: return numberText(row.number2);
    }
}

QVariant MergedTableModel::headerData(int section, Qt::Orientation o, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (o == Qt::Vertical)
        return QString(); // a row selector: a double click on it plots the row
    switch (section) {
    case Num: return QStringLiteral("Num");
    case Species: return QStringLiteral("Species");
    case N1: return QStringLiteral("N1");
    case N2: return QStringLiteral("N2");
    case Number1: return QStringLiteral("No. in File 1");
    default: return QStringLiteral("No. in File 2");
    }
}

// ---------------------------------------------------------------------------------------------

Comparison* Comparison::Instance()
{
    return g_instance;
}

Comparison* Comparison::Open(const QString& path1)
{
    if (g_instance) {
        if (Frame())
            Frame()->CloseChild(g_instance);
        else
            g_instance->close();
    }
    auto* window = new Comparison;
    window->Text1->setText(path1);
    window->Text1->setCursorPosition(static_cast<int>(path1.size()));
    if (Frame())
        Frame()->AddChild(window);
    else
        window->show();
    window->Text2->setFocus(Qt::OtherFocusReason);
    return window;
}

Comparison::Comparison(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("Comparison"));
    setWindowTitle(QStringLiteral("Comparing Solver Files"));
    setAttribute(Qt::WA_DeleteOnClose);
    if (g_instance && g_instance != this)
        g_instance->close();
    g_instance = this;
    m_model = new MergedTableModel(this);
    buildUi();
    Timer1.setSingleShot(true);
    Timer1.setInterval(50);
    connect(&Timer1, &QTimer::timeout, this, [this] {
        bool failed = false;
        PrepGrid(failed);
    });
    enablePlot(false);
}

Comparison::~Comparison()
{
    if (g_instance == this)
        g_instance = nullptr;
}

QString Comparison::HelpText()
{
    // The formula in a fixed-width font: numerator and denominator centred over the bar.
    const char* const lines[] = {
        "Comparing Solver Files",
        "",
        "Loading Files",
        "Enter the paths of two solver files that hold results of calculation, for example "
        "a full reaction mechanism and a mechanism reduced from it, and press \"Prepare\". "
        "Species of the two files are paired by name.",
        "In the table, the asterisk (*) denotes species, for which the data are available; "
        "the 'v' symbol denotes target species specified during formation of reduced reaction "
        "mechanism.",
        "",
        "Plotting Functions",
        "Select function you want to plot: species concentration or relative error. Move the "
        "table cursor ",
        "to the chosen species and double click the corresponding row header. The profily "
        "appears on Temporary Chart. ",
        "To add the profily to existing Temporary Chart, hold down the Ctrl button and double "
        "click the row header.",
        "",
        "Relative Error Estimation",
        "",
        "                 abs(Ck,1 - Ck,2)",
        "Error = ----------------------------------",
        "              b Ck,1 + (1 - b) Ck,2",
        "",
        "where Ck is the k-th species concentration or temperature, b is a parameter on the "
        "interval [0,1].",
    };
    QString text;
    for (const char* line : lines)
        text += QString::fromLatin1(line) + QLatin1Char('\n');
    return text;
}

void Comparison::buildUi()
{
    Text1 = NamedControl<QLineEdit>("Text1", this);
    Text2 = NamedControl<QLineEdit>("Text2", this);
    Command1 = CommandButton("Command1", QStringLiteral("Browse "), this);
    Command2 = CommandButton("Command2", QStringLiteral("Browse "), this);
    Command3 = CommandButton("Command3", QStringLiteral("Prepare"), this);
    Command4 = CommandButton("Command4", QStringLiteral("Close"), this);
    connect(Command1, &QPushButton::clicked, this, [this] { FilePa1(1); });
    connect(Command2, &QPushButton::clicked, this, [this] { FilePa1(2); });
    connect(Command3, &QPushButton::clicked, this, &Comparison::Prepare);
    connect(Command4, &QPushButton::clicked, this, [this] {
        if (Frame())
            Frame()->CloseChild(this);
        else
            close();
    });
    // A changed path needs a new Prepare.
    for (QLineEdit* path : {Text1, Text2}) {
        connect(path, &QLineEdit::textEdited, this, [this] {
            m_set = {};
            m_model->setRows(nullptr);
            enablePlot(false);
        });
    }

    auto* files = new QGridLayout;
    files->addWidget(new QLabel(QStringLiteral("File 1"), this), 0, 0);
    files->addWidget(Text1, 0, 1);
    files->addWidget(Command1, 0, 2);
    files->addWidget(new QLabel(QStringLiteral("File 2"), this), 1, 0);
    files->addWidget(Text2, 1, 1);
    files->addWidget(Command2, 1, 2);
    files->addWidget(Command3, 1, 3);
    files->setColumnStretch(1, 1);

    m_proxy = new QSortFilterProxyModel(this);
    m_proxy->setSourceModel(m_model);
    m_proxy->setSortRole(Qt::UserRole);
    GridEX1 = NamedControl<QTableView>("GridEX1", this);
    GridEX1->setModel(m_proxy);
    GridEX1->setSelectionBehavior(QAbstractItemView::SelectRows);
    GridEX1->setSelectionMode(QAbstractItemView::SingleSelection);
    GridEX1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GridEX1->verticalHeader()->setDefaultSectionSize(GridEX1->fontMetrics().height() + 6);
    GridEX1->verticalHeader()->setMinimumWidth(18);
    GridEX1->verticalHeader()->setToolTip(
        QStringLiteral("Double click to plot the row; hold Ctrl to add it to the chart"));
    GridEX1->setColumnWidth(MergedTableModel::Num, 48);
    GridEX1->setColumnWidth(MergedTableModel::Species, 110);
    GridEX1->setColumnWidth(MergedTableModel::N1, 40);
    GridEX1->setColumnWidth(MergedTableModel::N2, 40);
    GridEX1->setColumnWidth(MergedTableModel::Number1, 96);
    GridEX1->horizontalHeader()->setStretchLastSection(true);
    GridEX1->setMinimumWidth(420);
    GridEX1->installEventFilter(this);
    connect(GridEX1->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int column) { SortByHeader(m_proxy, m_sortKeys, column, m_lastSortColumn); });
    m_proxy->sort(MergedTableModel::Num, Qt::AscendingOrder);
    m_sortKeys = {{MergedTableModel::Num, true}};
    m_lastSortColumn = MergedTableModel::Num;
    auto plotFromView = [this](int viewRow) {
        plotEntry(entryAt(viewRow), QApplication::keyboardModifiers() & Qt::ControlModifier);
    };
    connect(GridEX1->verticalHeader(), &QHeaderView::sectionDoubleClicked, this, plotFromView);
    connect(GridEX1, &QTableView::doubleClicked, this,
            [plotFromView](const QModelIndex& index) { plotFromView(index.row()); });

    TabStrip1 = NamedControl<QTabWidget>("TabStrip1", this);
    FramePlot = buildPlotPage();
    TabStrip1->addTab(FramePlot, QStringLiteral("Plot"));
    HelpBox = NamedControl<QPlainTextEdit>("HelpBox", this);
    HelpBox->setReadOnly(true);
    HelpBox->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    HelpBox->setPlainText(HelpText());
    TabStrip1->addTab(HelpBox, QStringLiteral("Help"));

    auto* body = new QHBoxLayout;
    body->addWidget(GridEX1, 1);
    body->addWidget(TabStrip1, 1);
    auto* bottom = new QHBoxLayout;
    auto* hint = NamedControl<QLabel>(
        "Label1", QStringLiteral("Double click a row header to plot; hold Ctrl to add to the chart."),
        this);
    bottom->addWidget(hint, 1);
    bottom->addWidget(Command4);
    auto* root = new QVBoxLayout(this);
    root->addLayout(files);
    root->addLayout(body, 1);
    root->addLayout(bottom);
    resize(960, 600);
}

QWidget* Comparison::buildPlotPage()
{
    auto* page = NamedControl<QWidget>("FramePlot", this);
    auto numberBox = [page](const char* name, const QString& text) {
        auto* box = NamedControl<QLineEdit>(name, text, page);
        box->setFixedWidth(100);
        box->setAlignment(Qt::AlignRight);
        return box;
    };
    const QString one = toQt(shell::Format(1.0, "0.00E+00"));
    Text5 = numberBox("Text5", QStringLiteral("0.5"));
    Text3 = numberBox("Text3", one);
    Text4 = numberBox("Text4", one);

    auto* function = new QGroupBox(QStringLiteral("Plot"), page);
    auto* fl = new QGridLayout(function);
    Option1_0 = NamedControl<QRadioButton>("Option1_0", QStringLiteral("Concentration/Temperature"),
                                           function);
    Option1_2 = NamedControl<QRadioButton>("Option1_2", QStringLiteral("Relative Error"), function);
    Option1_0->setChecked(true);
    Label7 = NamedControl<QLabel>("Label7", QStringLiteral("Parameter b"), function);
    fl->addWidget(Option1_0, 0, 0, 1, 3);
    fl->addWidget(Option1_2, 1, 0);
    fl->addWidget(Label7, 1, 1, Qt::AlignRight);
    fl->addWidget(Text5, 1, 2);
    fl->setColumnStretch(0, 1);
    auto followChoice = [this] {
        const bool error = Option1_2->isChecked();
        Text5->setEnabled(error);
        Label7->setEnabled(error);
    };
    connect(Option1_2, &QRadioButton::toggled, this, followChoice);
    followChoice();

    auto* units = new QGroupBox(QStringLiteral("Concentration"), page);
    auto* ul = new QHBoxLayout(units);
    Option2 = NamedControl<QRadioButton>("Option2", QStringLiteral("mol/cm^3"), units);
    Option3 = NamedControl<QRadioButton>("Option3", QStringLiteral("1/cm^3"), units);
    (shell::Session().ConcentrationUnit == 1 ? Option3 : Option2)->setChecked(true);
    ul->addWidget(Option2);
    ul->addWidget(Option3);
    ul->addStretch();

    auto* axes = new QGroupBox(QStringLiteral("Axes"), page);
    auto* al = new QGridLayout(axes);
    Option4 = NamedControl<QCheckBox>("Option4", QStringLiteral("Log10(X)"), axes);
    Option7 = NamedControl<QCheckBox>("Option7", QStringLiteral("Log10(Y)"), axes);
    auto* label4 = NamedControl<QLabel>("Label4", QStringLiteral("Scaling"), axes);
    auto* label5 = NamedControl<QLabel>("Label5", QStringLiteral("Scaling"), axes);
    al->addWidget(new QLabel(QStringLiteral("Time axis"), axes), 0, 0);
    al->addWidget(Option4, 0, 1);
    al->addWidget(label4, 0, 2, Qt::AlignRight);
    al->addWidget(Text3, 0, 3);
    al->addWidget(new QLabel(QStringLiteral("Y-axis"), axes), 1, 0);
    al->addWidget(Option7, 1, 1);
    al->addWidget(label5, 1, 2, Qt::AlignRight);
    al->addWidget(Text4, 1, 3);
    al->setColumnStretch(2, 1);

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(function);
    layout->addWidget(units);
    layout->addWidget(axes);
    layout->addStretch();
    return page;
}

void Comparison::enablePlot(bool enabled)
{
    FramePlot->setEnabled(enabled);
}

int Comparison::entryAt(int viewRow) const
{
    const QModelIndex view = m_proxy->index(viewRow, 0);
    return view.isValid() ? m_proxy->mapToSource(view).row() : -1;
}

void Comparison::ToolBr()
{
    if (Frame())
        Frame()->SetToolbarMode(0);
}

void Comparison::FilePa1(int file)
{
    bool cancelled = false;
    const QString path =
        ShowOpenDialog(cancelled, QStringLiteral("Windows Text (*.txt)|*.txt|All Files (*.*)|*.*"));
    if (cancelled)
        return;
    QLineEdit* box = file == 1 ? Text1 : Text2;
    box->setText(path);
    box->setCursorPosition(static_cast<int>(path.size()));
    emit box->textEdited(path);
}

void Comparison::Prepare()
{
    // The click returns before the reading begins.
    Timer1.start();
}

void Comparison::PrepGrid(bool& failed)
{
    failed = true;
    m_busy = true;
    m_set = {};
    m_model->setRows(nullptr);
    enablePlot(false);
    int refused = 0;
    shell::Message refusal;
    try {
        WaitCursor wait;
        comparison::ComparisonSet set;
        refusal = comparison::PrepGrid(fromQt(Text1->text()), fromQt(Text2->text()), set, &refused);
        if (refusal.empty())
            m_set = std::move(set);
    } catch (const std::exception& e) {
        m_busy = false;
        ReportError(QStringLiteral("Cmp#101. "), toQt(e.what()));
        return;
    }
    m_busy = false;
    if (!refusal.empty()) {
        QLineEdit* field = refused == 2 ? Text2 : refused == 1 ? Text1 : nullptr;
        if (field)
            ShowFieldError(toQt(refusal.text), field);
        else
            ShowMessage(refusal);
        return;
    }
    m_model->setRows(&m_set.MergedTable);
    enablePlot(true);
    GridEX1->setCurrentIndex(m_proxy->index(0, MergedTableModel::Species));
    failed = false;
}

void Comparison::RedMsgS(const shell::Message& message, QWidget* frame, QLineEdit* field)
{
    ShowMessage(message);
    TabStrip1->setCurrentWidget(frame);
    if (field) {
        field->setFocus(Qt::OtherFocusReason);
        field->selectAll();
    }
}

void Comparison::plotEntry(int entry, bool addHeld)
{
    if (m_busy || entry < 0 || entry >= static_cast<int>(m_set.MergedTable.size()))
        return;
    comparison::PlotSettings settings;
    settings.relativeError = Option1_2->isChecked();
    settings.molecules = Option3->isChecked();
    settings.logX = Option4->isChecked();
    settings.logY = Option7->isChecked();
    const auto& session = shell::Session();
    if (session.AvogadroNumber > 0 && session.BoltzmannConstant > 0 && session.AtmosphereDyn > 0)
        settings.constants = {session.AvogadroNumber, session.BoltzmannConstant,
                              session.AtmosphereDyn};
    const comparison::SettingsCheck check = comparison::CheckPlotSettings(
        fromQt(Text3->text()), fromQt(Text4->text()), fromQt(Text5->text()), settings);
    if (!check.message.empty()) {
        QLineEdit* field = check.field == 3 ? Text3 : check.field == 4 ? Text4 : Text5;
        RedMsgS(check.message, FramePlot, field);
        return;
    }
    const comparison::MergedRow& row = m_set.MergedTable[static_cast<std::size_t>(entry)];
    try {
        if (settings.relativeError) {
            RedPlotFunction(2, row, settings, addHeld);
        } else {
            RedPlotFunction(0, row, settings, addHeld);
            // The second file's curve joins the first, unless the first file lacks the species
            // and no add was asked for: then it is the first curve on the chart.
            RedPlotFunction(1, row, settings, comparison::SecondCurveAdds(addHeld, row));
        }
    } catch (const std::exception& e) {
        ResetCursor();
        ReportError(QStringLiteral("Cmp#201. "), toQt(e.what()));
    }
}

void Comparison::RedPlotFunction(int mode, const comparison::MergedRow& row,
                                 const comparison::PlotSettings& settings, bool add)
{
    const comparison::PlotCurve curve = comparison::RedPlotFunction(m_set, mode, row, settings);
    if (curve.skipped)
        return;
    if (!curve.message.empty()) {
        ResetCursor();
        ShowMessage(curve.message);
        return;
    }
    ShowComparisonCurve(this, ComparisonTitle(toQt(m_set.file1.path), toQt(m_set.file2.path)),
                        curve, settings, add);
}

void Comparison::closeEvent(QCloseEvent* event)
{
    if (g_instance == this)
        g_instance = nullptr;
    QWidget::closeEvent(event);
}

bool Comparison::eventFilter(QObject* watched, QEvent* event)
{
    // Enter on a row plots it, as a double click on its header does.
    if (watched == GridEX1 && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            const QModelIndex current = GridEX1->currentIndex();
            if (current.isValid()) {
                plotEntry(entryAt(current.row()), key->modifiers() & Qt::ControlModifier);
                return true;
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace zarvion::gui
