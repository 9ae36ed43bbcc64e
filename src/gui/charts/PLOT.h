#pragma once
// The chart window `PLOT`: one ChartDocument shown by a ChartView, with its menus, the in-place
// text box, the value read-out and the operations that the frame, the toolbar and the
// producers call by name.

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "charts/ChartDocument.h"
#include "charts/ChartInteraction.h"
#include "charts/PlotExchange.h"
#include "charts/TemporaryChart.h"
#include "platform/Frame.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QCPAbstractItem;
class QCPAbstractLegendItem;
class QCPAbstractPlottable;
class QCPAxis;
class QCPLegend;

namespace zarvion::gui {

class ChartView;

//! A chart child window.
class PLOT : public QWidget, public ChildMenus {
    Q_OBJECT
public:
    explicit PLOT(QWidget* parent = nullptr);
    ~PLOT() override;

    const charts::ChartDocument& document() const { return m_doc; }
    charts::ChartDocument& document() { return m_doc; }
    const charts::ChartWindowState& windowState() const { return m_state; }
    ChartView* view() const { return m_view; }
    QList<QMenu*> menus() const override { return m_menus; }
    //! The caption marks the temporary chart ("Temporary Chart ", trailing blank).
    bool isTemporaryChart() const;

    //! Creates a blank chart "Chart n" in the frame (`MDI_NEW`) and returns it.
    static PLOT* NewChart();
    //! Random styles of new subsets come from this source (tests fix it).
    static void SetRandomSource(charts::RandomSource source);

    // Chart document and file.
    Q_INVOKABLE void Intit(bool skipTitles, bool histogram);
    Q_INVOKABLE void OPENPLOT(const QString& path, bool& failed, QString& caption);
    Q_INVOKABLE void SaveTT();
    Q_INVOKABLE void SaveGraphTT(bool& cancelled);
    Q_INVOKABLE void MustSave();
    Q_INVOKABLE void COLORBOOLTT(bool& flag) const { flag = m_doc.COLORBOOLTT(); }
    Q_INVOKABLE void PlotCol();
    Q_INVOKABLE void Monochr();
    Q_INVOKABLE void ViewingStyle();
    Q_INVOKABLE void Refr();
    Q_INVOKABLE void CheckDiv();
    Q_INVOKABLE void ViewDataOnly();

    // Subsets.
    Q_INVOKABLE void CUTSS();
    Q_INVOKABLE void SAVESS();
    Q_INVOKABLE void PASTESS();
    Q_INVOKABLE void DeleteSubset();
    Q_INVOKABLE void SubsetDel(int subset);
    Q_INVOKABLE void SubSetSelect(int subset);
    Q_INVOKABLE void SubSetSelCancel();
    //! Plots a producer's profile (the chart side of the producer walk).
    charts::PlotProfileResult plotProfile(charts::ProfileRequest& request);
    //! Shows bars as a histogram.
    void showHistogram(const std::string& title, const std::vector<charts::HistogramBar>& bars);

    // Interaction.
    Q_INVOKABLE void SHOWALLTEXT();
    Q_INVOKABLE void MarkDataPnt();
    Q_INVOKABLE void GridLine();
    Q_INVOKABLE void UndoZM();
    Q_INVOKABLE void XYShowSub();
    Q_INVOKABLE void XYHIDESub();
    Q_INVOKABLE void TxtBoxEn(bool enable);
    Q_INVOKABLE void TextAnnotationsNew(const QString& text);
    Q_INVOKABLE void NEWANNOTATION();
    Q_INVOKABLE void SetTextSize(int size);
    Q_INVOKABLE void SetPointSize(int size);
    Q_INVOKABLE void SetLegend(bool show);
    Q_INVOKABLE void LineaXY();
    Q_INVOKABLE void AUTOXY();
    Q_INVOKABLE void SetCursorStyle(int mode);
    Q_INVOKABLE void CastomDial();

    // Printing and export.
    Q_INVOKABLE void Plot_PRT();
    Q_INVOKABLE void ExportChart(bool metafile, bool clipboard);
    //! The chart's size on screen [px] and [twips].
    QSize chartSizePixels() const;
    QSizeF chartSizeTwips() const;

    // Frame.
    Q_INVOKABLE void ToolBr();

    //! The in-place text box and its hint (tests drive them).
    QLineEdit* Text1 = nullptr;
    QLabel* Text1Hint = nullptr;
    QPushButton* Text1Ok = nullptr;
    //! The value read-out: X format list and box, Y format list and box.
    QComboBox* Combo1 = nullptr;
    QLineEdit* Text3 = nullptr;
    QComboBox* Combo2 = nullptr;
    QLineEdit* Text2 = nullptr;
    //! The window's menu items by their names.
    QAction* menuAction(const QString& name) const;
    QMenu* popupMenu() const { return m_popup; }

signals:
    //! The document or the selection changed (commands follow).
    void commandsChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildMenus();
    void buildBars();
    void connectView();
    void redraw(bool dataChanged);
    void changed(bool dataChanged);
    void updateCommands();
    void syncToolbar();
    bool buttonState(const QString& key, bool fallback) const;
    void setButtonState(const QString& key, bool state);
    bool storeTo(const QString& path);
    bool isActiveChild() const;
    void showTextBox(charts::EditKind kind, int slot, const QString& text, bool okButton,
                     bool focus = true);
    void hideTextBox();
    void syncTextBox();
    void commitTextBox();
    void showReadout();
    void moveCursorBy(int points, int subsets);
    void onPlottableClick(QCPAbstractPlottable* plottable, int dataIndex);
    void onPlottableDoubleClick(QCPAbstractPlottable* plottable);
    void onItemClick(QCPAbstractItem* item);
    void onAxisClick(QCPAxis* axis, int part);
    void onLegendClick(QCPAbstractLegendItem* item);
    void onMouseMove(QMouseEvent* event);
    void onMouseRelease(QMouseEvent* event);
    void onZoom();
    void showPopup(const QPoint& globalPos);
    void deleteKey();
    std::optional<std::pair<double, double>> annotationPlace() const;
    void copyImage(bool vector);
    bool exportToFile(const QString& path, bool vector);

    charts::ChartDocument m_doc;
    charts::ChartWindowState m_state;
    ChartView* m_view = nullptr;
    QWidget* m_editBar = nullptr;
    QWidget* m_readoutBar = nullptr;
    QList<QMenu*> m_menus;
    QMenu* m_popup = nullptr;
    QHash<QString, QAction*> m_actions;
    QTimer Timer1; //!< the double-click window
    QTimer Timer2; //!< redraw after a zoom
    QTimer Timer3; //!< hides a hint text box
    QTimer m_sizeTimer;
    QLabel* m_sizeOverlay = nullptr;
    bool m_dataDirty = true;
    bool m_zoomRedrawPending = false;
    //! What was clicked last (for the Delete key) and where the mouse was.
    charts::EditKind m_clickedKind = charts::EditKind::None;
    int m_clickedSlot = -1;
    std::optional<QPointF> m_annotationPixel;
};

} // namespace zarvion::gui
