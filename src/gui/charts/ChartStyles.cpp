#include "charts/ChartStyles.h"

#include <algorithm>

namespace zarvion::gui {

QColor ToQColor(charts::Color color)
{
    return QColor(static_cast<int>((color >> 16) & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                  static_cast<int>(color & 0xFF));
}

charts::Color FromQColor(const QColor& color)
{
    return (static_cast<charts::Color>(color.red()) << 16) |
           (static_cast<charts::Color>(color.green()) << 8) |
           static_cast<charts::Color>(color.blue());
}

const std::vector<LineStyle>& LineStyles()
{
    // Code 6 is the thick line of steady-state curves.
    static const std::vector<LineStyle> styles = {
        {0, "Solid", Qt::SolidLine, 1.2},
        {1, "Dash", Qt::DashLine, 1.2},
        {2, "Dot", Qt::DotLine, 1.2},
        {3, "Dash Dot", Qt::DashDotLine, 1.2},
        {4, "Dash Dot Dot", Qt::DashDotDotLine, 1.2},
        {5, "Medium Solid", Qt::SolidLine, 2.0},
        {6, "Thick Solid", Qt::SolidLine, 3.0},
        {7, "Medium Dash", Qt::DashLine, 2.0},
        {8, "Medium Dot", Qt::DotLine, 2.0},
        {9, "Medium Dash Dot", Qt::DashDotLine, 2.0},
        {10, "Thick Dash", Qt::DashLine, 3.0},
        {charts::NoLine, "None", Qt::NoPen, 0.0},
    };
    return styles;
}

const std::vector<SymbolStyle>& SymbolStyles()
{
    static const std::vector<SymbolStyle> styles = {
        {0, "Plus", QCPScatterStyle::ssPlus, false},
        {1, "Cross", QCPScatterStyle::ssCross, false},
        {2, "Circle", QCPScatterStyle::ssCircle, false},
        {3, "Square", QCPScatterStyle::ssSquare, false},
        {4, "Diamond", QCPScatterStyle::ssDiamond, false},
        {5, "Triangle", QCPScatterStyle::ssTriangle, false},
        {6, "Inverted Triangle", QCPScatterStyle::ssTriangleInverted, false},
        {7, "Star", QCPScatterStyle::ssStar, false},
        {8, "Filled Circle", QCPScatterStyle::ssDisc, true},
        {9, "Filled Square", QCPScatterStyle::ssSquare, true},
        {10, "Filled Diamond", QCPScatterStyle::ssDiamond, true},
        {11, "Filled Triangle", QCPScatterStyle::ssTriangle, true},
        {12, "Circled Plus", QCPScatterStyle::ssPlusCircle, false},
        {charts::NoSymbols, "None", QCPScatterStyle::ssNone, false},
    };
    return styles;
}

const LineStyle& LineStyleOf(int code)
{
    const auto& styles = LineStyles();
    const auto it = std::find_if(styles.begin(), styles.end(),
                                 [code](const LineStyle& s) { return s.code == code; });
    return it != styles.end() ? *it : styles.front();
}

const SymbolStyle& SymbolStyleOf(int code)
{
    const auto& styles = SymbolStyles();
    const auto it = std::find_if(styles.begin(), styles.end(),
                                 [code](const SymbolStyle& s) { return s.code == code; });
    return it != styles.end() ? *it : styles.front();
}

QPen LinePen(int lineCode, const QColor& color)
{
    const LineStyle& style = LineStyleOf(lineCode);
    if (style.pen == Qt::NoPen)
        return QPen(Qt::NoPen);
    QPen pen(color, style.width, style.pen);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

double SymbolPixels(int pointSize)
{
    switch (pointSize) {
    case charts::PointLarge: return 9.0;
    case charts::PointSmall: return 4.0;
    default: return 6.0;
    }
}

QCPScatterStyle Symbol(int pointCode, const QColor& color, int pointSize)
{
    const SymbolStyle& style = SymbolStyleOf(pointCode);
    if (style.shape == QCPScatterStyle::ssNone)
        return QCPScatterStyle(QCPScatterStyle::ssNone);
    const QPen pen(color, 1.2);
    return QCPScatterStyle(style.shape, pen, style.filled ? QBrush(color) : QBrush(Qt::NoBrush),
                           SymbolPixels(pointSize));
}

namespace {

double bySize(int textSize, double large, double medium, double small)
{
    switch (textSize) {
    case charts::TextLarge: return large;
    case charts::TextSmall: return small;
    default: return medium;
    }
}

} // namespace

double MainTitlePoints(int textSize)
{
    return bySize(textSize, 15.0, 13.0, 11.0);
}

double SubTitlePoints(int textSize)
{
    return bySize(textSize, 12.0, 10.5, 9.0);
}

double LabelPoints(int textSize)
{
    return bySize(textSize, 11.0, 9.5, 8.0);
}

QFont ChartFont(const charts::FontSpec& spec, double points)
{
    QFont font(QString::fromStdString(spec.face));
    font.setPointSizeF(points);
    font.setBold(spec.bold);
    font.setItalic(spec.italic);
    font.setUnderline(spec.underline);
    return font;
}

} // namespace zarvion::gui
