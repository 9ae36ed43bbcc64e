#include "charts/ChartDocument.h"

#include "shell/Error.h"
#include "shell/TextFormat.h"

#include <chrono>
#include <memory>
#include <cmath>
#include <random>

namespace zarvion::charts {

namespace {

constexpr std::array<Color, 16> StandardColors = {
    0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0,
    0x808080, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF,
};

constexpr Color Black = 0x000000;
constexpr Color White = 0xFFFFFF;

// Rounds half to even, like the program's integer conversions.
int roundHalfEven(double v)
{
    return static_cast<int>(std::nearbyint(v));
}

} // namespace

Color StandardColor(int index)
{
    if (index < 0 || index >= static_cast<int>(StandardColors.size())) {
        return Black;
    }
    return StandardColors[static_cast<std::size_t>(index)];
}

bool Annotation::isFree() const
{
    return x == NullValue && y == NullValue && text == EmptySlotText;
}

ChartDocument::ChartDocument() = default;

void ChartDocument::setPoints(int count)
{
    points = count < 0 ? 0 : count;
    for (auto& s : subsets) {
        s.x.resize(static_cast<std::size_t>(points), NullValue);
        s.y.resize(static_cast<std::size_t>(points), NullValue);
    }
}

void ChartDocument::cancelSelection()
{
    if (!selected.active) {
        return;
    }
    selected.active = false;
    if (selected.index >= 0 && selected.index < subsetCount()) {
        subsets[selected.index].color = selected.color;
    }
}

Color& ChartDocument::colorBackupSlot(int slot)
{
    if (slot < 1 || slot > static_cast<int>(ColorBackup.size())) {
        throw Error("colour backup slot " + std::to_string(slot) + " out of range");
    }
    return ColorBackup[static_cast<std::size_t>(slot - 1)];
}

void ChartDocument::Monochr()
{
    if (monochrome) {
        return;
    }
    ColorBackup.assign(static_cast<std::size_t>(subsetCount() + 6), Black);
    ColorBackup[0] = colors.deskForeground;
    ColorBackup[1] = colors.deskBackground;
    ColorBackup[2] = colors.graphForeground;
    ColorBackup[3] = colors.graphBackground;
    ColorBackup[4] = colors.shadow;
    ColorBackup[5] = annotations[0].color;
    for (int k = 0; k < subsetCount(); ++k) {
        Color own = subsets[k].color;
        if (selected.active && selected.index == k) {
            own = selected.color;
            selected.color = Black;
        } else {
            subsets[k].color = Black;
        }
        ColorBackup[static_cast<std::size_t>(6 + k)] = own;
    }
    colors.deskForeground = Black;
    colors.deskBackground = White;
    colors.graphForeground = Black;
    colors.graphBackground = White;
    colors.shadow = Black;
    for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
        annotations[slot].color = Black;
    }
    monochrome = true;
}

void ChartDocument::PlotCol()
{
    if (!monochrome) {
        return;
    }
    ColorBackup.resize(static_cast<std::size_t>(subsetCount() + 6), Black);
    colors.deskForeground = ColorBackup[0];
    colors.deskBackground = ColorBackup[1];
    colors.graphForeground = ColorBackup[2];
    colors.graphBackground = ColorBackup[3];
    colors.shadow = ColorBackup[4];
    for (int slot = 0; slot <= LastUserAnnotationSlot; ++slot) {
        annotations[slot].color = ColorBackup[5];
    }
    for (int k = 0; k < subsetCount(); ++k) {
        const Color own = ColorBackup[static_cast<std::size_t>(6 + k)];
        if (selected.active && selected.index == k) {
            selected.color = own;
        } else {
            subsets[k].color = own;
        }
    }
    monochrome = false;
}

ChartProperties ChartDocument::trueColorProperties() const
{
    ChartDocument copy = *this;
    copy.PlotCol();
    if (copy.selected.active && copy.selected.index >= 0 &&
        copy.selected.index < copy.subsetCount()) {
        copy.subsets[copy.selected.index].color = copy.selected.color;
    }
    return static_cast<const ChartProperties&>(copy);
}

RandomSource DefaultRandomSource()
{
    auto engine = std::make_shared<std::mt19937>(static_cast<std::mt19937::result_type>(
        std::chrono::steady_clock::now().time_since_epoch().count()));
    return [engine]() { return std::uniform_real_distribution<double>(0.0, 1.0)(*engine); };
}

int RandomColorIndex(double r)
{
    int c = roundHalfEven(8.0 * r);
    if (c == 7) {
        c = 9;
    } else if (c == 8) {
        c = 12;
    }
    return c;
}

int RandomPointCode(double r)
{
    return roundHalfEven(10.0 * r);
}

bool IsValue(double v)
{
    return std::isfinite(v) && v != NullValue;
}

bool IsReactionLabel(const std::string& label)
{
    const std::string t = shell::Trim(label);
    if (t.empty() || t[0] != 'R') {
        return false;
    }
    const auto comma = t.find(',');
    if (comma == std::string::npos || comma + 1 > 6) {
        return false;
    }
    return shell::IsNumeric(t.substr(1, comma - 1));
}

std::pair<std::string, std::string> SplitReactionTail(const std::string& text)
{
    if (text.size() > ReactionLabelPiece) {
        return {text.substr(0, ReactionLabelPiece), text.substr(ReactionLabelPiece)};
    }
    return {text, EmptySlotText};
}

void SetOverflow(ChartProperties& chart, int subset, const std::string& piece1,
                 const std::string& piece2)
{
    const int slot1 = FirstOverflowSlot + 2 * subset;
    if (subset < 0 || slot1 + 1 >= HistogramSlot) {
        return; // no room beside the histogram mark
    }
    chart.annotations[slot1].text = piece1;
    chart.annotations[slot1 + 1].text = piece2;
}

std::string OverflowTail(const ChartProperties& chart, int subset)
{
    const int slot1 = FirstOverflowSlot + 2 * subset;
    if (subset < 0 || slot1 + 1 >= HistogramSlot) {
        return {};
    }
    std::string tail;
    for (int slot : {slot1, slot1 + 1}) {
        if (chart.annotations[slot].text != EmptySlotText) {
            tail += chart.annotations[slot].text;
        }
    }
    return tail;
}

} // namespace zarvion::charts
