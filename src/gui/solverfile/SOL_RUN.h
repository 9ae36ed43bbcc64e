#pragma once
// The solver start window: the problem of an opened solver file is set here, checked, written
// into the file, and handed to the solver run.

#include <QAbstractTableModel>
#include <QDialog>
#include <QTimer>
#include <array>
#include <vector>

#include "shell/GridSort.h"
#include "solverfile/SolverFileLines.h"
#include "solverfile/StartWindowLogic.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSortFilterProxyModel;
class QTabWidget;
class QTableView;

namespace zarvion::gui {

//! The table of initial mole fractions: No, Species Name, (MolFormula), Fraction.
class FractionsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Num, Species, MolFormula, Inval };
    using QAbstractTableModel::QAbstractTableModel;
    void setRows(std::vector<solverfile::StartWindowSpecies> species);
    int rowCount(const QModelIndex& = {}) const override { return static_cast<int>(m_names.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 4; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    std::vector<std::string> Fractions;  //!< as entered, per species in file order
    std::vector<std::string> names() const { return m_names; }
    void refresh();

private:
    std::vector<std::string> m_names;
    std::vector<std::string> m_formulas;
};

//! `SOL_RUN`, caption "Solver File   " + the file's name.
class SOL_RUN : public QDialog {
    Q_OBJECT
public:
    explicit SOL_RUN(QWidget* parent = nullptr);
    ~SOL_RUN() override;

    //! The open start window, or nullptr.
    static SOL_RUN* Instance();

    //! Keeps the file and the caller's caption, reads the file, fills the window.
    void GETPASS(const QString& path, const QString& caption);

    // The commands, callable from tests.
    void ValidateAndRun();
    void Save();
    void EnterSetting();
    void DefoultVaues();
    void LastStep();
    void GridCkear();
    void Cancel();

    QString SolverPath() const { return m_solverPath; }
    QString CallerCaption() const { return m_callerCaption; }
    FractionsModel* fractions() const { return m_model; }
    QTableView* grid() const { return GridEX1; }

    QTabWidget* TabStrip1 = nullptr;
    QLineEdit* Text1 = nullptr;
    QLineEdit* Text3 = nullptr;
    std::array<QLineEdit*, 7> Text4{};
    QLineEdit* Text7 = nullptr;
    QLineEdit* Text6 = nullptr;
    QRadioButton* Option1 = nullptr;
    QRadioButton* Option3 = nullptr;
    QCheckBox* Check1 = nullptr;
    QTableView* GridEX1 = nullptr;
    QLabel* Label2 = nullptr;
    QLabel* Label9 = nullptr;
    QPushButton* Command5 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* Command6 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command7 = nullptr;
    QPushButton* Command4 = nullptr;
    QPushButton* Command2 = nullptr;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildUi();
    void OpnFile();
    void PolinomCheck();
    void LastVal();
    void finishEdit();
    void rebuildTable();
    void goToCell(int row, int column);
    QLineEdit* fieldBox(solverfile::StartField field) const;
    solverfile::StartWindowFields readFields() const;
    void writeFields(const solverfile::StartWindowFields& fields);
    bool solverDataReadable() const;

    QString m_solverPath;
    QString m_callerCaption;
    solverfile::SolverFileLines m_lines;
    std::vector<solverfile::StartWindowSpecies> m_species;
    std::vector<double> m_weights;
    std::vector<std::string> m_lastStepValues;
    double m_lastTime = 0;
    int m_savedRow = 0;
    int m_savedCol = FractionsModel::Inval;
    FractionsModel* m_model = nullptr;
    QSortFilterProxyModel* m_proxy = nullptr;
    int m_lastSortColumn = -1;
    std::vector<shell::SortKey> m_sortKeys;
    QTimer Timer1;
};

} // namespace zarvion::gui
