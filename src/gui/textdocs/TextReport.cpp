#include "textdocs/TextReport.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <memory>

#include "platform/MessageBox.h"
#include "platform/WaitCursor.h"
#include "textdocs/PageSetup.h"

namespace zarvion::gui {

namespace {

PreviewObserver& observer()
{
    static PreviewObserver o;
    return o;
}

//! The report's text laid out in the detail band's width, always wrapped: a text field of a
//! fixed width on paper.
std::unique_ptr<QTextDocument> layOut(const QString& text, const QFont& font, double width,
                                      QPaintDevice* device)
{
    auto doc = std::make_unique<QTextDocument>();
    doc->documentLayout()->setPaintDevice(device);
    doc->setDocumentMargin(0);
    doc->setDefaultFont(font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    doc->setDefaultTextOption(option);
    doc->setPlainText(text);
    doc->setTextWidth(width);
    return doc;
}

int paperCode(const QPageSize& size)
{
    switch (size.id()) {
    case QPageSize::A4: return textdocs::PaperA4;
    case QPageSize::Letter: return textdocs::PaperLetter;
    default: return 0;
    }
}

} // namespace

TextReport::TextReport(QString text, TextReportSettings settings)
    : m_text(std::move(text)), m_settings(std::move(settings))
{
}

void TextReport::setUpPrinter(QPrinter& printer) const
{
    const auto& p = m_settings.pageParameters;
    printer.setPageSize(QPageSize(static_cast<int>(p[4]) == textdocs::PaperA4 ? QPageSize::A4
                                                                              : QPageSize::Letter));
    printer.setPageOrientation(static_cast<int>(p[5]) == textdocs::Landscape
                                   ? QPageLayout::Landscape
                                   : QPageLayout::Portrait);
    printer.setFullPage(true);
    printer.setPageMargins(QMarginsF(0, 0, 0, 0));
    printer.setDocName(m_settings.heading.isEmpty() ? QStringLiteral("ZARVION") : m_settings.heading);
}

TextReport::Geometry TextReport::geometry(const QPrinter& printer) const
{
    const auto& p = m_settings.pageParameters;
    const double dpi = printer.resolution();
    const auto px = [dpi](double twips) { return twips * dpi / textdocs::TwipsPerInch; };
    const double printWidth = textdocs::PrintWidthTwips(p);
    Geometry g;
    // The bands stand 10 twips in from the report's own left edge, at the left margin.
    g.left = px(10.0 + p[0] * textdocs::TwipsPerInch);
    g.printWidth = px(printWidth);
    g.detailWidth = px(printWidth - 300.0);
    g.top = px(p[2] * textdocs::TwipsPerInch);
    g.headerHeight = px(textdocs::PageHeaderHeight(fromQt(m_settings.heading),
                                                   m_settings.pageNumbers));
    const double paperHeight = printer.pageLayout().fullRectPixels(static_cast<int>(dpi)).height();
    g.bottom = paperHeight - px(p[3] * textdocs::TwipsPerInch);
    return g;
}

std::unique_ptr<QTextDocument> TextReport::layOutPages(QPrinter& printer)
{
    m_pages.clear();
    const Geometry g = geometry(printer);
    auto doc = layOut(m_text, m_settings.font, g.detailWidth, &printer);
    const double room = std::max(1.0, g.bottom - g.top - g.headerHeight);
    Page page;
    double lastBottom = 0;
    // Pages break between lines, never through one.
    for (QTextBlock block = doc->begin(); block.isValid(); block = block.next()) {
        const QRectF blockRect = doc->documentLayout()->blockBoundingRect(block);
        const QTextLayout* layout = block.layout();
        for (int i = 0; i < layout->lineCount(); ++i) {
            const QTextLine line = layout->lineAt(i);
            const double top = blockRect.top() + line.y();
            const double bottom = top + line.height();
            if (bottom - page.start > room && top > page.start) {
                page.end = top;
                m_pages.push_back(page);
                page = {top, top, block.blockNumber()};
            }
            lastBottom = bottom;
        }
    }
    page.end = std::max(lastBottom, page.start);
    m_pages.push_back(page);
    return doc;
}

int TextReport::paginate(QPrinter& printer)
{
    layOutPages(printer);
    return pageCount();
}

QString TextReport::pageNumberField(int page) const
{
    if (!m_settings.pageNumbers)
        return {};
    return toQt(textdocs::PageNumberText(page, m_settings.firstPageNumber, m_settings.alignment));
}

void TextReport::paint(QPrinter& printer)
{
    WaitCursor wait;
    try {
        const auto doc = layOutPages(printer);
        const Geometry g = geometry(printer);
        QPainter painter(&printer);
        QFont headerFont = m_settings.font;
        headerFont.setBold(true);
        for (int i = 0; i < pageCount(); ++i) {
            if (i > 0)
                printer.newPage();
            if (g.headerHeight > 0) {
                // Each page states its fonts anew: a new page starts from a fresh state.
                painter.save();
                painter.setFont(headerFont);
                const QRectF band(g.left, g.top, g.printWidth, g.headerHeight);
                const QString number = pageNumberField(i + 1);
                const int numberAlign = m_settings.alignment == 1 ? Qt::AlignRight : Qt::AlignLeft;
                painter.drawText(band, numberAlign | Qt::AlignVCenter, number);
                // The heading stands in the middle, clear of the number on either side.
                const double reserve =
                    painter.fontMetrics().horizontalAdvance(number + QStringLiteral("   "));
                const QRectF headingRect = band.adjusted(reserve, 0, -reserve, 0);
                const QString heading = painter.fontMetrics().elidedText(
                    m_settings.heading, Qt::ElideMiddle, static_cast<int>(headingRect.width()));
                painter.drawText(headingRect, Qt::AlignHCenter | Qt::AlignVCenter, heading);
                painter.restore();
            }
            // The lines of this page, each drawn once: a line is on one page only.
            const Page& page = m_pages[static_cast<std::size_t>(i)];
            const QPointF origin(g.left, g.top + g.headerHeight - page.start);
            for (QTextBlock block = doc->findBlockByNumber(page.firstBlock); block.isValid();
                 block = block.next()) {
                const QRectF blockRect = doc->documentLayout()->blockBoundingRect(block);
                if (blockRect.top() >= page.end)
                    break;
                const QTextLayout* layout = block.layout();
                for (int k = 0; k < layout->lineCount(); ++k) {
                    const QTextLine line = layout->lineAt(k);
                    const double top = blockRect.top() + line.y();
                    if (top >= page.start && top < page.end)
                        line.draw(&painter, origin + blockRect.topLeft());
                }
            }
        }
    } catch (const std::exception& e) {
        ResetCursor();
        ReportError(QStringLiteral("TxtRep#001. "), toQt(e.what()));
    }
}

void SetPreviewObserver(PreviewObserver o)
{
    observer() = std::move(o);
}

void ShowTextPrintPreview(QWidget* parent, const QString& text, const TextReportSettings& settings)
{
    TextReport report(text, settings);
    QPrinter printer(QPrinter::HighResolution);
    report.setUpPrinter(printer);
    QPrintPreviewDialog preview(&printer, parent);
    preview.setObjectName(QStringLiteral("PRINT_PREVIEW"));
    preview.setWindowTitle(QStringLiteral("Print Preview"));
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&report](QPrinter* target) { report.paint(*target); });
    if (parent)
        preview.resize(parent->window()->size() * 0.9);
    if (observer())
        observer()(&preview, &printer);
    preview.exec();
    const int chosen = static_cast<int>(settings.pageParameters[4]);
    const auto mismatch =
        textdocs::PaperMismatchMessage(chosen, paperCode(printer.pageLayout().pageSize()));
    if (!mismatch.empty())
        ShowMessage(mismatch);
}

} // namespace zarvion::gui
