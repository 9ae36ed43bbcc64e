#include "charts/ChartView.h"

#include <QFontMetrics>
#include <cmath>
#include <limits>

#include "charts/ChartInteraction.h"
#include "charts/ChartStyles.h"
#include "shell/TextFormat.h"

namespace zarvion::gui {

namespace {

using charts::IsValue;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

//! Tick labels written through the chart's number pattern; the ticker's own format without one.
template <class Base>
class PatternTicker : public Base {
public:
    std::string pattern;
    int subTicks = -1; //!< -1: the ticker's own choice

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                  QVector<double>& ticks, QVector<double>* subTickPositions,
                  QVector<QString>* tickLabels) override
    {
        m_span = range.size();
        Base::generate(range, locale, formatChar, precision, ticks, subTickPositions, tickLabels);
    }

protected:
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar,
                         int precision) override
    {
        if (pattern.empty())
            return Base::getTickLabel(tick, locale, formatChar, precision);
        // A multiple of the step computed in floating point can miss zero by a rounding error.
        if (std::fabs(tick) < 1e-12 * m_span)
            tick = 0.0;
        return QString::fromStdString(shell::Format(tick, pattern));
    }
    int getSubTickCount(double tickStep) override
    {
        return subTicks >= 0 ? subTicks : Base::getSubTickCount(tickStep);
    }

private:
    double m_span = 0.0;
};

//! The point cursor: drawn, but never the target of a click.
class CursorTracer : public QCPItemTracer {
public:
    using QCPItemTracer::QCPItemTracer;
    double selectTest(const QPointF&, bool, QVariant*) const override { return -1.0; }
};

bool drawable(double v, bool log)
{
    return IsValue(v) && (!log || v > 0.0);
}

//! Largest number of major intervals a fixed tick step may give before the view picks its own.
constexpr double MaxFixedTicks = 60.0;

QSharedPointer<QCPAxisTicker> makeTicker(const charts::AxisSettings& a, double span)
{
    if (a.logScale) {
        QSharedPointer<PatternTicker<QCPAxisTickerLog>> t(new PatternTicker<QCPAxisTickerLog>);
        t->setLogBase(10.0);
        t->setSubTickCount(8);
        t->pattern = a.numberPattern;
        return t;
    }
    if (a.manualScale != 0 && a.majorTick > 0.0 && span / a.majorTick <= MaxFixedTicks) {
        QSharedPointer<PatternTicker<QCPAxisTickerFixed>> t(new PatternTicker<QCPAxisTickerFixed>);
        t->setTickStep(a.majorTick);
        t->setScaleStrategy(QCPAxisTickerFixed::ssMultiples);
        if (a.minorTick > 0.0 && a.minorTick <= a.majorTick)
            t->subTicks = std::clamp(static_cast<int>(std::lround(a.majorTick / a.minorTick)) - 1, 0, 9);
        t->pattern = a.numberPattern;
        return t;
    }
    QSharedPointer<PatternTicker<QCPAxisTicker>> t(new PatternTicker<QCPAxisTicker>);
    t->setTickCount(6);
    t->pattern = a.numberPattern;
    return t;
}

// The range of the values drawn on one axis, over the visible plottables.
QCPRange dataRange(const std::vector<QCPAbstractPlottable*>& plottables, bool keys, bool log,
                   bool& found)
{
    found = false;
    QCPRange range;
    const auto domain = log ? QCP::sdPositive : QCP::sdBoth;
    for (QCPAbstractPlottable* p : plottables) {
        if (!p->visible())
            continue;
        bool ok = false;
        const QCPRange r = keys ? p->getKeyRange(ok, domain) : p->getValueRange(ok, domain);
        if (!ok)
            continue;
        if (!found) {
            range = r;
            found = true;
        } else {
            range.expand(r);
        }
    }
    return range;
}

QCPRange padded(QCPRange r, bool log, double fraction)
{
    if (log) {
        if (r.lower <= 0.0)
            r.lower = r.upper > 0.0 ? r.upper / 10.0 : 1.0;
        if (r.upper <= r.lower)
            return QCPRange(r.lower / 10.0, r.lower * 10.0);
        const double f = std::pow(r.upper / r.lower, fraction);
        return QCPRange(r.lower / f, r.upper * f);
    }
    if (r.size() <= 0.0) {
        const double d = r.lower == 0.0 ? 1.0 : std::fabs(r.lower) * 0.01;
        return QCPRange(r.lower - d, r.upper + d);
    }
    const double d = r.size() * fraction;
    return QCPRange(r.lower - d, r.upper + d);
}

} // namespace

ChartView::ChartView(QWidget* parent) : QCustomPlot(parent)
{
    setObjectName(QStringLiteral("Pesgoa1"));
    plotLayout()->insertRow(0);
    plotLayout()->insertRow(0);
    m_mainTitle = new QCPTextElement(this, QString());
    m_mainTitle->setObjectName(QStringLiteral("MainTitle"));
    m_subTitle = new QCPTextElement(this, QString());
    m_subTitle->setObjectName(QStringLiteral("SubTitle"));
    plotLayout()->addElement(0, 0, m_mainTitle);
    plotLayout()->addElement(1, 0, m_subTitle);
    // The legend sits under the axes, in columns, so that it never covers a curve.
    axisRect()->insetLayout()->take(legend);
    plotLayout()->addElement(3, 0, legend);
    legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    legend->setRowSpacing(0);
    legend->setColumnSpacing(12);
    for (int row : {0, 1, 3})
        plotLayout()->setRowStretchFactor(row, 0.001);
    plotLayout()->setRowSpacing(0);
    axisRect()->setupFullAxesBox(true);
    for (QCPAxis* a : {xAxis2, yAxis2}) {
        a->setTickLabels(false);
        a->setLabel(QString());
    }
    m_cursor = new CursorTracer(this);
    m_cursor->setObjectName(QStringLiteral("CursorTracer"));
    m_cursor->setVisible(false);
    m_cursor->position->setType(QCPItemPosition::ptPlotCoords);
    m_cursor->setClipToAxisRect(true);
    setInteractions(QCP::iRangeZoom);
    setSelectionRectMode(QCP::srmZoom);
    selectionRect()->setPen(QPen(QColor(40, 40, 40), 1, Qt::DashLine));
    selectionRect()->setBrush(QColor(90, 120, 200, 40));
    setNoAntialiasingOnDrag(true);
    setMinimumSize(160, 120);
}

void ChartView::showChart(const charts::ChartProperties& chart, bool dataChanged)
{
    const bool histogram = chart.plottingMethod == charts::HistogramMethod;
    const bool rebuild = dataChanged || histogram != m_histogram ||
                         chart.xAxis.logScale != m_builtLogX ||
                         chart.yAxis.logScale != m_builtLogY ||
                         m_plottables.size() != chart.subsets.size();
    const bool axesChanged = !(chart.xAxis == m_xAxis) || !(chart.yAxis == m_yAxis);
    if (rebuild)
        buildPlottables(chart);
    applyStyles(chart);
    applyTexts(chart);
    applyAnnotations(chart);
    applyLegend(chart);
    m_xAxis = chart.xAxis;
    m_yAxis = chart.yAxis;
    applyAxes(chart);
    if (rebuild || axesChanged)
        resetRanges();
    replot();
}

void ChartView::buildPlottables(const charts::ChartProperties& chart)
{
    for (QCPAbstractPlottable* p : m_plottables)
        removePlottable(p);
    m_plottables.clear();
    m_histogram = chart.plottingMethod == charts::HistogramMethod;
    m_builtLogX = chart.xAxis.logScale;
    m_builtLogY = chart.yAxis.logScale;
    if (m_histogram) {
        buildBars(chart);
        return;
    }
    for (const charts::Subset& s : chart.subsets)
        buildGraph(s);
}

void ChartView::buildGraph(const charts::Subset& s)
{
    const std::size_t n = std::min(s.x.size(), s.y.size());
    bool sorted = true;
    double last = -std::numeric_limits<double>::infinity();
    double firstKey = NaN;
    for (std::size_t p = 0; p < n; ++p) {
        const double x = s.x[p];
        if (!drawable(x, m_builtLogX))
            continue;
        sorted = sorted && x >= last;
        last = x;
        if (std::isnan(firstKey))
            firstKey = x;
    }
    // One data entry a point, so that an entry's index is the point's index. A point without a
    // value keeps the key of the point before it and a NaN value, which breaks the line.
    if (sorted) {
        QVector<QCPGraphData> data(static_cast<int>(n));
        double key = std::isnan(firstKey) ? 0.0 : firstKey;
        for (std::size_t p = 0; p < n; ++p) {
            const bool hasX = drawable(s.x[p], m_builtLogX);
            if (hasX)
                key = s.x[p];
            data[static_cast<int>(p)] =
                QCPGraphData(key, hasX && drawable(s.y[p], m_builtLogY) ? s.y[p] : NaN);
        }
        QCPGraph* graph = addGraph();
        graph->data()->set(data, true);
        graph->setAdaptiveSampling(true);
        m_plottables.push_back(graph);
        return;
    }
    // Points whose X values go back and forth are joined in their own order.
    QVector<QCPCurveData> data(static_cast<int>(n));
    for (std::size_t p = 0; p < n; ++p) {
        const bool ok = drawable(s.x[p], m_builtLogX) && drawable(s.y[p], m_builtLogY);
        data[static_cast<int>(p)] =
            QCPCurveData(static_cast<double>(p), ok ? s.x[p] : NaN, ok ? s.y[p] : NaN);
    }
    auto* curve = new QCPCurve(xAxis, yAxis);
    curve->data()->set(data, true);
    m_plottables.push_back(curve);
}

void ChartView::buildBars(const charts::ChartProperties& chart)
{
    for (const charts::Subset& s : chart.subsets) {
        auto* bars = new QCPBars(xAxis, yAxis);
        bars->setWidth(0.7);
        const double x = s.x.empty() ? NaN : s.x[0];
        const double y = s.y.empty() ? NaN : s.y[0];
        if (IsValue(x) && drawable(y, m_builtLogY))
            bars->addData(x, y);
        m_plottables.push_back(bars);
    }
}

void ChartView::applyStyles(const charts::ChartProperties& chart)
{
    const QColor fg = ToQColor(chart.colors.graphForeground);
    const QColor text = ToQColor(chart.colors.deskForeground);
    setBackground(ToQColor(chart.colors.deskBackground));
    axisRect()->setBackground(ToQColor(chart.colors.graphBackground));
    const double labelPoints = LabelPoints(chart.textSize);
    const QFont labelFont = ChartFont(chart.fonts[charts::LabelFont], labelPoints);
    const QFont tickFont = ChartFont(chart.fonts[charts::LabelFont], labelPoints - 0.5);
    for (QCPAxis* a : {xAxis, yAxis, xAxis2, yAxis2}) {
        a->setBasePen(QPen(fg, 1));
        a->setTickPen(QPen(fg, 1));
        a->setSubTickPen(QPen(fg, 1));
        a->setTickLabelColor(fg);
        a->setLabelColor(text);
        a->setLabelFont(labelFont);
        a->setTickLabelFont(tickFont);
        a->setTickLengthIn(5);
        a->setSubTickLengthIn(3);
        QColor gridColor = fg;
        gridColor.setAlpha(70);
        a->grid()->setPen(QPen(gridColor, 1, Qt::DotLine));
        a->grid()->setZeroLinePen(Qt::NoPen);
        a->grid()->setVisible(chart.gridLines && (a == xAxis || a == yAxis));
    }
    for (std::size_t k = 0; k < m_plottables.size() && k < chart.subsets.size(); ++k) {
        const charts::Subset& s = chart.subsets[k];
        const QColor color = ToQColor(s.color);
        QCPAbstractPlottable* p = m_plottables[k];
        p->setName(QString::fromStdString(s.label));
        p->setVisible(s.show);
        if (auto* bars = qobject_cast<QCPBars*>(p)) {
            bars->setPen(QPen(color.darker(130), 1));
            bars->setBrush(color);
            continue;
        }
        const QCPScatterStyle symbol = chart.markDataPoints
                                           ? Symbol(s.pointType, color, chart.pointSize)
                                           : QCPScatterStyle(QCPScatterStyle::ssNone);
        const QPen pen = LinePen(s.lineType, color);
        if (auto* graph = qobject_cast<QCPGraph*>(p)) {
            graph->setPen(pen.style() == Qt::NoPen ? QPen(color) : pen);
            graph->setLineStyle(pen.style() == Qt::NoPen ? QCPGraph::lsNone : QCPGraph::lsLine);
            graph->setScatterStyle(symbol);
        } else if (auto* curve = qobject_cast<QCPCurve*>(p)) {
            curve->setPen(pen.style() == Qt::NoPen ? QPen(color) : pen);
            curve->setLineStyle(pen.style() == Qt::NoPen ? QCPCurve::lsNone : QCPCurve::lsLine);
            curve->setScatterStyle(symbol);
        }
    }
    legend->setBorderPen(QPen(ToQColor(chart.colors.shadow), 1));
    legend->setBrush(ToQColor(chart.colors.deskBackground));
    legend->setTextColor(text);
    legend->setFont(labelFont);
}

void ChartView::applyTexts(const charts::ChartProperties& chart)
{
    const QColor text = ToQColor(chart.colors.deskForeground);
    m_mainTitle->setText(QString::fromStdString(chart.mainTitle));
    m_mainTitle->setFont(ChartFont(chart.fonts[charts::MainTitleFont],
                                   MainTitlePoints(chart.textSize)));
    m_mainTitle->setTextColor(text);
    m_subTitle->setText(QString::fromStdString(chart.subTitle));
    m_subTitle->setFont(ChartFont(chart.fonts[charts::SubTitleFont],
                                  SubTitlePoints(chart.textSize)));
    m_subTitle->setTextColor(text);
    xAxis->setLabel(QString::fromStdString(chart.xAxisLabel));
    yAxis->setLabel(QString::fromStdString(chart.yAxisLabel));
}

void ChartView::applyAnnotations(const charts::ChartProperties& chart)
{
    for (auto it = m_annotationSlots.cbegin(); it != m_annotationSlots.cend(); ++it)
        removeItem(const_cast<QCPAbstractItem*>(it.key()));
    m_annotationSlots.clear();
    const QFont font = ChartFont(chart.fonts[charts::LabelFont], LabelPoints(chart.textSize));
    const int last = std::min(charts::LastUserAnnotationSlot,
                              static_cast<int>(chart.annotations.size()) - 1);
    for (int slot = 0; slot <= last; ++slot) {
        const charts::Annotation& a = chart.annotations[slot];
        if (!IsValue(a.x) || !IsValue(a.y) || a.text.empty() || a.text == charts::EmptySlotText)
            continue;
        auto* item = new QCPItemText(this);
        item->position->setType(QCPItemPosition::ptPlotCoords);
        item->position->setCoords(a.x, a.y);
        item->setPositionAlignment(Qt::AlignLeft | Qt::AlignBottom);
        item->setText(QString::fromStdString(a.text));
        item->setColor(ToQColor(a.color));
        item->setFont(font);
        item->setPadding(QMargins(2, 1, 2, 1));
        item->setClipToAxisRect(true);
        m_annotationSlots.insert(item, slot);
    }
}

void ChartView::applyAxes(const charts::ChartProperties& chart)
{
    const auto set = [](QCPAxis* axis, QCPAxis* mirror, const charts::AxisSettings& a,
                        QSharedPointer<QCPAxisTicker> ticker) {
        const auto type = a.logScale ? QCPAxis::stLogarithmic : QCPAxis::stLinear;
        axis->setScaleType(type);
        mirror->setScaleType(type);
        axis->setTicker(ticker);
        mirror->setTicker(ticker);
    };
    const double xSpan = std::fabs(chart.xAxis.manualMax - chart.xAxis.manualMin);
    const double ySpan = std::fabs(chart.yAxis.manualMax - chart.yAxis.manualMin);
    if (m_histogram) {
        // Bars stand at X = 1, 2, ...; their names are the point labels.
        QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
        const std::vector<std::string> none;
        const auto& labels = chart.pointLabels.empty() ? none : chart.pointLabels[0];
        for (std::size_t k = 0; k < chart.subsets.size(); ++k) {
            const auto& s = chart.subsets[k];
            const double x = s.x.empty() || !IsValue(s.x[0]) ? static_cast<double>(k + 1) : s.x[0];
            const std::string label = k < labels.size() ? labels[k] : s.label;
            ticker->addTick(x, QString::fromStdString(label));
        }
        ticker->setSubTickCount(0);
        xAxis->setScaleType(QCPAxis::stLinear);
        xAxis2->setScaleType(QCPAxis::stLinear);
        xAxis->setTicker(ticker);
        xAxis2->setTicker(ticker);
        xAxis->setTickLabelRotation(chart.subsets.size() > 6 ? 60 : 0);
    } else {
        xAxis->setTickLabelRotation(0);
        set(xAxis, xAxis2, chart.xAxis, makeTicker(chart.xAxis, xSpan));
    }
    set(yAxis, yAxis2, chart.yAxis, makeTicker(chart.yAxis, ySpan));
}

void ChartView::resetRanges()
{
    const auto apply = [this](QCPAxis* axis, const charts::AxisSettings& a, bool keys) {
        const bool manualOk = a.manualScale != 0 && a.manualMax > a.manualMin &&
                              (!a.logScale || a.manualMin > 0.0);
        if (manualOk) {
            axis->setRange(a.manualMin, a.manualMax);
            return;
        }
        bool found = false;
        QCPRange r = dataRange(m_plottables, keys, a.logScale, found);
        if (!found)
            r = a.logScale ? QCPRange(1.0, 10.0) : QCPRange(0.0, 1.0);
        if (m_histogram) {
            if (keys) {
                r = QCPRange(0.5, static_cast<double>(m_plottables.size()) + 0.5);
            } else if (!a.logScale) {
                r.expand(0.0); // bars stand on zero
                r = padded(r, false, 0.05);
            } else {
                r = padded(r, true, 0.05);
            }
        } else if (!keys || r.size() <= 0.0) {
            // Values get a margin; time axes start and end at the data.
            r = padded(r, a.logScale, keys ? 0.0 : 0.04);
        }
        axis->setRange(r);
    };
    apply(xAxis, m_xAxis, true);
    apply(yAxis, m_yAxis, false);
}

void ChartView::applyLegend(const charts::ChartProperties& chart)
{
    legend->clearItems();
    if (!m_histogram) {
        for (std::size_t k = 0; k < m_plottables.size() && k < chart.subsets.size(); ++k) {
            if (chart.subsets[k].legend && chart.subsets[k].show)
                m_plottables[k]->addToLegend(legend);
        }
    }
    const bool any = legend->itemCount() > 0;
    legend->setVisible(any);
    if (any && !plotLayout()->hasElement(3, 0))
        plotLayout()->addElement(3, 0, legend);
    else if (!any && plotLayout()->hasElement(3, 0))
        plotLayout()->take(legend);
    layoutLegend(width());
}

void ChartView::layoutLegend(int width)
{
    // As many columns as the widest entry allows across the chart.
    const QFontMetrics metrics(legend->font());
    int widest = 1;
    for (int i = 0; i < legend->itemCount(); ++i) {
        if (auto* item = qobject_cast<QCPPlottableLegendItem*>(legend->item(i))) {
            widest = std::max(widest, metrics.horizontalAdvance(item->plottable()->name()) +
                                          legend->iconSize().width() + legend->iconTextPadding() +
                                          legend->columnSpacing() + 12);
        }
    }
    const int columns = std::clamp((width - 40) / widest, 1, std::max(1, legend->itemCount()));
    if (columns != m_legendColumns || legend->wrap() != columns) {
        m_legendColumns = columns;
        legend->setWrap(columns);
    }
}

void ChartView::resizeEvent(QResizeEvent* event)
{
    layoutLegend(event->size().width());
    QCustomPlot::resizeEvent(event);
}

void ChartView::renderTo(QCPPainter* painter, int width, int height)
{
    layoutLegend(width);
    toPainter(painter, width, height);
    layoutLegend(this->width());
}

QPixmap ChartView::renderPixmap(int width, int height, double scale)
{
    layoutLegend(width);
    QPixmap picture = toPixmap(width, height, scale);
    layoutLegend(this->width());
    return picture;
}

int ChartView::subsetOf(const QCPAbstractPlottable* plottable) const
{
    for (std::size_t k = 0; k < m_plottables.size(); ++k) {
        if (m_plottables[k] == plottable)
            return static_cast<int>(k);
    }
    return -1;
}

QCPAbstractPlottable* ChartView::plottableOf(int subset) const
{
    return subset >= 0 && subset < static_cast<int>(m_plottables.size()) ? m_plottables[subset]
                                                                        : nullptr;
}

int ChartView::annotationSlotOf(const QCPAbstractItem* item) const
{
    return m_annotationSlots.value(item, -1);
}

int ChartView::subsetOfLegendItem(const QCPAbstractLegendItem* item) const
{
    const auto* entry = qobject_cast<const QCPPlottableLegendItem*>(item);
    return entry ? subsetOf(const_cast<QCPPlottableLegendItem*>(entry)->plottable()) : -1;
}

QPointF ChartView::pixelToData(const QPointF& pixel) const
{
    return QPointF(xAxis->pixelToCoord(pixel.x()), yAxis->pixelToCoord(pixel.y()));
}

bool ChartView::pointPixel(int subset, int point, QPointF& pixel) const
{
    QCPAbstractPlottable* p = plottableOf(subset);
    if (!p || point < 0)
        return false;
    double key = NaN;
    double value = NaN;
    if (auto* graph = qobject_cast<QCPGraph*>(p)) {
        if (point >= graph->data()->size())
            return false;
        key = graph->data()->at(point)->key;
        value = graph->data()->at(point)->value;
    } else if (auto* curve = qobject_cast<QCPCurve*>(p)) {
        if (point >= curve->data()->size())
            return false;
        key = curve->data()->at(point)->key;
        value = curve->data()->at(point)->value;
    } else if (auto* bars = qobject_cast<QCPBars*>(p)) {
        if (bars->data()->isEmpty())
            return false;
        key = bars->data()->at(0)->key;
        value = bars->data()->at(0)->value;
    }
    if (std::isnan(key) || std::isnan(value))
        return false;
    pixel = QPointF(xAxis->coordToPixel(key), yAxis->coordToPixel(value));
    return true;
}

void ChartView::setCursorPoint(int mode, int subset, int point)
{
    QPointF pixel;
    if (mode == charts::CursorNone || !pointPixel(subset, point, pixel)) {
        m_cursor->setVisible(false);
        return;
    }
    m_cursor->position->setCoords(xAxis->pixelToCoord(pixel.x()), yAxis->pixelToCoord(pixel.y()));
    if (mode == charts::CursorCross) {
        m_cursor->setStyle(QCPItemTracer::tsCrosshair);
        m_cursor->setPen(QPen(QColor(90, 90, 90), 1, Qt::DashLine));
    } else {
        m_cursor->setStyle(QCPItemTracer::tsSquare);
        m_cursor->setSize(11);
        m_cursor->setPen(QPen(QColor(20, 20, 20), 1.5));
    }
    m_cursor->setVisible(true);
}

bool ChartView::isObjectAt(const QPointF& pos) const
{
    QCPLayerable* hit = layerableAt(pos, false);
    return qobject_cast<QCPAbstractPlottable*>(hit) || qobject_cast<QCPAbstractItem*>(hit) ||
           qobject_cast<QCPAxis*>(hit) || qobject_cast<QCPLegend*>(hit) ||
           qobject_cast<QCPAbstractLegendItem*>(hit) || qobject_cast<QCPTextElement*>(hit);
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    // A left drag on free space draws the zoom rectangle; Shift + drag moves the axes; a press
    // on a curve, a text or the legend is a click on that object.
    const bool left = event->button() == Qt::LeftButton;
    const bool pan = left && event->modifiers().testFlag(Qt::ShiftModifier);
    m_pressOnEmpty = left && !pan && !isObjectAt(event->position());
    setInteraction(QCP::iRangeDrag, pan);
    setSelectionRectMode(m_pressOnEmpty && m_zoomPermitted ? QCP::srmZoom : QCP::srmNone);
    QCustomPlot::mousePressEvent(event);
}

void ChartView::mouseReleaseEvent(QMouseEvent* event)
{
    const bool click = !mMouseHasMoved;
    const bool onEmpty = m_pressOnEmpty;
    m_pressOnEmpty = false;
    QCustomPlot::mouseReleaseEvent(event);
    if (onEmpty && click && event->button() == Qt::LeftButton)
        emit emptyClicked(event->position());
}

void ChartView::processRectZoom(QRect rect, QMouseEvent* event)
{
    QCustomPlot::processRectZoom(rect, event);
    emit zoomed();
}

} // namespace zarvion::gui
