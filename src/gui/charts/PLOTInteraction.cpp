// What the user does with the mouse and the keys on a chart window: clicks on points and
// texts, the double click that selects a subset, the value read-out, zoom, in-place edits,
// annotations, sizes, the legend and the axes.
#include "charts/PLOT.h"

#include <QAction>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolTip>

#include "charts/ChartExport.h"
#include "charts/ChartText.h"
#include "charts/ChartView.h"
#include "platform/MessageBox.h"

namespace zarvion::gui {

void PLOT::connectView()
{
    connect(m_view, &QCustomPlot::plottableClick, this,
            [this](QCPAbstractPlottable* p, int index, QMouseEvent*) { onPlottableClick(p, index); });
    connect(m_view, &QCustomPlot::plottableDoubleClick, this,
            [this](QCPAbstractPlottable* p, int, QMouseEvent*) { onPlottableDoubleClick(p); });
    connect(m_view, &QCustomPlot::itemClick, this,
            [this](QCPAbstractItem* item, QMouseEvent*) { onItemClick(item); });
    connect(m_view, &QCustomPlot::axisClick, this,
            [this](QCPAxis* axis, QCPAxis::SelectablePart part, QMouseEvent*) {
                onAxisClick(axis, static_cast<int>(part));
            });
    connect(m_view, &QCustomPlot::legendClick, this,
            [this](QCPLegend*, QCPAbstractLegendItem* item, QMouseEvent*) { onLegendClick(item); });
    connect(m_view->mainTitleElement(), &QCPTextElement::clicked, this, [this] {
        SubSetSelCancel();
        showTextBox(charts::EditKind::MainTitle, 0, toQt(m_doc.mainTitle), true);
    });
    connect(m_view->subTitleElement(), &QCPTextElement::clicked, this, [this] {
        SubSetSelCancel();
        showTextBox(charts::EditKind::SubTitle, 0, toQt(m_doc.subTitle), true);
    });
    connect(m_view, &QCustomPlot::mouseMove, this, &PLOT::onMouseMove);
    connect(m_view, &QCustomPlot::mouseRelease, this, &PLOT::onMouseRelease);
    connect(m_view, &ChartView::zoomed, this, &PLOT::onZoom);
    connect(m_view, &ChartView::emptyClicked, this, [this](const QPointF& pixel) {
        SubSetSelCancel();
        m_clickedKind = charts::EditKind::None;
        m_annotationPixel = pixel;
    });
}

void PLOT::syncTextBox()
{
    const charts::TextBoxState& box = m_state.textBox;
    m_editBar->setVisible(box.visible);
    Text1Hint->setText(toQt(box.hint));
    if (Text1->text() != toQt(box.text))
        Text1->setText(toQt(box.text));
    Text1Ok->setVisible(box.okButtonVisible);
}

void PLOT::showTextBox(charts::EditKind kind, int slot, const QString& text, bool okButton,
                       bool focus)
{
    Timer3.stop();
    m_state.textBox = charts::TextBoxState{true, okButton, fromQt(text),
                                           charts::EditHint(kind), kind, slot};
    m_clickedKind = kind;
    m_clickedSlot = slot;
    syncTextBox();
    if (focus) {
        Text1->setFocus();
        Text1->selectAll();
    }
}

void PLOT::hideTextBox()
{
    m_state.textBox = charts::TextBoxState{};
    syncTextBox();
}

void PLOT::commitTextBox()
{
    if (m_state.textBox.kind == charts::EditKind::None)
        return;
    m_state.textBox.text = fromQt(Text1->text());
    const shell::Message message =
        charts::CommitEdit(m_doc, m_state, 0, annotationPlace());
    syncTextBox();
    m_view->setFocus();
    redraw(false);
    if (!message.empty())
        ShowMessage(message);
}

void PLOT::onPlottableClick(QCPAbstractPlottable* plottable, int dataIndex)
{
    const int subset = m_view->subsetOf(plottable);
    if (subset < 0)
        return;
    if (m_doc.selected.active && m_doc.selected.index != subset)
        SubSetSelCancel();
    m_clickedKind = charts::EditKind::None;
    const int point = m_view->isHistogram() ? 0 : dataIndex;
    charts::DataPointClicked(m_state, subset, point);
    charts::CursorMoved(m_doc, m_state, subset, point);
    Timer1.start();
    showReadout();
    m_view->setCursorPoint(m_state.cursorMode, m_state.cursorSubset, m_state.cursorPoint);
    m_view->replot();
}

void PLOT::onPlottableDoubleClick(QCPAbstractPlottable* plottable)
{
    const int subset = m_view->subsetOf(plottable);
    if (!charts::DataPointDoubleClicked(m_doc, m_state, subset))
        return;
    Timer1.stop();
    Timer2.stop();
    // The label of the selected subset stands in the box; the chart keeps the keys for Cut,
    // Copy and Delete.
    syncTextBox();
    m_clickedKind = charts::EditKind::SubsetLabel;
    m_clickedSlot = subset;
    redraw(false);
}

void PLOT::onItemClick(QCPAbstractItem* item)
{
    const int slot = m_view->annotationSlotOf(item);
    if (slot < 0)
        return;
    SubSetSelCancel();
    showTextBox(charts::EditKind::Annotation, slot, toQt(m_doc.annotations[slot].text), true);
}

void PLOT::onAxisClick(QCPAxis* axis, int part)
{
    SubSetSelCancel();
    if (part != QCPAxis::spAxisLabel)
        return;
    if (axis == m_view->xAxis)
        showTextBox(charts::EditKind::XLabel, 0, toQt(m_doc.xAxisLabel), true);
    else if (axis == m_view->yAxis)
        showTextBox(charts::EditKind::YLabel, 0, toQt(m_doc.yAxisLabel), true);
}

void PLOT::onLegendClick(QCPAbstractLegendItem* item)
{
    const int subset = m_view->subsetOfLegendItem(item);
    if (subset < 0)
        return;
    if (m_doc.selected.active && m_doc.selected.index != subset)
        SubSetSelCancel();
    showTextBox(charts::EditKind::SubsetLabel, subset, toQt(m_doc.subsets[subset].label), true);
}

void PLOT::onMouseMove(QMouseEvent* event)
{
    // A legend entry of a reaction shows the whole equation with its overflow pieces.
    QString tip;
    for (int i = 0; i < m_view->legend->itemCount(); ++i) {
        QCPAbstractLegendItem* item = m_view->legend->item(i);
        if (item && item->realVisibility() && item->rect().contains(event->position().toPoint())) {
            tip = toQt(charts::ReactionToolTip(m_doc, m_view->subsetOfLegendItem(item)));
            break;
        }
    }
    if (tip.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(event->globalPosition().toPoint(), tip, m_view);
}

void PLOT::onMouseRelease(QMouseEvent* event)
{
    if (event->button() != Qt::RightButton)
        return;
    m_annotationPixel = event->position();
    showPopup(event->globalPosition().toPoint());
}

void PLOT::showPopup(const QPoint& globalPos)
{
    if (m_state.textBox.visible)
        m_view->replot();
    const char* textItems[] = {"FONTLADGE", "FONTMedium", "FONTSmall"};
    const char* pointItems[] = {"POINTSSMALL", "POINTSMEDIUM", "POINTSLADGE"};
    for (int i = 0; i < 3; ++i) {
        m_actions[textItems[i]]->setChecked(m_doc.textSize == i);
        m_actions[pointItems[i]]->setChecked(m_doc.pointSize == i);
    }
    m_popup->popup(globalPos);
}

void PLOT::onZoom()
{
    SubSetSelCancel();
    m_zoomRedrawPending = true;
    Timer2.start();
    // The zoomed window decides whether a further zoom is allowed: not when both axes reach
    // below 1E-05 in magnitude.
    charts::ChartProperties bounds;
    bounds.xAxis.manualMin = m_view->xAxis->range().lower;
    bounds.xAxis.manualMax = m_view->xAxis->range().upper;
    bounds.yAxis.manualMin = m_view->yAxis->range().lower;
    bounds.yAxis.manualMax = m_view->yAxis->range().upper;
    m_view->setZoomPermitted(charts::ZoomPermitted(bounds));
}

void PLOT::UndoZM()
{
    m_view->resetRanges();
    m_view->setZoomPermitted(true);
    m_view->replot();
}

void PLOT::showReadout()
{
    if (!m_state.readout.visible)
        return;
    const auto fill = [](QComboBox* combo, const std::array<std::string, 2>& entries, int index) {
        combo->clear();
        if (entries[0].empty())
            return;
        for (const std::string& e : entries)
            combo->addItem(toQt(e));
        combo->setCurrentIndex(index);
    };
    fill(Combo1, m_state.readout.xEntries, m_state.readout.xFormatIndex);
    fill(Combo2, m_state.readout.yEntries, m_state.readout.yFormatIndex);
    Text3->setText(toQt(m_state.readout.xText));
    Text2->setText(toQt(m_state.readout.yText));
}

void PLOT::XYShowSub()
{
    charts::XYShowSub(m_doc, m_state);
    m_readoutBar->show();
    for (QWidget* w : m_readoutBar->findChildren<QWidget*>())
        w->setEnabled(m_state.readout.enabled);
    showReadout();
    m_view->setCursorPoint(m_state.cursorMode, m_state.cursorSubset, m_state.cursorPoint);
    m_view->replot();
}

void PLOT::XYHIDESub()
{
    charts::XYHIDESub(m_state);
    m_readoutBar->hide();
    m_view->setCursorPoint(charts::CursorNone, 0, 0);
    m_view->replot();
}

void PLOT::TxtBoxEn(bool enable)
{
    charts::TxtBoxEn(m_state, enable);
    Combo1->clear();
    Combo2->clear();
    Text3->clear();
    Text2->clear();
    for (QWidget* w : {static_cast<QWidget*>(Combo1), static_cast<QWidget*>(Text3),
                       static_cast<QWidget*>(Combo2), static_cast<QWidget*>(Text2)})
        w->setEnabled(enable);
}

void PLOT::moveCursorBy(int points, int subsets)
{
    if (m_state.cursorMode == charts::CursorNone || m_doc.subsets.empty())
        return;
    const int subset = std::clamp(std::max(m_state.cursorSubset, 0) + subsets, 0,
                                  m_doc.subsetCount() - 1);
    const int point = std::clamp(m_state.cursorPoint + points, 0, std::max(m_doc.points - 1, 0));
    charts::CursorMoved(m_doc, m_state, subset, point);
    showReadout();
    m_view->setCursorPoint(m_state.cursorMode, subset, point);
    m_view->replot();
}

std::optional<std::pair<double, double>> PLOT::annotationPlace() const
{
    if (!m_annotationPixel)
        return std::nullopt;
    // The text starts a little to the right of and above the place of the mouse.
    const QPointF data = m_view->pixelToData(*m_annotationPixel + QPointF(3, -3));
    return std::make_pair(data.x(), data.y());
}

void PLOT::NEWANNOTATION()
{
    SubSetSelCancel();
    showTextBox(charts::EditKind::NewAnnotation, 0, QString(), true);
}

void PLOT::TextAnnotationsNew(const QString& text)
{
    const shell::Message message =
        charts::TextAnnotationsNew(m_doc, fromQt(text), annotationPlace(), 0);
    redraw(false);
    if (!message.empty())
        ShowMessage(message);
}

void PLOT::deleteKey()
{
    if (m_doc.selected.active) {
        DeleteSubset();
        return;
    }
    switch (m_clickedKind) {
    case charts::EditKind::Annotation:
    case charts::EditKind::MainTitle:
    case charts::EditKind::SubTitle:
    case charts::EditKind::XLabel:
    case charts::EditKind::YLabel:
        charts::DeleteClickedText(m_doc, m_clickedKind, m_clickedSlot,
                                  charts::SharedPlotExchange().DefaultSubtitle);
        m_clickedKind = charts::EditKind::None;
        hideTextBox();
        redraw(false);
        break;
    default: break;
    }
}

void PLOT::SHOWALLTEXT()
{
    charts::SHOWALLTEXT(m_doc);
    redraw(false);
}

void PLOT::MarkDataPnt()
{
    const bool mark = buttonState(QStringLiteral("MARKER"), m_doc.markDataPoints);
    if (mark != m_doc.markDataPoints)
        m_doc.MustSave();
    m_doc.markDataPoints = mark;
    redraw(false);
}

void PLOT::GridLine()
{
    const bool grid = buttonState(QStringLiteral("GRIDLINE"), m_doc.gridLines);
    if (grid != m_doc.gridLines)
        m_doc.MustSave();
    m_doc.gridLines = grid;
    redraw(false);
}

void PLOT::SetTextSize(int size)
{
    charts::SetTextSize(m_doc, size);
    redraw(false);
}

void PLOT::SetPointSize(int size)
{
    charts::SetPointSize(m_doc, size);
    redraw(false);
}

void PLOT::SetLegend(bool show)
{
    charts::SetLegend(m_doc, show);
    changed(false);
}

void PLOT::LineaXY()
{
    // Axes without bounds of their own take the ones on screen.
    const auto keep = [](charts::AxisSettings& a, const QCPRange& r) {
        if (a.manualMin == 0.0 && a.manualMax == 0.0) {
            a.manualMin = r.lower;
            a.manualMax = r.upper;
        }
    };
    keep(m_doc.xAxis, m_view->xAxis->range());
    keep(m_doc.yAxis, m_view->yAxis->range());
    charts::LineaXY(m_doc);
    changed(false);
}

void PLOT::AUTOXY()
{
    charts::AUTOXY(m_doc);
    changed(false);
}

void PLOT::SetCursorStyle(int mode)
{
    m_state.cursorMode = mode;
    if (m_state.cursorSubset < 0)
        charts::CursorMoved(m_doc, m_state, 0, 0);
    m_view->setCursorPoint(mode, m_state.cursorSubset, m_state.cursorPoint);
    m_view->replot();
}

bool PLOT::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == Text1 && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        hideTextBox();
        m_view->setFocus();
        redraw(false);
        return true;
    }
    if (watched == m_view) {
        if (event->type() == QEvent::KeyPress) {
            keyPressEvent(static_cast<QKeyEvent*>(event));
            return event->isAccepted();
        }
        if (event->type() == QEvent::FocusOut) {
            // Leaving the chart ends a selection; opening one of its menus does not.
            const auto reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason)
                SubSetSelCancel();
        }
        if (event->type() == QEvent::FocusIn)
            ToolBr();
    }
    return QWidget::eventFilter(watched, event);
}

void PLOT::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (m_state.textBox.visible) {
            hideTextBox();
            redraw(false);
        }
        break;
    case Qt::Key_Delete: deleteKey(); break;
    case Qt::Key_Left: moveCursorBy(-1, 0); break;
    case Qt::Key_Right: moveCursorBy(1, 0); break;
    case Qt::Key_PageUp: moveCursorBy(-10, 0); break;
    case Qt::Key_PageDown: moveCursorBy(10, 0); break;
    case Qt::Key_Up: moveCursorBy(0, -1); break;
    case Qt::Key_Down: moveCursorBy(0, 1); break;
    default: event->ignore(); return;
    }
    event->accept();
}

void PLOT::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!isVisible())
        return;
    const QSizeF twips = chartSizeTwips();
    m_sizeOverlay->setText(toQt(charts::ChartSize(twips.width(), twips.height())));
    m_sizeOverlay->adjustSize();
    m_sizeOverlay->move(m_view->width() - m_sizeOverlay->width() - 8,
                        m_view->height() - m_sizeOverlay->height() - 8);
    m_sizeOverlay->show();
    m_sizeOverlay->raise();
    m_sizeTimer.start();
}

void PLOT::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        SubSetSelCancel();
}

} // namespace zarvion::gui
