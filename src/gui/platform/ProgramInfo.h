#pragma once
// The program's name and version as the user sees them: splash, about box, --version.

namespace zarvion::gui {

inline constexpr const char* ProgramName = "ZARVION-II";
inline constexpr const char* ProgramFullName = "Program for Chemical Kinetics of Gas Phase Reactions";
inline constexpr const char* ProgramVersion = "3.7";

} // namespace zarvion::gui
