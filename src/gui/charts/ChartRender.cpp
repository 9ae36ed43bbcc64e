#include "charts/ChartRender.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "charts/ChartView.h"
#include "shell/AtomicFile.h"

namespace zarvion::gui {

namespace {

//! Vector drawings use the screen's resolution, so that texts keep their size against the
//! curves [dots/inch].
constexpr int VectorDpi = 96;

} // namespace

std::optional<ImageKind> ImageKindOf(const QString& path)
{
    const QString ext = QFileInfo(path).suffix().toLower();
    if (ext == QLatin1String("png"))
        return ImageKind::Png;
    if (ext == QLatin1String("bmp"))
        return ImageKind::Bmp;
    if (ext == QLatin1String("pdf"))
        return ImageKind::Pdf;
    if (ext == QLatin1String("svg"))
        return ImageKind::Svg;
    return std::nullopt;
}

bool IsVector(ImageKind kind)
{
    return kind == ImageKind::Pdf || kind == ImageKind::Svg;
}

void PaintChart(ChartView& view, QCPPainter& painter, int width, int height)
{
    view.renderTo(&painter, width, height);
}

QImage ChartImage(ChartView& view, int width, int height, double scale)
{
    return view.renderPixmap(width, height, scale).toImage();
}

QByteArray ChartImageBytes(ChartView& view, ImageKind kind, int width, int height, double scale)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    switch (kind) {
    case ImageKind::Png:
    case ImageKind::Bmp:
        ChartImage(view, width, height, scale)
            .save(&buffer, kind == ImageKind::Png ? "PNG" : "BMP");
        break;
    case ImageKind::Pdf: {
        QPdfWriter writer(&buffer);
        writer.setResolution(VectorDpi);
        writer.setCreator(QStringLiteral("ZARVION-II"));
        const QSizeF points(width * 72.0 / VectorDpi, height * 72.0 / VectorDpi);
        writer.setPageLayout(QPageLayout(QPageSize(points, QPageSize::Point, QString(),
                                                   QPageSize::ExactMatch),
                                         QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
        QCPPainter painter(&writer);
        painter.setMode(QCPPainter::pmVectorized);
        painter.setWindow(0, 0, width, height);
        PaintChart(view, painter, width, height);
        break;
    }
    case ImageKind::Svg: {
        QSvgGenerator svg;
        svg.setOutputDevice(&buffer);
        svg.setResolution(VectorDpi);
        svg.setSize(QSize(width, height));
        svg.setViewBox(QRect(0, 0, width, height));
        svg.setTitle(view.mainTitleElement()->text());
        QCPPainter painter(&svg);
        painter.setMode(QCPPainter::pmVectorized);
        PaintChart(view, painter, width, height);
        break;
    }
    }
    return bytes;
}

QString WriteChartImage(ChartView& view, const QString& path, ImageKind kind, int width,
                        int height, double scale)
{
    const QByteArray bytes = ChartImageBytes(view, kind, width, height, scale);
    if (bytes.isEmpty())
        return QStringLiteral("The image could not be drawn.");
    try {
        shell::WriteFileAtomically(path.toStdString(),
                                   std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    } catch (const std::exception& e) {
        return QString::fromStdString(e.what());
    }
    return {};
}

} // namespace zarvion::gui
