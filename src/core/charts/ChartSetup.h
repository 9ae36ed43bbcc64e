#pragma once
// The chart set-up dialog without its widgets: the fields it shows, their validation in one
// pass with the messages the user sees, and apply and cancel through a stored copy.

#include "charts/ChartDocument.h"
#include "shell/Message.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace zarvion::charts {

//! The axis options: "Auto", "Linear", "Log".
enum AxisMode : int { AxisAuto = 0, AxisLinear = 1, AxisLog = 2 };

//! Tabs of the dialog.
enum SetupTab : int { AxesTab = 0, TextTab = 1, ColorsTab = 2, SubsetsTab = 3 };

inline constexpr const char* MonochromeHint = "Monochrome style, the color functions are disabled.";
inline constexpr const char* MonochromeCaption = "Monochrome style";
inline constexpr const char* FontSizeHint = "The function 'Size' on the Font Dialog Window "
                                            "is disabled. Use the options on the top of this page.";
inline constexpr const char* FontSample = "AaBbCcDdEe";

struct AxisFields {
    bool show = true; //!< the axis settings apply
    int mode = AxisAuto;
    std::string maximum;
    std::string minimum;
    std::string majorTicks;
    std::string minorTicks;
    int digits = 3; //!< significant digits of the axis numbers
};

struct SubsetRow {
    bool show = true;
    std::string label;
    int pointType = 0;
    int lineType = 0;
    Color color = 0;
};

//! Everything the dialog shows.
struct SetupFields {
    AxisFields x;
    AxisFields y;
    int textSize = TextMedium;
    std::array<FontSpec, 3> fonts{};
    ChartColors colors;
    Color annotationColor = 0;
    Color selectionColor = 0;
    std::vector<SubsetRow> subsets;
    int pointSize = PointMedium;
    bool monochrome = false; //!< colour functions are disabled
};

//! A refused field: the tab to show, the box to focus and the message.
struct SetupFault {
    int tab = AxesTab;
    std::string field; //!< "Text2" ... "Text9"
    shell::Message message;
};

//! The caption of the dialog for a chart.
std::string SetupCaption(const std::string& chartCaption);
//! The number pattern of an axis with n significant digits: "0." + (n - 1) zeros + "E+00".
std::string OutputFormat(int digits);
//! Significant digits of a pattern made by OutputFormat; `fallback` for any other pattern.
int DigitsOfPattern(const std::string& pattern, int fallback = 3);
//! The fields as the dialog opens on a chart.
SetupFields FillSetupFields(const ChartDocument& chart);
//! Validation of ToPlotOk: X when shown, then Y when shown, stopping at the first fault.
std::optional<SetupFault> ValidateSetup(const SetupFields& fields);
//! Writes validated fields to the chart (monochrome colours go to ColorBackup).
void ApplySetup(ChartDocument& chart, const SetupFields& fields);

//! One opening of the dialog: stores the chart in colour when it opens, applies on OK and
//! Apply, and restores the stored copy on Cancel.
class ChartSetupSession {
public:
    explicit ChartSetupSession(ChartDocument& chart);

    SetupFields fields;

    struct Outcome {
        bool ok = false;
        std::optional<SetupFault> fault;
    };
    //! Validates and, if that passed, applies. The stored copy isn't renewed.
    Outcome ToPlotOk();
    //! Goes back to the chart as it was when the dialog opened, monochrome again if it was.
    void Cancel();

private:
    ChartDocument& m_chart;
    std::string m_stored;
    bool m_wasMonochrome = false;
    bool m_mustSave = false;
};

} // namespace zarvion::charts
