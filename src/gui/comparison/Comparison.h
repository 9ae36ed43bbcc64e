#pragma once
// The comparison window: the results of two solver files side by side, their species paired
// by name in one table, and a double click that plots the two profiles of a row or their
// relative error on the temporary chart.

#include <QAbstractTableModel>
#include <QTimer>
#include <QWidget>
#include <vector>

#include "comparison/ComparisonData.h"
#include "comparison/ComparisonPlot.h"
#include "shell/GridSort.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSortFilterProxyModel;
class QTabWidget;
class QTableView;

namespace zarvion::gui {

//! `GridEX1` of the comparison window over `MergedTable`: entry number, species, the marks
//! N1 and N2, and the species numbers in each file.
class MergedTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Num, Species, N1, N2, Number1, Number2 };
    using QAbstractTableModel::QAbstractTableModel;

    void setRows(const std::vector<comparison::MergedRow>* rows);
    int rowCount(const QModelIndex& = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 6; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;

private:
    const std::vector<comparison::MergedRow>* m_rows = nullptr;
};

//! `Comparison`, caption "Comparing Solver Files".
class Comparison : public QWidget {
    Q_OBJECT
public:
    explicit Comparison(QWidget* parent = nullptr);
    ~Comparison() override;

    //! The open window, or nullptr.
    static Comparison* Instance();
    //! Opens the window in the frame with path1 as its first file.
    static Comparison* Open(const QString& path1);

    //! `Command3` ("Prepare"): starts `Timer1`, whose tick loads the files.
    void Prepare();
    //! Reads both files and fills the table; failed on a refusal (shown, field selected).
    void PrepGrid(bool& failed);
    //! The double click on the row header of merged entry `entry` (0-based, table order);
    //! addHeld is the Ctrl key.
    void plotEntry(int entry, bool addHeld);
    //! `FilePa1`: the open dialog for the path of file 1 or 2.
    void FilePa1(int file);
    Q_INVOKABLE void ToolBr();

    bool busy() const { return m_busy; }
    const comparison::ComparisonSet& data() const { return m_set; }
    MergedTableModel* table() const { return m_model; }
    QTableView* grid() const { return GridEX1; }
    //! The merged entry shown in view row `viewRow` of the (sortable) grid.
    int entryAt(int viewRow) const;
    //! The help page's text.
    static QString HelpText();

    QLineEdit* Text1 = nullptr;
    QLineEdit* Text2 = nullptr;
    QPushButton* Command1 = nullptr; //!< browse for file 1
    QPushButton* Command2 = nullptr; //!< browse for file 2
    QPushButton* Command3 = nullptr; //!< "Prepare"
    QPushButton* Command4 = nullptr; //!< "Close"
    QTableView* GridEX1 = nullptr;
    QTabWidget* TabStrip1 = nullptr;
    QWidget* FramePlot = nullptr; //!< the page of the plot settings
    QRadioButton* Option1_0 = nullptr; //!< "Concentration/Temperature"
    QRadioButton* Option1_2 = nullptr; //!< "Relative Error"
    QRadioButton* Option2 = nullptr;   //!< "mol/cm^3"
    QRadioButton* Option3 = nullptr;   //!< "1/cm^3"
    QLabel* Label7 = nullptr;
    QLineEdit* Text5 = nullptr;        //!< parameter b
    QCheckBox* Option4 = nullptr;      //!< "Log10(X)"
    QLineEdit* Text3 = nullptr;        //!< X scaling
    QCheckBox* Option7 = nullptr;      //!< "Log10(Y)"
    QLineEdit* Text4 = nullptr;        //!< Y scaling
    QPlainTextEdit* HelpBox = nullptr;
    QTimer Timer1;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildUi();
    QWidget* buildPlotPage();
    void enablePlot(bool enabled);
    void RedMsgS(const shell::Message& message, QWidget* frame, QLineEdit* field);
    void RedPlotFunction(int mode, const comparison::MergedRow& row,
                         const comparison::PlotSettings& settings, bool add);

    comparison::ComparisonSet m_set;
    MergedTableModel* m_model = nullptr;
    QSortFilterProxyModel* m_proxy = nullptr;
    std::vector<shell::SortKey> m_sortKeys;
    int m_lastSortColumn = -1;
    bool m_busy = false;
};

} // namespace zarvion::gui
