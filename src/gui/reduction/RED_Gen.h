#pragma once
// The reduction window: the source and reduced files, the species table with the target
// parameters, the saved settings, and the run of the reduction with its progress.

#include <QAbstractTableModel>
#include <QDialog>
#include <QPointer>
#include <array>
#include <vector>

#include "postprocessor/ResultSet.h"
#include "reduction/ReductionSetup.h"
#include "reduction/ReductionTables.h"
#include "shell/GridSort.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace zarvion::gui {

//! `GridEX1` of the reduction window over `SpeciesTable`: Num, Target, Species, InitaiCond,
//! Parameter. Only Parameter is editable; Target follows the edits of Parameter.
class SpeciesTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Num, Target, Species, InitaiCond, Parameter };
    explicit SpeciesTableModel(std::vector<reduction::SpeciesTableRow>& table,
                               QObject* parent = nullptr);

    int rowCount(const QModelIndex& = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 5; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    //! `ParametrsSeting`: the grid is bound anew to the table; the Target marks, which the
    //! table does not hold, are cleared.
    void ParametrsSeting();
    bool target(int row) const { return m_target[static_cast<std::size_t>(row)] != 0; }

private:
    std::vector<reduction::SpeciesTableRow>& m_table;
    std::vector<char> m_target;
};

//! `RED_Gen`, caption "Reduced Reaction Kinetics".
class RED_Gen : public QDialog {
    Q_OBJECT
public:
    explicit RED_Gen(QWidget* parent = nullptr);
    ~RED_Gen() override;

    //! The open window, or nullptr.
    static RED_Gen* Instance();
    //! Opens the window on a solved solver file shown in a text window; the source path is
    //! then locked.
    static RED_Gen* Open(const QString& sourcePath);

    // The commands, callable from tests.
    void Prepare();   //!< `Command7`
    void Start();     //!< `Command1`
    void Save();      //!< `Command2`
    void Enter();     //!< `Command5`
    void ClearAll();  //!< `Command4`
    void RedNewPath(); //!< `Command8`: the save dialog for the reduced file

    SpeciesTableModel* species() const { return m_model; }
    QTableView* grid() const { return GridEX1; }
    //! The species row (0-based, table order) the grid's cursor stands on, or -1.
    int currentSpeciesRow() const;
    //! Makes a species row current (0-based, table order).
    void goToRow(int row);
    const reduction::ReductionTables& tables() const { return m_tables; }

    QLineEdit* Text10 = nullptr;
    QLineEdit* Text5 = nullptr;
    std::array<QLineEdit*, 2> Text1{};
    QLineEdit* Text6 = nullptr;
    QLineEdit* Text2 = nullptr;
    QLabel* Label4 = nullptr;
    QLabel* Label8 = nullptr;
    QLabel* Label10 = nullptr; //!< what the last run kept, and where it wrote it
    QGroupBox* Frame1 = nullptr;
    QTableView* GridEX1 = nullptr;
    QCheckBox* Check2 = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* Command4 = nullptr;
    QPushButton* Command5 = nullptr;
    QPushButton* Command7 = nullptr;
    QPushButton* Command8 = nullptr;

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void buildUi();
    void ObjectsEn(bool enabled);
    void CommandEn(bool enabled);
    void UbdateGrid();
    void readControls();
    void showSetup();
    bool refuse(const reduction::SetupRefusal& refusal);
    QLineEdit* fieldBox(int field) const;
    void ReduceMechanism(const reduction::ReductionRequest& request);
    void startReducedMechanism(const QString& path);

    reduction::ReductionSetup m_setup;
    postprocessor::ResultSet m_results;
    reduction::ReductionTables m_tables;
    SpeciesTableModel* m_model = nullptr;
    QSortFilterProxyModel* m_proxy = nullptr;
    std::vector<shell::SortKey> m_sortKeys;
    int m_lastSortColumn = -1;
};

} // namespace zarvion::gui
