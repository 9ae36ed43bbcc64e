#pragma once
// What the user does on a chart, without the widgets: subset selection, value read-out,
// annotations, in-place text edits, sizes, legend and axes. The chart view forwards its
// events here and draws the result.

#include "charts/ChartDocument.h"
#include "shell/Message.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

namespace zarvion::charts {

//! What the in-place text box is editing.
enum class EditKind { None, MainTitle, SubTitle, XLabel, YLabel, SubsetLabel, NewAnnotation, Annotation };

//! Hint word shown beside the text box for each kind of edit.
const char* EditHint(EditKind kind);

struct TextBoxState {
    bool visible = false;
    bool okButtonVisible = false;
    std::string text;
    std::string hint;
    EditKind kind = EditKind::None;
    int slot = 0; //!< annotation slot or subset index under edit
};

//! The two value boxes with their format lists.
struct ReadoutState {
    bool enabled = false;
    bool visible = false;
    std::array<std::string, 2> xEntries{};
    std::array<std::string, 2> yEntries{};
    int xFormatIndex = 0;
    int yFormatIndex = 0;
    std::string xText;
    std::string yText;
};

//! Cursor modes of the chart: none and the two point cursors.
enum CursorMode : int { CursorNone = 0, CursorSquare = 2, CursorCross = 3 };

//! The interaction state of one chart window.
struct ChartWindowState {
    bool editItemsEnabled = false; //!< Cut, Copy, Delete and their toolbar buttons
    TextBoxState textBox;
    ReadoutState readout;
    int cursorMode = CursorNone;
    int cursorSubset = -1; //!< -1: no cursor yet
    int cursorPoint = 0;
    int lastCursorSubset = -1;
    bool zoomPermitted = true;
    bool clickPending = false; //!< first click of a possible double click, for 500 ms
    int clickedSubset = -1;
};

//! Interval after which a first click no longer counts towards a double click [ms].
inline constexpr int DoubleClickWindowMs = 500;

//! A click on a data point: sets a point cursor if none is on, moves it to the point and
//! starts the double-click window (the view starts its 500 ms timer).
void DataPointClicked(ChartWindowState& state, int subset, int point);
//! The double-click window ended.
void ClickWindowElapsed(ChartWindowState& state);
//! A double click on a data point: selects the subset when it is the one first clicked.
//! Returns true when a selection happened.
bool DataPointDoubleClicked(ChartDocument& chart, ChartWindowState& state, int subset);

//! The process-wide colour of a selected subset.
Color& SelectionColor();

//! Selects a subset for cut and copy: paints it in the selection colour and opens its label
//! for editing.
void SubSetSelect(ChartDocument& chart, ChartWindowState& state, int subset);
//! Ends a selection, giving the subset back its colour.
void SubSetSelCancel(ChartDocument& chart, ChartWindowState& state);

//! The two X read-out entries: "X = " and "10^X = " (or "10^X = Overflow").
std::array<std::string, 2> XVAL(double x);
//! The two Y read-out entries.
std::array<std::string, 2> YVAL(double y);

//! Shows the value read-out; places the cursor on subset 0, point 1 if there is none.
void XYShowSub(ChartDocument& chart, ChartWindowState& state);
//! Hides the value read-out and turns the cursor off.
void XYHIDESub(ChartWindowState& state);
//! Clears the read-out and enables or disables its controls together.
void TxtBoxEn(ChartWindowState& state, bool enable);
//! The cursor moved: refreshes the read-out texts at the cursor's point.
void CursorMoved(const ChartDocument& chart, ChartWindowState& state, int subset, int point);
//! A format chosen in one of the lists.
void ChooseXFormat(ChartWindowState& state, int index);
void ChooseYFormat(ChartWindowState& state, int index);

inline constexpr const char* TooManyAnnotationsMessage =
    "The number of annotations is greater than 1000. The annotation cannot be created.";

//! The first free user slot 0-100, or -1.
int FindFreeAnnotationSlot(const ChartProperties& chart);
//! Middle of an axis: the manual bounds when set, else the range of the values.
double AxisMiddle(const ChartProperties& chart, bool xAxis);
//! Writes a new annotation at `position` (data units) or the middle of the axes; an empty
//! text does nothing. Returns the message when no slot is free.
shell::Message TextAnnotationsNew(ChartDocument& chart, const std::string& text,
                                  std::optional<std::pair<double, double>> position, int type);
//! Writes an edited annotation; an emptied text frees the slot.
void TextAnnotationsOld(ChartDocument& chart, int slot, const std::string& text);
//! Writes a subset's label.
void SubsetLab(ChartDocument& chart, int subset, const std::string& text);
//! Commits the in-place edit with the box's text (Enter).
shell::Message CommitEdit(ChartDocument& chart, ChartWindowState& state, int newAnnotationType = 0,
                          std::optional<std::pair<double, double>> position = std::nullopt);
//! The Delete key on a clicked annotation or title; the subtitle goes back to `defaultSubtitle`.
void DeleteClickedText(ChartDocument& chart, EditKind kind, int slot,
                       const std::string& defaultSubtitle);

//! Fills every empty text with its default and turns all legend entries on.
void SHOWALLTEXT(ChartDocument& chart);
//! Sets a subset's label and whether it draws its line and its symbols; a hidden line or
//! symbol is replaced by the code in hand when it is to be drawn again.
void SubsetLinePoints(ChartDocument& chart, int subset, const std::string& label, bool drawLine,
                      bool drawPoints, int lineCode, int pointCode);
void SetTextSize(ChartDocument& chart, int size);
void SetPointSize(ChartDocument& chart, int size);
void SetLegend(ChartDocument& chart, bool show);
//! X and Y manual-scale mode linear (manual bounds) or automatic.
void LineaXY(ChartDocument& chart);
void AUTOXY(ChartDocument& chart);
//! After a zoom: disallowed only when both axes have a bound below 1E-05 in magnitude.
bool ZoomPermitted(const ChartProperties& chart);

} // namespace zarvion::charts
