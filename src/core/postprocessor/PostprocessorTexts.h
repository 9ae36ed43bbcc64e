#pragma once
// Captions of the post-processor window, kept here so that the window and the command line
// show the same words. The window lays them out; the texts themselves are fixed.

#include <array>

namespace zarvion::postprocessor::texts {

//! Tab pages, in order.
inline constexpr std::array<const char*, 6> Tabs{"General", "Mean Parameters", "Species",
                                                 "Derivative", "Reactions", "Tips"};

// "General"
inline constexpr const char* TimeInterval = "Time interval";
inline constexpr const char* ResetCommand = "Reset";
inline constexpr const char* ShowEveryCaption = "Show every   ";
inline constexpr const char* NumberOfPoints = "The number of points";
inline constexpr const char* TimeAxis = "Time Axis";
inline constexpr const char* LogX = "Log10(X)";
inline constexpr const char* LogY = "Log10(Y)";
inline constexpr const char* ConcentrationUnits = "Concentration Units";
inline constexpr std::array<const char*, 2> ConcentrationUnitOptions{"mol/cm^3", "1/cm^3"};
inline constexpr const char* ShowFile = "Show File";

// "Mean Parameters"
inline constexpr const char* EnergyUnits = "H and Cp Units";
inline constexpr std::array<const char*, 2> EnergyUnitOptions{"J - mol - K", "cal - mol - K"};
inline constexpr const char* ViewCommand = "View";

// "Species": grid columns with their titles, the name-length options.
inline constexpr std::array<const char*, 3> SpeciesColumns{"Num", "Species", "MFINIT"};
inline constexpr const char* InitialMoleFractionTitle = "Initial mole fraction";
inline constexpr const char* MaximumNameLength = "Maximum name length";
inline constexpr std::array<const char*, 2> NameLengthOptions{"12 Symbols", "16 Symbols"};

// "Derivative" and "Reactions"
inline constexpr std::array<const char*, 3> ProductionColumns{"Num", "Reaction", "INTEGRAL"};
inline constexpr const char* IntegralTitle = "Integral";
inline constexpr std::array<const char*, 2> ReactionColumns{"Num", "Reaction"};
inline constexpr const char* PrepareCommand = "Prepare";
inline constexpr const char* ImportantCommand = "Important";
inline constexpr const char* ShowCommand = "Show";
inline constexpr const char* LabelsCheck = "Labels";
inline constexpr const char* CopyTable = "Copy Table";
inline constexpr const char* PlotDerivative = "Plot Derivative";

// "Tips"
inline constexpr const char* TipsTitle = "Plotting Functions";

//! Captions of the data view windows.
inline constexpr const char* SpeciesView = "Species";
inline constexpr const char* MeanParametersView = "Mean Parameters";
inline constexpr const char* ChartDataView = "Chart Data";

} // namespace zarvion::postprocessor::texts
