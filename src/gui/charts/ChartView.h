#pragma once
// The drawing of one chart on QCustomPlot: a graph per subset with gaps at points without a
// value, bars for a histogram, annotations as text items at data coordinates, titles, axis
// labels, the legend, scales with the chart's number patterns, and the point cursor. The same
// view renders charts on screen, into image files and onto paper.

#include <QHash>
#include <QPointer>
#include <vector>

#include <qcustomplot.h>

#include "charts/ChartDocument.h"

namespace zarvion::gui {

//! QCustomPlot showing one chart's properties.
class ChartView : public QCustomPlot {
    Q_OBJECT
public:
    explicit ChartView(QWidget* parent = nullptr);

    //! Draws a chart. With dataChanged false only styles, texts, items and scales are applied;
    //! the graphs keep their data (a change of colour or title never copies the points).
    void showChart(const charts::ChartProperties& chart, bool dataChanged = true);
    //! Sets the axes back to the chart's own ranges (automatic from the data, or manual).
    void resetRanges();

    //! The subset a plottable draws, -1 for none.
    int subsetOf(const QCPAbstractPlottable* plottable) const;
    QCPAbstractPlottable* plottableOf(int subset) const;
    //! The annotation slot an item shows, -1 for none.
    int annotationSlotOf(const QCPAbstractItem* item) const;
    //! The subset of a legend entry, -1 for none.
    int subsetOfLegendItem(const QCPAbstractLegendItem* item) const;
    QCPTextElement* mainTitleElement() const { return m_mainTitle; }
    QCPTextElement* subTitleElement() const { return m_subTitle; }
    bool isHistogram() const { return m_histogram; }
    //! Data coordinates of a pixel of the widget.
    QPointF pixelToData(const QPointF& pixel) const;
    //! Pixel of a point of a subset; false when the point has no value.
    bool pointPixel(int subset, int point, QPointF& pixel) const;

    //! Draws the chart at width x height [px] onto an active painter (export, printing).
    void renderTo(QCPPainter* painter, int width, int height);
    //! A picture of the chart at width x height [px], drawn scale times finer.
    QPixmap renderPixmap(int width, int height, double scale = 1.0);

    //! Shows the point cursor (modes of charts::CursorMode) on a point; CursorNone hides it.
    void setCursorPoint(int mode, int subset, int point);
    //! Left drags draw a zoom rectangle while allowed.
    void setZoomPermitted(bool permitted) { m_zoomPermitted = permitted; }
    bool zoomPermitted() const { return m_zoomPermitted; }

signals:
    //! A rubber-band zoom has been applied.
    void zoomed();
    //! A left click (no drag) on no object of the chart.
    void emptyClicked(const QPointF& pixel);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void processRectZoom(QRect rect, QMouseEvent* event) override;

private:
    void buildPlottables(const charts::ChartProperties& chart);
    void buildGraph(const charts::Subset& subset);
    void buildBars(const charts::ChartProperties& chart);
    void applyStyles(const charts::ChartProperties& chart);
    void applyTexts(const charts::ChartProperties& chart);
    void applyAnnotations(const charts::ChartProperties& chart);
    void applyAxes(const charts::ChartProperties& chart);
    void applyLegend(const charts::ChartProperties& chart);
    void layoutLegend(int width);
    bool isObjectAt(const QPointF& pos) const;

    std::vector<QCPAbstractPlottable*> m_plottables; //!< one a subset, in subset order
    QHash<const QCPAbstractItem*, int> m_annotationSlots;
    QCPTextElement* m_mainTitle = nullptr;
    QCPTextElement* m_subTitle = nullptr;
    QCPLayoutGrid* m_legendRow = nullptr;
    QCPItemTracer* m_cursor = nullptr;
    charts::AxisSettings m_xAxis;
    charts::AxisSettings m_yAxis;
    bool m_histogram = false;
    bool m_builtLogX = false; //!< the log state the graph data was built for
    bool m_builtLogY = false;
    bool m_zoomPermitted = true;
    bool m_pressOnEmpty = false;
    int m_legendColumns = 1;
};

} // namespace zarvion::gui
