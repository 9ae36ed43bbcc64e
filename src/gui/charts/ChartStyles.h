#pragma once
// How the chart's codes look on screen: colours, the table of line and symbol styles (with
// "None" for the hidden codes 4444 and 73), symbol sizes and the fonts of the text sizes.

#include <QColor>
#include <QFont>
#include <QPen>
#include <QString>
#include <vector>

#include <qcustomplot.h>

#include "charts/ChartDocument.h"

namespace zarvion::gui {

QColor ToQColor(charts::Color color);
charts::Color FromQColor(const QColor& color);

//! One entry of the line style table.
struct LineStyle {
    int code;
    const char* name;
    Qt::PenStyle pen;
    double width; //!< [px at 96 dpi]
};
//! One entry of the symbol table.
struct SymbolStyle {
    int code;
    const char* name;
    QCPScatterStyle::ScatterShape shape;
    bool filled;
};

//! Line styles by code, "None" (4444) last.
const std::vector<LineStyle>& LineStyles();
//! Symbol styles by code, "None" (73) last.
const std::vector<SymbolStyle>& SymbolStyles();
//! The entry of a code; an unknown code draws as code 0.
const LineStyle& LineStyleOf(int code);
const SymbolStyle& SymbolStyleOf(int code);

//! The pen of a subset's line; Qt::NoPen for "None".
QPen LinePen(int lineCode, const QColor& color);
//! The symbol of a subset; ssNone for "None".
QCPScatterStyle Symbol(int pointCode, const QColor& color, int pointSize);
//! Symbol edge length of the point sizes 0 small, 1 medium, 2 large [px].
double SymbolPixels(int pointSize);

//! Point sizes of the three text groups for the text sizes 0 large, 1 medium, 2 small.
double MainTitlePoints(int textSize);
double SubTitlePoints(int textSize);
double LabelPoints(int textSize);
//! A chart font of a face, bold, italic and underline at a size.
QFont ChartFont(const charts::FontSpec& spec, double points);

} // namespace zarvion::gui
