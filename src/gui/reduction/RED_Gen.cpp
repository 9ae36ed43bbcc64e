#include "reduction/RED_Gen.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include "platform/BlockingProgress.h"
#include "platform/FileDialogs.h"
#include "platform/Frame.h"
#include "platform/MessageBox.h"
#include "platform/NamedControl.h"
#include "platform/SortByHeader.h"
#include "platform/WaitCursor.h"
#include "reduction/ReductionEngine.h"
#include "shell/SessionState.h"
#include "shell/TextFormat.h"
#include "textdocs/RES_ShowFile.h"

namespace zarvion::gui {

namespace {

RED_Gen* g_instance = nullptr;

//! The back colour of species present at the start, and a text colour readable on it.
QColor highlightColour()
{
    return QColor(static_cast<QRgb>(shell::QBColorRgb(shell::Session().HighlightColour)));
}

QColor textColourOn(const QColor& back)
{
    return back.lightnessF() < 0.55 ? QColor(Qt::white) : QColor(Qt::black);
}

} // namespace

// ---------------------------------------------------------------------------------------------

SpeciesTableModel::SpeciesTableModel(std::vector<reduction::SpeciesTableRow>& table,
                                     QObject* parent)
    : QAbstractTableModel(parent), m_table(table)
{
}

int SpeciesTableModel::rowCount(const QModelIndex&) const
{
    return static_cast<int>(m_table.size());
}

void SpeciesTableModel::ParametrsSeting()
{
    beginResetModel();
    m_target.assign(m_table.size(), 0);
    endResetModel();
}

QVariant SpeciesTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const auto& row = m_table[static_cast<std::size_t>(index.row())];
    switch (role) {
    // The check column keeps its plain back colour, so that its mark stays readable.
    case Qt::BackgroundRole:
        return row.hasInitial && index.column() != Target ? QVariant(highlightColour()) : QVariant();
    case Qt::ForegroundRole:
        return row.hasInitial && index.column() != Target ? QVariant(textColourOn(highlightColour()))
                                                          : QVariant();
    case Qt::CheckStateRole:
        if (index.column() == Target)
            return target(index.row()) ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::TextAlignmentRole:
        return index.column() == Species ? QVariant(Qt::AlignLeft | Qt::AlignVCenter)
                                         : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::UserRole: // sort key
        switch (index.column()) {
        case Num: return index.row() + 1;
        case Target: return target(index.row()) ? 1 : 0;
        case Species: return toQt(row.name);
        case InitaiCond: return row.hasInitial ? 1 : 0;
        default: return shell::ToDouble(shell::Trim(row.parameter)).value_or(-1.0);
        }
    case Qt::DisplayRole:
    case Qt::EditRole:
        switch (index.column()) {
        case Num: return index.row() + 1;
        case Species: return toQt(row.name);
        case InitaiCond: return row.hasInitial;
        case Parameter: return toQt(row.parameter);
        default: return {};
        }
    default:
        return {};
    }
}

QVariant SpeciesTableModel::headerData(int section, Qt::Orientation o, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (o == Qt::Vertical)
        return section + 1;
    switch (section) {
    case Num: return QStringLiteral("Num");
    case Target: return QStringLiteral("Target");
    case Species: return QStringLiteral("Species");
    case InitaiCond: return QStringLiteral("InitaiCond");
    default: return QStringLiteral("Target Parameter");
    }
}

Qt::ItemFlags SpeciesTableModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == Parameter)
        f |= Qt::ItemIsEditable;
    return f;
}

bool SpeciesTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || index.column() != Parameter || index.row() >= rowCount())
        return false;
    const auto r = static_cast<std::size_t>(index.row());
    m_table[r].parameter = fromQt(value.toString());
    // The check column follows the parameter; only the parameter counts for the run.
    const bool given = !shell::Trim(m_table[r].parameter).empty();
    if (given != (m_target[r] != 0)) {
        m_target[r] = given ? 1 : 0;
        emit dataChanged(this->index(index.row(), Target), this->index(index.row(), Target));
    }
    emit dataChanged(index, index);
    return true;
}

// ---------------------------------------------------------------------------------------------

RED_Gen* RED_Gen::Instance()
{
    return g_instance;
}

RED_Gen* RED_Gen::Open(const QString& sourcePath)
{
    QWidget* owner = Frame() ? Frame()->FrameWidget() : nullptr;
    auto* window = new RED_Gen(owner);
    window->Text10->setText(sourcePath);
    window->Text10->setReadOnly(true);
    window->Text10->setCursorPosition(static_cast<int>(sourcePath.size()));
    window->ObjectsEn(false);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

RED_Gen::RED_Gen(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("RED_Gen"));
    setWindowTitle(QStringLiteral("Reduced Reaction Kinetics"));
    setAttribute(Qt::WA_DeleteOnClose);
    if (g_instance && g_instance != this)
        g_instance->close();
    g_instance = this;
    m_model = new SpeciesTableModel(m_setup.SpeciesTable, this);
    buildUi();
    ObjectsEn(false);
}

RED_Gen::~RED_Gen()
{
    if (g_instance == this)
        g_instance = nullptr;
}

void RED_Gen::buildUi()
{
    auto line = [this](const char* name) { return NamedControl<QLineEdit>(name, this); };
    auto button = [this](const char* name, const QString& caption) {
        return CommandButton(name, caption, this);
    };
    Text10 = line("Text10");
    Text5 = line("Text5");
    Text1[0] = line("Text1_0");
    Text1[1] = line("Text1_1");
    Text6 = line("Text6");
    Text6->setReadOnly(true);
    Text2 = line("Text2");
    for (QLineEdit* box : {Text1[0], Text1[1], Text6, Text2}) {
        box->setFixedWidth(90);
        box->setAlignment(Qt::AlignRight);
    }
    Command8 = button("Command8", QStringLiteral("Browse "));
    Command7 = button("Command7", QStringLiteral("Prepare"));
    Command5 = button("Command5", QStringLiteral("Enter"));
    Command2 = button("Command2", QStringLiteral("Save"));
    Command4 = button("Command4", QStringLiteral("Clear All"));
    Command1 = button("Command1", QStringLiteral("Start"));
    Command3 = button("Command3", QStringLiteral("Close"));
    Command1->setDefault(false);

    auto* paths = new QGridLayout;
    paths->addWidget(new QLabel(QStringLiteral("Source File"), this), 0, 0);
    paths->addWidget(Text10, 0, 1);
    paths->addWidget(new QLabel(QStringLiteral("Reduced File"), this), 1, 0);
    paths->addWidget(Text5, 1, 1);
    paths->addWidget(Command8, 1, 2);
    paths->addWidget(Command7, 2, 2);
    paths->setColumnStretch(1, 1);

    Frame1 = NamedControl<QGroupBox>("Frame1", QStringLiteral("Settings"), this);
    auto* settings = new QFormLayout(Frame1);
    Label4 = NamedControl<QLabel>("Label4", QStringLiteral("Temperature"), this);
    settings->addRow(Label4, Text1[0]);
    settings->addRow(new QLabel(QStringLiteral(" Non Targets"), this), Text1[1]);
    settings->addRow(new QLabel(QStringLiteral("Number of steps"), this), Text6);
    auto* every = new QHBoxLayout;
    every->addWidget(Text2);
    every->addWidget(new QLabel(QStringLiteral("  step"), this));
    every->addStretch();
    settings->addRow(new QLabel(QStringLiteral("Use every  "), this), every);
    auto* stored = new QHBoxLayout;
    stored->addWidget(Command5);
    stored->addWidget(Command2);
    stored->addWidget(Command4);
    stored->addStretch();
    settings->addRow(stored);

    Label8 = NamedControl<QLabel>(
        "Label8", QStringLiteral("Highlighted species have nonzero initial concentrations."), this);
    Label8->setWordWrap(true);
    Label8->setVisible(false);
    Label10 = NamedControl<QLabel>("Label10", this);
    Label10->setWordWrap(true);
    Label10->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Check2 = NamedControl<QCheckBox>("Check2", QStringLiteral("Start Reduced    Mechanism"), this);
    ProgressBar1 = NamedControl<QProgressBar>("ProgressBar1", this);
    // 0 to 10 in hundredths, so that the bar moves smoothly on long runs.
    ProgressBar1->setRange(0, 1000);
    ProgressBar1->setTextVisible(false);
    ProgressBar1->setVisible(false);

    m_proxy = new QSortFilterProxyModel(this);
    m_proxy->setSourceModel(m_model);
    m_proxy->setSortRole(Qt::UserRole);
    GridEX1 = NamedControl<QTableView>("GridEX1", this);
    GridEX1->setModel(m_proxy);
    GridEX1->setColumnHidden(SpeciesTableModel::InitaiCond, true);
    GridEX1->verticalHeader()->setVisible(false);
    GridEX1->verticalHeader()->setDefaultSectionSize(GridEX1->fontMetrics().height() + 6);
    GridEX1->setSelectionMode(QAbstractItemView::SingleSelection);
    GridEX1->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    GridEX1->setColumnWidth(SpeciesTableModel::Num, 48);
    GridEX1->setColumnWidth(SpeciesTableModel::Target, 56);
    GridEX1->setColumnWidth(SpeciesTableModel::Species, 100); // 1500 twips
    GridEX1->horizontalHeader()->setStretchLastSection(true);
    GridEX1->setMinimumWidth(340);
    connect(GridEX1->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int column) { SortByHeader(m_proxy, m_sortKeys, column, m_lastSortColumn); });
    m_proxy->sort(SpeciesTableModel::Num, Qt::AscendingOrder);
    m_sortKeys = {{SpeciesTableModel::Num, true}};
    m_lastSortColumn = SpeciesTableModel::Num;

    connect(Command7, &QPushButton::clicked, this, &RED_Gen::Prepare);
    connect(Command1, &QPushButton::clicked, this, &RED_Gen::Start);
    connect(Command2, &QPushButton::clicked, this, &RED_Gen::Save);
    connect(Command5, &QPushButton::clicked, this, &RED_Gen::Enter);
    connect(Command4, &QPushButton::clicked, this, &RED_Gen::ClearAll);
    connect(Command8, &QPushButton::clicked, this, &RED_Gen::RedNewPath);
    connect(Command3, &QPushButton::clicked, this, &QDialog::close);
    // A changed source needs a new Prepare.
    connect(Text10, &QLineEdit::textEdited, this, [this] { ObjectsEn(false); });

    auto* left = new QVBoxLayout;
    left->addLayout(paths);
    left->addWidget(Frame1);
    left->addWidget(Label8);
    left->addSpacing(12);
    left->addWidget(Label10);
    left->addStretch();
    left->addWidget(Check2);
    left->addWidget(ProgressBar1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Command1);
    buttons->addStretch();
    buttons->addWidget(Command3);
    left->addLayout(buttons);
    auto* root = new QHBoxLayout(this);
    root->addLayout(left, 3);
    root->addWidget(GridEX1, 2);
    resize(900, 520);
}

void RED_Gen::ObjectsEn(bool enabled)
{
    for (QWidget* w : std::initializer_list<QWidget*>{Command1, Command2, Command4, Command5, Frame1})
        w->setEnabled(enabled);
}

void RED_Gen::CommandEn(bool enabled)
{
    for (QWidget* w : std::initializer_list<QWidget*>{Command8, Command4, Command7, Command1, Command3})
        w->setEnabled(enabled);
}

QLineEdit* RED_Gen::fieldBox(int field) const
{
    switch (field) {
    case 0: return Text1[0];
    case 1: return Text1[1];
    case 2: return Text2;
    case 5: return Text5;
    case 10: return Text10;
    default: return nullptr;
    }
}

int RED_Gen::currentSpeciesRow() const
{
    const QModelIndex index = GridEX1->currentIndex();
    return index.isValid() ? m_proxy->mapToSource(index).row() : -1;
}

void RED_Gen::goToRow(int row)
{
    if (row < 0 || row >= m_model->rowCount())
        return;
    const QModelIndex view = m_proxy->mapFromSource(m_model->index(row, SpeciesTableModel::Parameter));
    GridEX1->setFocus(Qt::OtherFocusReason);
    GridEX1->setCurrentIndex(view);
    GridEX1->scrollTo(view);
}

void RED_Gen::UbdateGrid()
{
    // An open cell editor gives its text to the table before anything reads the parameters.
    for (QLineEdit* editor : GridEX1->viewport()->findChildren<QLineEdit*>()) {
        if (!editor->isVisible())
            continue; // a closed editor waiting to be deleted
        emit GridEX1->itemDelegate()->commitData(editor);
        emit GridEX1->itemDelegate()->closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void RED_Gen::readControls()
{
    // Temperature can be no target of a constant-temperature problem, whatever the box held.
    m_setup.temperatureText = m_setup.temperatureVisible ? fromQt(Text1[0]->text()) : std::string();
    m_setup.nonTargetText = fromQt(Text1[1]->text());
    m_setup.intervalText = fromQt(Text2->text());
    m_setup.reducedPathText = fromQt(Text5->text());
}

void RED_Gen::showSetup()
{
    Text1[0]->setText(toQt(m_setup.temperatureText));
    Text1[0]->setVisible(m_setup.temperatureVisible);
    Label4->setText(toQt(m_setup.temperatureCaption));
    Text1[1]->setText(toQt(m_setup.nonTargetText));
    Text6->setText(toQt(m_setup.stepsText));
    Text2->setText(toQt(m_setup.intervalText));
    m_model->ParametrsSeting();
}

bool RED_Gen::refuse(const reduction::SetupRefusal& refusal)
{
    if (refusal.empty())
        return false;
    if (QLineEdit* box = fieldBox(refusal.field)) {
        ShowFieldError(toQt(refusal.message.text), box);
        return true;
    }
    ShowMessage(refusal.message);
    if (refusal.row > 0)
        goToRow(refusal.row - 1);
    return true;
}

void RED_Gen::Prepare()
{
    try {
        // A refused Prepare leaves the data of the last good one in place.
        reduction::ReductionSetup trial = m_setup;
        trial.SourcePath = fromQt(Text10->text());
        trial.reducedPathText = fromQt(Text5->text());
        postprocessor::ResultSet results;
        reduction::PrepareRefusal refusal;
        {
            WaitCursor wait;
            refusal = reduction::Prepare(trial, results);
        }
        if (refusal.viaReportError) {
            ReportError(QStringLiteral("Red#102. "), toQt(refusal.refusal.message.text));
            return;
        }
        if (refuse(refusal.refusal))
            return;
        m_setup = std::move(trial);
        m_results = std::move(results);
        showSetup();
        goToRow(0);
        ObjectsEn(true);
        Label8->setVisible(true);
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Red#101. "), toQt(e.what()));
    }
}

void RED_Gen::Start()
{
    try {
        UbdateGrid();
        readControls();
        reduction::ReductionRequest request;
        const reduction::SetupRefusal refusal = reduction::BuildRequest(m_setup, request);
        // The checks write the interval and the parameters back as they read them.
        Text2->setText(toQt(m_setup.intervalText));
        if (m_setup.temperatureVisible)
            Text1[0]->setText(toQt(m_setup.temperatureText));
        Text1[1]->setText(toQt(m_setup.nonTargetText));
        if (refuse(refusal))
            return;
        const QString reducedPath = Text5->text();
        QPointer<RED_Gen> self(this);
        ReduceMechanism(request);
        if (!self)
            return;
        shell::Session().ResultsFilePath = fromQt(reducedPath);
        if (Check2->isChecked())
            startReducedMechanism(reducedPath);
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Red#201. "), toQt(e.what()));
    }
}

void RED_Gen::ReduceMechanism(const reduction::ReductionRequest& request)
{
    ProgressBar1->setValue(0);
    ProgressBar1->setVisible(true);
    reduction::ReductionOutcome outcome;
    {
        BlockingProgress progress(QStringLiteral("Reducing the reaction mechanism..."),
                                  ProgressBar1->maximum(), true, this);
        const auto report = [this, &progress](float value) {
            const int hundredths = static_cast<int>(value * 100.0f + 0.5f);
            ProgressBar1->setValue(hundredths);
            return progress.step(hundredths);
        };
        outcome = reduction::ReduceMechanism(m_tables, m_results, m_setup.SourcePath, request,
                                             report, shell::Now());
    }
    for (const std::string& fault : outcome.reported)
        ReportError(QStringLiteral("Red#202. "), toQt(fault));
    if (outcome.failed)
        return; // the concentrations could not be computed: nothing written, no word
    if (outcome.cancelled) {
        ShowMessage(QStringLiteral("The reduction has been cancelled after %1 analysed rows; "
                                   "the reduced file has not been created.")
                        .arg(outcome.rowsAnalysed),
                    48);
    }
    if (outcome.fileWritten) {
        Label10->setText(QStringLiteral("Last run: %1 of %2 species and %3 of %4 reactions kept, "
                                        "%5 rows analysed; written to %6")
                             .arg(m_tables.ReducedSpeciesCount)
                             .arg(m_tables.NumSpecies)
                             .arg(m_tables.ReducedReactionCount)
                             .arg(m_tables.NumReactions)
                             .arg(outcome.rowsAnalysed)
                             .arg(toQt(request.reducedPath)));
    } else {
        Label10->clear();
    }
    for (const auto& message : outcome.messages)
        ShowMessage(message);
    ProgressBar1->setVisible(false);
    CommandEn(true);
}

void RED_Gen::startReducedMechanism(const QString& path)
{
    FrameServices* frame = Frame();
    if (!frame)
        return;
    frame->NormalForStartWindow();
    auto documentOf = [frame, &path]() -> RES_ShowFile* {
        for (QWidget* w : frame->Children()) {
            auto* doc = qobject_cast<RES_ShowFile*>(w);
            if (doc && doc->MePath() == path)
                return doc;
        }
        return nullptr;
    };
    // The text window of an older file of that name shows text that is gone.
    if (RES_ShowFile* old = documentOf())
        frame->CloseChild(old);
    frame->OpenDocument(path);
    if (RES_ShowFile* doc = documentOf())
        doc->RunSol();
}

void RED_Gen::Save()
{
    try {
        UbdateGrid();
        readControls();
        reduction::SaveSettings(shell::RedMechDataPath(shell::Session()), m_setup);
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Red#301. "), toQt(e.what()));
    }
}

void RED_Gen::Enter()
{
    UbdateGrid();
    readControls();
    try {
        const shell::Message refusal =
            reduction::EnterSettings(shell::RedMechDataPath(shell::Session()), m_setup);
        if (!refusal.empty()) {
            ShowWarning(toQt(refusal.text));
            return;
        }
    } catch (const std::exception& e) {
        // A corrupt settings file leaves the controls filled as far as it could be read.
        ReportError(QStringLiteral("Red#302. "), toQt(e.what()));
    }
    if (!m_setup.temperatureVisible)
        m_setup.temperatureText.clear();
    Text1[0]->setText(toQt(m_setup.temperatureText));
    Text1[1]->setText(toQt(m_setup.nonTargetText));
    Text2->setText(toQt(m_setup.intervalText));
    m_model->ParametrsSeting();
}

void RED_Gen::ClearAll()
{
    UbdateGrid();
    reduction::ClearAll(m_setup);
    Text1[0]->clear();
    Text1[1]->clear();
    m_model->ParametrsSeting();
}

void RED_Gen::RedNewPath()
{
    bool cancelled = false;
    const QString path = ShowSaveDialog(cancelled, QStringLiteral("Windows Text (*.txt)|*.txt"));
    if (cancelled)
        return;
    Text5->setText(path);
    Text5->setCursorPosition(static_cast<int>(path.size()));
}

void RED_Gen::hideEvent(QHideEvent* event)
{
    // A closed window is gone for the rest of the program, even before it is deleted.
    if (g_instance == this && !isVisible())
        g_instance = nullptr;
    QDialog::hideEvent(event);
}

} // namespace zarvion::gui
