#pragma once
// Pictures of a chart for files, the clipboard and paper: bitmaps (PNG, BMP) and vector
// drawings (PDF, SVG), all drawn by the chart view at a given size.

#include <QByteArray>
#include <QImage>
#include <QString>
#include <optional>

class QCPPainter;

namespace zarvion::gui {

class ChartView;

//! Image forms of an export.
enum class ImageKind { Png, Bmp, Pdf, Svg };

//! The form a file name asks for by its extension (any case); none for other extensions.
std::optional<ImageKind> ImageKindOf(const QString& path);
//! True for the vector forms (PDF, SVG), the "metafile" of the chart.
bool IsVector(ImageKind kind);

//! Draws the chart at width x height [px] onto an active painter.
void PaintChart(ChartView& view, QCPPainter& painter, int width, int height);
//! A bitmap of the chart at width x height [px], drawn scale times finer.
QImage ChartImage(ChartView& view, int width, int height, double scale = 1.0);
//! The bytes of an image file of the chart.
QByteArray ChartImageBytes(ChartView& view, ImageKind kind, int width, int height,
                           double scale = 1.0);
//! Writes an image file atomically; returns the reason when it could not be written.
QString WriteChartImage(ChartView& view, const QString& path, ImageKind kind, int width,
                        int height, double scale = 1.0);

} // namespace zarvion::gui
