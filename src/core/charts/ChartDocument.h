#pragma once
// Everything one chart is: curves, titles, annotation slots, axis settings, fonts, colours and
// the window's own flags. The chart view draws from it; every rule acts on it.

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zarvion::charts {

//! The mark of a point without a value, in every chart table.
inline constexpr double NullValue = -99999.0;
//! The largest number of subsets that data views and export accept.
inline constexpr int MaxSubsets = 10;
//! Annotation slots 0 to 300.
inline constexpr int AnnotationSlotCount = 301;
//! Last slot of the free-slot search for user annotations.
inline constexpr int LastUserAnnotationSlot = 100;
//! First overflow slot: subset k uses 101 + 2k and 102 + 2k.
inline constexpr int FirstOverflowSlot = 101;
//! Slot that marks a histogram chart.
inline constexpr int HistogramSlot = 300;
inline constexpr const char* EmptySlotText = "Empty";
inline constexpr const char* HistogramText = "Histogram";
//! Line code that hides a subset's line, point code that hides its symbols.
inline constexpr int NoLine = 4444;
inline constexpr int NoSymbols = 73;
//! Line and point codes of a thick line without symbols.
inline constexpr int ThickLine = 6;
//! Plotting methods: a line chart and histogram bars.
inline constexpr int LineMethod = 0;
inline constexpr int HistogramMethod = 3;
//! Reaction equations longer than this go partly into the overflow slots.
inline constexpr std::size_t ReactionLabelPiece = 48;

inline constexpr const char* DefaultMainTitle = "Main Title";
inline constexpr const char* DefaultSubTitle = "SubTitle";
inline constexpr const char* DefaultXAxisLabel = "X-Axis";
inline constexpr const char* DefaultYAxisLabel = "Y-Axis";

//! A colour as 0xRRGGBB.
using Color = std::uint32_t;

//! The c-th of the sixteen standard colours (0 black ... 7 white, 8 grey ... 15 bright white);
//! indices outside 0-15 give black.
Color StandardColor(int index);

//! One curve.
struct Subset {
    std::string label;
    Color color = 0;
    int pointType = 0;    //!< symbol code; NoSymbols hides the symbols
    int lineType = 0;     //!< line code; NoLine hides the line
    bool show = true;     //!< drawn at all
    bool legend = true;   //!< has a legend entry
    std::vector<double> x; //!< NullValue marks a point without a value
    std::vector<double> y;

    bool operator==(const Subset&) const = default;
};

//! One annotation slot; a free slot has the text "Empty" and position NullValue.
struct Annotation {
    std::string text = EmptySlotText;
    double x = NullValue;
    double y = NullValue;
    int type = 0;
    Color color = 0;

    bool isFree() const;
    bool operator==(const Annotation&) const = default;
};

//! Scale of one axis. manualScale 0 means automatic bounds, 1 the manual bounds below.
struct AxisSettings {
    int manualScale = 0;
    double manualMin = 0.0;
    double manualMax = 0.0;
    double majorTick = 0.0;
    double minorTick = 0.0;
    bool logScale = false;
    std::string numberPattern; //!< empty: the view's own number format
    double nullData = NullValue;

    bool operator==(const AxisSettings&) const = default;
};

struct FontSpec {
    std::string face = "Arial";
    bool bold = false;
    bool italic = false;
    bool underline = false;

    bool operator==(const FontSpec&) const = default;
};

//! Font groups.
enum FontGroup : int { MainTitleFont = 0, SubTitleFont = 1, LabelFont = 2 };

//! The five chart colours in the order ColorBackup keeps them.
struct ChartColors {
    Color deskForeground = 0x000000;
    Color deskBackground = 0xFFFFFF;
    Color graphForeground = 0x000000;
    Color graphBackground = 0xFFFFFF;
    Color shadow = 0x808080;

    bool operator==(const ChartColors&) const = default;
};

//! Text sizes and point sizes as the chart codes them.
enum TextSize : int { TextLarge = 0, TextMedium = 1, TextSmall = 2 };
enum PointSize : int { PointSmall = 0, PointMedium = 1, PointLarge = 2 };

//! What a chart file keeps: every property the chart view draws from.
struct ChartProperties {
    std::vector<Subset> subsets;
    int points = 0; //!< every subset has this many X and Y values
    std::string mainTitle;
    std::string subTitle;
    std::string xAxisLabel;
    std::string yAxisLabel;
    std::vector<Annotation> annotations = std::vector<Annotation>(AnnotationSlotCount);
    AxisSettings xAxis;
    AxisSettings yAxis;
    int textSize = TextMedium;
    int pointSize = PointMedium;
    std::array<FontSpec, 3> fonts{};
    ChartColors colors;
    int plottingMethod = LineMethod;
    std::vector<std::vector<std::string>> pointLabels; //!< tick labels of a histogram (row, column)
    bool markDataPoints = true;
    bool gridLines = false;

    bool operator==(const ChartProperties&) const = default;
};

//! A chart: its properties plus the flags of its window.
class ChartDocument : public ChartProperties {
public:
    ChartDocument();

    std::string ChartPath; //!< full path of the chart file; empty if never saved
    bool mustSave = false;
    bool hasFile = false;

    //! 1-based like the slots it mirrors: slots 1-5 the chart colours, 6 the annotation
    //! colour, 7 on one colour a subset. Meaningful while the chart is monochrome.
    std::vector<Color> ColorBackup;
    bool monochrome = false;

    struct Selection {
        bool active = false;
        int index = 0;
        Color color = 0; //!< colour the subset had before it was selected
    } selected;

    int subsetCount() const { return static_cast<int>(subsets.size()); }

    //! Marks the chart changed.
    void MustSave() { mustSave = true; }
    //! True when the chart shows its own colours (not monochrome).
    bool COLORBOOLTT() const { return !monochrome; }
    //! Stores the colours in ColorBackup and paints the chart black on white.
    void Monochr();
    //! Writes the colours back from ColorBackup.
    void PlotCol();

    //! Ends a subset selection: the subset gets back the colour it had.
    void cancelSelection();

    //! Resizes every subset to `count` points, padding with NullValue.
    void setPoints(int count);
    //! Slot of `ColorBackup` (1-based); throws when out of range.
    Color& colorBackupSlot(int slot);

    //! The properties with the true colours, as a chart file keeps them: colour values of a
    //! monochrome chart come from ColorBackup, a selected subset keeps its own colour.
    ChartProperties trueColorProperties() const;
};

//! Source of random numbers in [0, 1) for the random styles; tests inject a fixed sequence.
using RandomSource = std::function<double()>;
//! A seeded generator for the program's own use.
RandomSource DefaultRandomSource();

//! The random style rule: colour index from r (skipping white and grey), code from r2.
int RandomColorIndex(double r);
int RandomPointCode(double r);

//! True when a value is drawn: finite and not NullValue.
bool IsValue(double v);

//! Text helpers for the reaction labels of the chart.
//! A label "R" + number + "," + text, the comma at 1-based position 1 to 6 of the trimmed label.
bool IsReactionLabel(const std::string& label);
//! Cuts an equation into the two overflow pieces: first 48 characters and the rest, or the
//! whole and "Empty".
std::pair<std::string, std::string> SplitReactionTail(const std::string& text);
//! Writes a subset's overflow pair into slots 101 + 2k and 102 + 2k.
void SetOverflow(ChartProperties& chart, int subset, const std::string& piece1,
                 const std::string& piece2);
//! The overflow pieces of subset k that are not "Empty", joined.
std::string OverflowTail(const ChartProperties& chart, int subset);

} // namespace zarvion::charts
