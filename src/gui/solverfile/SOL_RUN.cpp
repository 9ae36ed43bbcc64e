#include "solverfile/SOL_RUN.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSortFilterProxyModel>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

#include "platform/Frame.h"
#include "platform/MessageBox.h"
#include "platform/SortByHeader.h"
#include "platform/WaitCursor.h"
#include "shell/AtomicFile.h"
#include "shell/SessionState.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/RunSolver.h"

namespace zarvion::gui {

using solverfile::StartField;

namespace {

SOL_RUN* g_instance = nullptr;

std::string text(const QLineEdit* box)
{
    return fromQt(box->text());
}

} // namespace

// ---------------------------------------------------------------------------------------------

void FractionsModel::setRows(std::vector<solverfile::StartWindowSpecies> species)
{
    beginResetModel();
    m_names.clear();
    m_formulas.clear();
    Fractions.clear();
    for (auto& s : species) {
        m_names.push_back(s.name);
        m_formulas.push_back(s.MolFormula);
        Fractions.push_back(s.fraction);
    }
    endResetModel();
}

void FractionsModel::refresh()
{
    beginResetModel();
    endResetModel();
}

QVariant FractionsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    if (role == Qt::TextAlignmentRole)
        return index.column() == Species ? QVariant(Qt::AlignLeft | Qt::AlignVCenter)
                                         : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::UserRole) { // sort key
        switch (index.column()) {
        case Num: return index.row() + 1;
        case Species: return toQt(m_names[row]);
        case MolFormula: return toQt(m_formulas[row]);
        default: return shell::ToDouble(Fractions[row]).value_or(0.0);
        }
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    switch (index.column()) {
    case Num:
        return index.row() + 1;
    case Species:
        return toQt(m_names[row]);
    case MolFormula:
        return toQt(m_formulas[row]);
    default: {
        const std::string& held = Fractions[row];
        if (role == Qt::EditRole)
            return toQt(held);
        const auto value = shell::ToDouble(held);
        if (!value)
            return toQt(held);
        if (*value == 0)
            return QString(); // zero shows as an empty cell
        return toQt(shell::Format(*value, "0.##E+00"));
    }
    }
}

QVariant FractionsModel::headerData(int section, Qt::Orientation o, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (o == Qt::Vertical)
        return section + 1;
    switch (section) {
    case Num: return QStringLiteral("No");
    case Species: return QStringLiteral("Species Name");
    case MolFormula: return QString();
    default: return QStringLiteral("Fraction");
    }
}

Qt::ItemFlags FractionsModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == Inval)
        f |= Qt::ItemIsEditable;
    return f;
}

bool FractionsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || index.column() != Inval || index.row() >= rowCount())
        return false;
    Fractions[static_cast<std::size_t>(index.row())] = shell::Trim(fromQt(value.toString()));
    emit dataChanged(index, index);
    return true;
}

// ---------------------------------------------------------------------------------------------

SOL_RUN* SOL_RUN::Instance()
{
    return g_instance;
}

SOL_RUN::SOL_RUN(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("SOL_RUN"));
    setAttribute(Qt::WA_DeleteOnClose);
    if (g_instance && g_instance != this)
        g_instance->close();
    g_instance = this;
    if (Frame())
        Frame()->CloseDialogs(QStringLiteral("SOL_RUN"));
    buildUi();
    Timer1.setInterval(200);
    connect(&Timer1, &QTimer::timeout, this, [this] {
        Timer1.stop();
        goToCell(m_savedRow, m_savedCol);
    });
    Check1->setChecked(shell::Session().KeepConsole);
    Command6->setEnabled(solverDataReadable());
}

SOL_RUN::~SOL_RUN()
{
    if (g_instance == this)
        g_instance = nullptr;
}

void SOL_RUN::buildUi()
{
    auto numberBox = [this](const char* name) {
        auto* box = new QLineEdit(this);
        box->setObjectName(QString::fromLatin1(name));
        box->setFixedWidth(150);
        box->setAlignment(Qt::AlignRight);
        return box;
    };
    // One label width on both pages, so that the fields of all groups stand in one column.
    auto rowLabel = [this](const QString& text) {
        auto* label = new QLabel(text, this);
        label->setMinimumWidth(220);
        return label;
    };
    Text1 = numberBox("Text1");
    Text3 = numberBox("Text3");
    for (int i = 0; i < 7; ++i)
        Text4[i] = numberBox(QStringLiteral("Text4_%1").arg(i).toLatin1().constData());
    Text7 = numberBox("Text7");
    Text6 = numberBox("Text6");
    Option1 = new QRadioButton(QStringLiteral("Constant "), this);
    Option3 = new QRadioButton(QStringLiteral("Adiabatic"), this);
    Check1 = new QCheckBox(QStringLiteral("Do not close the console window"), this);

    // Page 1: the physical problem and the tolerances.
    auto* page1 = new QWidget;
    auto* p1 = new QVBoxLayout(page1);
    auto* problem = new QGroupBox(QStringLiteral("Pressure and Temperature"));
    auto* pf = new QFormLayout(problem);
    pf->addRow(rowLabel(QStringLiteral("Constant pressure, atm")), Text1);
    auto* modes = new QHBoxLayout;
    modes->addWidget(Option1);
    modes->addWidget(Option3);
    modes->addStretch();
    pf->addRow(rowLabel(QStringLiteral("Temperature")), modes);
    pf->addRow(rowLabel(QStringLiteral("Initial Value, K")), Text3);
    p1->addWidget(problem);
    auto* time = new QGroupBox(QStringLiteral("Time"));
    auto* tf = new QFormLayout(time);
    tf->addRow(rowLabel(QStringLiteral("Initial Time, s")), Text4[0]);
    tf->addRow(rowLabel(QStringLiteral("Final Time, s")), Text4[1]);
    tf->addRow(rowLabel(QStringLiteral("Initial Step Size, s")), Text4[2]);
    p1->addWidget(time);
    auto* solver = new QGroupBox(QStringLiteral("Solver Parameters"));
    auto* sf = new QFormLayout(solver);
    sf->addRow(rowLabel(QStringLiteral("RelativeTolerance")), Text4[3]);
    sf->addRow(rowLabel(QStringLiteral("Absolute Tolerance")), Text4[4]);
    auto* label11 = new QLabel(QStringLiteral(
        "In the 'Solver Parameters' frame, enter relative (RTOL) and absolute (ATOL) error "
        "tolerances. The solver keeps, roughly, the local error of variables below\n"
        "        RTOL * Y(k) + ATOL, where Y(k) is value of the k-th variable."));
    label11->setObjectName(QStringLiteral("Label11"));
    label11->setWordWrap(true);
    sf->addRow(label11);
    p1->addWidget(solver);
    p1->addStretch();

    // Page 2: step control, the allowable temperatures and the console.
    auto* page2 = new QWidget;
    auto* p2 = new QVBoxLayout(page2);
    auto* steps = new QGroupBox(QStringLiteral("Integration"));
    auto* stf = new QFormLayout(steps);
    stf->addRow(rowLabel(QStringLiteral("Maximum number of computed steps")), Text4[5]);
    auto* every = new QHBoxLayout;
    Text4[6]->setFixedWidth(80);
    every->addWidget(Text4[6]);
    every->addWidget(new QLabel(QStringLiteral("   accepted  step")));
    every->addStretch();
    stf->addRow(rowLabel(QStringLiteral("Writef every   ")), every);
    p2->addWidget(steps);
    auto* interval = new QGroupBox(QStringLiteral("Allowable temperature interval, K"));
    auto* inf = new QFormLayout(interval);
    inf->addRow(rowLabel(QStringLiteral("Minimum")), Text7);
    inf->addRow(rowLabel(QStringLiteral("Maximum")), Text6);
    p2->addWidget(interval);
    auto* console = new QGroupBox(QStringLiteral("Console"));
    auto* cl = new QVBoxLayout(console);
    cl->addWidget(Check1);
    auto* label6 = new QLabel(QStringLiteral(
        "This option can be useful for debugging problems; some error messages are displayed "
        "in the console window. If the console window is opened, the program features are "
        "disabled. You must close the window to continue the work."));
    label6->setObjectName(QStringLiteral("Label6"));
    label6->setWordWrap(true);
    cl->addWidget(label6);
    p2->addWidget(console);
    p2->addStretch();

    TabStrip1 = new QTabWidget;
    TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
    TabStrip1->addTab(page1, QStringLiteral("Problem"));
    TabStrip1->addTab(page2, QStringLiteral("Solver Control"));

    // The table of initial mole fractions stands beside both pages.
    m_model = new FractionsModel(this);
    m_proxy = new QSortFilterProxyModel(this);
    m_proxy->setSourceModel(m_model);
    m_proxy->setSortRole(Qt::UserRole);
    GridEX1 = new QTableView;
    GridEX1->setObjectName(QStringLiteral("GridEX1"));
    GridEX1->setModel(m_proxy);
    GridEX1->setColumnHidden(FractionsModel::MolFormula, true);
    GridEX1->verticalHeader()->setVisible(false);
    GridEX1->verticalHeader()->setDefaultSectionSize(GridEX1->fontMetrics().height() + 6);
    GridEX1->setSelectionMode(QAbstractItemView::SingleSelection);
    GridEX1->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    GridEX1->setColumnWidth(FractionsModel::Num, 50);
    GridEX1->setColumnWidth(FractionsModel::Species, 130);
    GridEX1->horizontalHeader()->setStretchLastSection(true);
    GridEX1->setMinimumWidth(300);
    GridEX1->installEventFilter(this);
    connect(GridEX1->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int column) { SortByHeader(m_proxy, m_sortKeys, column, m_lastSortColumn); });
    m_proxy->sort(FractionsModel::Num, Qt::AscendingOrder);
    m_sortKeys = {{FractionsModel::Num, true}};
    m_lastSortColumn = FractionsModel::Num;

    auto* table = new QGroupBox(QStringLiteral("Initial Mole Fractions"));
    auto* tl = new QVBoxLayout(table);
    tl->addWidget(GridEX1);

    Label2 = new QLabel;
    Label2->setObjectName(QStringLiteral("Label2"));
    Label9 = new QLabel;
    Label9->setObjectName(QStringLiteral("Label9"));
    Label9->setWordWrap(true);
    Label9->setStyleSheet(QStringLiteral("color: #a00000;"));
    Label9->setVisible(false);

    auto button = [this](const char* name, const char* caption) {
        auto* b = new QPushButton(QString::fromLatin1(caption), this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    Command5 = button("Command5", "Run Solver");
    Command3 = button("Command3", "Save");
    Command6 = button("Command6", "Enter");
    Command1 = button("Command1", "Default Settings");
    Command7 = button("Command7", "Last Step");
    Command4 = button("Command4", "Clear Table");
    Command2 = button("Command2", "Cancel");
    Command5->setDefault(false);
    connect(Command5, &QPushButton::clicked, this, &SOL_RUN::ValidateAndRun);
    connect(Command3, &QPushButton::clicked, this, &SOL_RUN::Save);
    connect(Command6, &QPushButton::clicked, this, &SOL_RUN::EnterSetting);
    connect(Command1, &QPushButton::clicked, this, &SOL_RUN::DefoultVaues);
    connect(Command7, &QPushButton::clicked, this, [this] {
        LastStep();
        LastStep();
    });
    connect(Command4, &QPushButton::clicked, this, [this] {
        GridCkear();
        GridCkear();
    });
    connect(Command2, &QPushButton::clicked, this, &SOL_RUN::Cancel);
    connect(Option1, &QRadioButton::clicked, this, &SOL_RUN::PolinomCheck);
    connect(Option3, &QRadioButton::clicked, this, &SOL_RUN::PolinomCheck);

    auto* upper = new QHBoxLayout;
    upper->addWidget(TabStrip1, 3);
    upper->addWidget(table, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(Command5);
    buttons->addSpacing(12);
    for (QPushButton* b : {Command3, Command6, Command1, Command7, Command4})
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(Command2);
    auto* root = new QVBoxLayout(this);
    root->addLayout(upper, 1);
    root->addWidget(Label2);
    root->addWidget(Label9);
    root->addLayout(buttons);
    resize(980, 580);
}

void SOL_RUN::GETPASS(const QString& path, const QString& caption)
{
    m_solverPath = path;
    m_callerCaption = caption;
    try {
        OpnFile();
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Sol#301. "), toQt(e.what()));
    }
    setWindowTitle(QStringLiteral("Solver File   ") + QFileInfo(path).completeBaseName());
}

void SOL_RUN::OpnFile()
{
    WaitCursor wait;
    m_lines = solverfile::OpnFile(fromQt(m_solverPath));
    auto value = [this](int line) {
        const std::string& l = m_lines.line(line);
        const auto bang = l.find('!');
        return toQt(shell::Trim(bang == std::string::npos ? l : l.substr(0, bang)));
    };
    Text1->setText(value(14));
    const bool adiabatic = shell::LeadingValue(fromQt(value(15))) == 1;
    Option3->setChecked(adiabatic);
    Option1->setChecked(!adiabatic);
    Text3->setText(value(16));
    Text7->setText(value(17));
    Text6->setText(value(18));
    Text4[0]->setText(value(19));
    Text4[1]->setText(value(20));
    Text4[2]->setText(value(21));
    QString steps = value(22);
    if (shell::LeadingValue(fromQt(steps)) < 3)
        steps = QStringLiteral("3");
    Text4[5]->setText(steps);
    Text4[3]->setText(value(23));
    Text4[4]->setText(value(24));
    QString every = value(28);
    if (shell::LeadingValue(fromQt(every)) < 1)
        every = QStringLiteral("1");
    Text4[6]->setText(every);

    const int firstRecord = m_lines.thermoLine + 1;
    m_species = solverfile::ReadStartWindowSpecies(m_lines.Lines, firstRecord, m_lines.SpeciesCount);
    m_weights.clear();
    for (const auto& s : m_species)
        m_weights.push_back(s.weight);
    GridEX1->setVisible(false);
    m_model->setRows(m_species);
    GridEX1->setVisible(true);
    Label2->setText(QStringLiteral("Reaction mechanism consists of %1 reactions.")
                        .arg(m_lines.ReactionCount));
    PolinomCheck();
    LastVal();
}

void SOL_RUN::PolinomCheck()
{
    Label9->clear();
    Label9->setVisible(false);
    if (m_species.empty() || !Option3->isChecked())
        return;
    const std::string warning = solverfile::PolinomCheckText(m_species);
    if (warning.empty())
        return;
    Label9->setText(toQt(warning));
    Label9->setVisible(true);
}

void SOL_RUN::LastVal()
{
    m_lastStepValues.clear();
    std::optional<solverfile::LastStepState> state;
    try {
        state = solverfile::LastVal(fromQt(m_solverPath), m_weights,
                                    shell::LeadingValue(text(Text4[4])));
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Sol#305. "), toQt(e.what()));
    }
    Command7->setEnabled(state.has_value());
    if (state) {
        m_lastTime = state->LastTime;
        m_lastStepValues = state->values;
    }
}

void SOL_RUN::LastStep()
{
    if (m_lastStepValues.empty())
        return;
    Text4[0]->setText(toQt(shell::ShortestText(m_lastTime)));
    Text3->setText(toQt(m_lastStepValues[0]));
    for (std::size_t k = 0; k < m_model->Fractions.size() && k + 1 < m_lastStepValues.size(); ++k)
        m_model->Fractions[k] = m_lastStepValues[k + 1];
    rebuildTable();
}

void SOL_RUN::DefoultVaues()
{
    const auto d = solverfile::DefoultVaues();
    Text7->setText(toQt(d.Text7));
    Text6->setText(toQt(d.Text6));
    Text4[0]->setText(toQt(d.Text4_0));
    Text4[1]->setText(toQt(d.Text4_1));
    Text4[2]->setText(toQt(d.Text4_2));
    Text4[3]->setText(toQt(d.Text4_3));
    Text4[4]->setText(toQt(d.Text4_4));
}

void SOL_RUN::GridCkear()
{
    for (auto& f : m_model->Fractions)
        f = "0";
    rebuildTable();
    m_proxy->sort(FractionsModel::Num, Qt::AscendingOrder);
    m_sortKeys = {{FractionsModel::Num, true}};
    m_lastSortColumn = FractionsModel::Num;
    m_savedRow = 0;
    m_savedCol = FractionsModel::Inval;
    Timer1.start();
}

void SOL_RUN::finishEdit()
{
    // An open cell editor gives its text to the table before anything reads the fractions.
    for (QLineEdit* editor : GridEX1->viewport()->findChildren<QLineEdit*>()) {
        emit GridEX1->itemDelegate()->commitData(editor);
        emit GridEX1->itemDelegate()->closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void SOL_RUN::rebuildTable()
{
    m_model->refresh();
}

void SOL_RUN::goToCell(int row, int column)
{
    // row is a species (file order); find where it stands in the sorted view.
    const QModelIndex source = m_model->index(row, column);
    const QModelIndex view = m_proxy->mapFromSource(source);
    GridEX1->setFocus(Qt::OtherFocusReason);
    GridEX1->setCurrentIndex(view);
    GridEX1->scrollTo(view);
}

QLineEdit* SOL_RUN::fieldBox(StartField field) const
{
    switch (field) {
    case StartField::Text1: return Text1;
    case StartField::Text3: return Text3;
    case StartField::Text7: return Text7;
    case StartField::Text6: return Text6;
    case StartField::GridEX1:
    case StartField::None: return nullptr;
    default: return Text4[static_cast<int>(field) - static_cast<int>(StartField::Text4_0)];
    }
}

solverfile::StartWindowFields SOL_RUN::readFields() const
{
    solverfile::StartWindowFields f;
    f.Text1 = text(Text1);
    f.Text3 = text(Text3);
    for (int i = 0; i < 7; ++i)
        f.Text4[i] = text(Text4[i]);
    f.Text7 = text(Text7);
    f.Text6 = text(Text6);
    f.fractions = m_model->Fractions;
    return f;
}

void SOL_RUN::writeFields(const solverfile::StartWindowFields& f)
{
    Text4[2]->setText(toQt(f.Text4[2]));
    Text4[5]->setText(toQt(f.Text4[5]));
    Text4[6]->setText(toQt(f.Text4[6]));
}

void SOL_RUN::ValidateAndRun()
{
    shell::Session().KeepConsole = Check1->isChecked();
    finishEdit();
    const auto check = solverfile::ValidateStartWindow(readFields());
    writeFields(check.fields);
    if (!check.passed) {
        TabStrip1->setCurrentIndex(check.tab - 1);
        if (check.field == StartField::GridEX1) {
            ShowMessage(toQt(check.message), 48);
            if (check.fractionRow >= 0) {
                rebuildTable();
                m_savedRow = check.fractionRow;
                m_savedCol = FractionsModel::Inval;
                Timer1.start();
            } else {
                goToCell(GridEX1->currentIndex().isValid()
                             ? m_proxy->mapToSource(GridEX1->currentIndex()).row()
                             : 0,
                         FractionsModel::Inval);
            }
        } else {
            ShowFieldError(toQt(check.message), fieldBox(check.field));
        }
        return;
    }

    const auto& f = check.fields;
    try {
        const auto appPath = shell::SolverPathFilePath(shell::Session());
        shell::WriteFileAtomically(appPath, fromQt(m_solverPath) + "\r\n");
        solverfile::SolverParameters p;
        p.pressureAtm = shell::LeadingValue(f.Text1);
        p.TemperatureMode = Option3->isChecked() ? 1 : 0;
        p.initialTemperature = shell::LeadingValue(f.Text3);
        p.minTemperature = shell::LeadingValue(f.Text7);
        p.maxTemperature = shell::LeadingValue(f.Text6);
        p.initialTime = shell::LeadingValue(f.Text4[0]);
        p.finalTime = shell::LeadingValue(f.Text4[1]);
        p.initialStep = shell::LeadingValue(f.Text4[2]);
        p.relativeTolerance = shell::LeadingValue(f.Text4[3]);
        p.absoluteTolerance = shell::LeadingValue(f.Text4[4]);
        p.maxSteps = shell::LeadingValue(f.Text4[5]);
        p.outputEvery = shell::LeadingValue(f.Text4[6]);
        std::vector<double> fractions;
        for (const auto& t : f.fractions)
            fractions.push_back(shell::ToDouble(t).value_or(0.0));
        solverfile::RewriteSolverFile(fromQt(m_solverPath), m_lines, p, fractions);
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Sol#302. "), toQt(e.what()));
        return;
    }
    const QString path = m_solverPath;
    const QString caption = m_callerCaption;
    close();
    RunSolver(path, caption);
}

bool SOL_RUN::solverDataReadable() const
{
    try {
        const auto lines = shell::ReadLines(shell::SolverDataPath(shell::Session()));
        return !lines.empty();
    } catch (const std::exception&) {
        return false;
    }
}

void SOL_RUN::Save()
{
    finishEdit();
    solverfile::SavedSettings s;
    s.SolverPath = fromQt(m_solverPath);
    s.Text1 = text(Text1);
    s.Text3 = text(Text3);
    s.Text7 = text(Text7);
    s.Text6 = text(Text6);
    for (int i = 0; i < 7; ++i)
        s.Text4[i] = text(Text4[i]);
    s.adiabatic = Option3->isChecked();
    const auto names = m_model->names();
    for (std::size_t k = 0; k < names.size(); ++k)
        s.fractions.emplace_back(names[k], m_model->Fractions[k]);
    try {
        shell::WriteFileAtomically(shell::SolverDataPath(shell::Session()),
                                   solverfile::ComposeSolverData(s));
        Command6->setEnabled(true);
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Sol#303. "), toQt(e.what()));
    }
}

void SOL_RUN::EnterSetting()
{
    if (!solverDataReadable()) {
        ShowMessage(QStringLiteral("Settings were not saved."), 48);
        Command6->setEnabled(false);
        return;
    }
    finishEdit();
    try {
        const auto s = solverfile::ParseSolverData(
            shell::ReadLines(shell::SolverDataPath(shell::Session())));
        Text1->setText(toQt(s.Text1));
        Text3->setText(toQt(s.Text3));
        Text7->setText(toQt(s.Text7));
        Text6->setText(toQt(s.Text6));
        for (int i = 0; i < 7; ++i)
            Text4[i]->setText(toQt(s.Text4[i]));
        Option3->setChecked(s.adiabatic);
        Option1->setChecked(!s.adiabatic);
        m_model->Fractions = solverfile::ApplySavedFractions(m_model->names(), s);
        rebuildTable();
        m_savedRow = 0;
        m_savedCol = FractionsModel::Inval;
        Timer1.start();
        PolinomCheck();
    } catch (const std::exception&) {
        ShowWarning(QStringLiteral("Sol#304-1. Setting isn't saved or an error occures."));
    }
}

void SOL_RUN::Cancel()
{
    if (shell::Session().FrameWasMaximised && Frame())
        Frame()->Maximise();
    close();
}

void SOL_RUN::hideEvent(QHideEvent* event)
{
    // A closed window is gone for the rest of the program, even before it is deleted.
    if (g_instance == this && !isVisible())
        g_instance = nullptr;
    QDialog::hideEvent(event);
}

void SOL_RUN::keyPressEvent(QKeyEvent* event)
{
    // Escape would close the dialog without the frame's state being restored.
    if (event->key() == Qt::Key_Escape) {
        Cancel();
        return;
    }
    QDialog::keyPressEvent(event);
}

bool SOL_RUN::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == GridEX1 && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() & Qt::ControlModifier) {
            const int rows = m_proxy->rowCount();
            if (rows > 0 && (key->key() == Qt::Key_End || key->key() == Qt::Key_Home)) {
                const int row = key->key() == Qt::Key_End ? rows - 1 : 0;
                const QModelIndex index = m_proxy->index(row, FractionsModel::Inval);
                GridEX1->setCurrentIndex(index);
                GridEX1->scrollTo(index);
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace zarvion::gui
