// A chart leaves the program: as an image file, through the clipboard, or on paper.
#include "charts/PLOT.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QMimeData>

#include "charts/ChartExport.h"
#include "charts/ChartRender.h"
#include "charts/ChartView.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBox.h"
#include "platform/WaitCursor.h"

namespace zarvion::gui {

QSize PLOT::chartSizePixels() const
{
    return m_view->size();
}

QSizeF PLOT::chartSizeTwips() const
{
    const double dpiX = m_view->logicalDpiX() > 0 ? m_view->logicalDpiX() : 96.0;
    const double dpiY = m_view->logicalDpiY() > 0 ? m_view->logicalDpiY() : 96.0;
    return QSizeF(m_view->width() * charts::TwipsPerInch / dpiX,
                  m_view->height() * charts::TwipsPerInch / dpiY);
}

void PLOT::ExportChart(bool metafile, bool clipboard)
{
    try {
        const QSizeF twips = chartSizeTwips();
        const shell::Message refusal =
            charts::CheckExport(m_doc.subsetCount(), twips.width(), twips.height());
        if (!refusal.empty()) {
            ShowMessage(refusal);
            return;
        }
        SubSetSelCancel();
        if (clipboard) {
            copyImage(metafile);
            return;
        }
        bool cancelled = false;
        QString path = ShowSaveDialog(cancelled, toQt(charts::ExportDialogFilter));
        if (cancelled)
            return;
        if (QFileInfo(path).suffix().compare(QLatin1String("wmf"), Qt::CaseInsensitive) == 0) {
            ShowMessage(toQt(charts::MetafileNotWrittenMessage), shell::StyleWarning);
            return;
        }
        if (!ImageKindOf(path))
            path += QStringLiteral(".png"); // the dialog's first form
        exportToFile(path, IsVector(*ImageKindOf(path)));
    } catch (const std::exception& e) {
        ReportError(QStringLiteral("Plot#116. "), toQt(e.what()));
    }
}

bool PLOT::exportToFile(const QString& path, bool)
{
    const QSize size = chartSizePixels();
    QString error;
    {
        WaitCursor wait;
        error = WriteChartImage(*m_view, path, *ImageKindOf(path), size.width(), size.height());
    }
    if (!error.isEmpty()) {
        ReportError(QStringLiteral("Plot#116. "), error);
        return false;
    }
    return true;
}

void PLOT::copyImage(bool vector)
{
    WaitCursor wait;
    const QSize size = chartSizePixels();
    auto* data = new QMimeData;
    if (vector)
        data->setData(QStringLiteral("image/svg+xml"),
                      ChartImageBytes(*m_view, ImageKind::Svg, size.width(), size.height()));
    // Programs that take no drawings get the bitmap.
    data->setImageData(ChartImage(*m_view, size.width(), size.height()));
    QApplication::clipboard()->setMimeData(data);
}

void PLOT::Plot_PRT()
{
}

void PLOT::CastomDial()
{
}

} // namespace zarvion::gui
