#pragma once
// Solver files for the reduction and comparison tests: read from tests/data, edited line by
// line where a case needs it, written with CR LF into a fresh temporary folder.

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "shell/TextFile.h"

namespace zarvion::testing {

using Lines = std::vector<std::string>;

inline Lines DataLines(const std::string& name)
{
    return shell::ReadLines(std::filesystem::path(ZARVION_SOURCE_DIR) / "tests/data" / name);
}

//! Nine hydrogen-oxygen species, one reaction of every record kind the solver file knows
//! (reaction 3 has the partners H2, H2O and O2), six result rows of a made-up burn.
inline Lines SmallSolved()
{
    return DataLines("reduction/small_solved.txt");
}

//! The 0-based index of the first line equal to text (lines.size() when there is none).
inline std::ptrdiff_t LineOf(const Lines& lines, const std::string& text)
{
    return std::find(lines.begin(), lines.end(), text) - lines.begin();
}

//! The small set without its results section: the file ends with the reactions' END.
inline Lines SmallBare()
{
    Lines l = SmallSolved();
    l.erase(l.begin() + LineOf(l, "!$Results   $$") - 1, l.end());
    return l;
}

//! Keeps the first count result records (one line each for up to 50 species).
inline Lines FirstRecords(Lines l, int count)
{
    l.erase(l.begin() + LineOf(l, "!$Results   $$") + 2 + count, l.begin() + LineOf(l, "!$END"));
    return l;
}

inline std::filesystem::path WriteLines(const std::filesystem::path& path, const Lines& lines)
{
    std::ofstream(path, std::ios::binary) << shell::JoinCrLf(lines);
    return path;
}

//! A fresh empty folder under the system temporary folder.
inline std::filesystem::path FreshFolder(const std::string& name)
{
    const auto dir = std::filesystem::temp_directory_path() / ("zarvion_test_" + name);
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

inline std::tm ClockAt(int year, int month, int day, int hour, int minute, int second)
{
    std::tm t{};
    t.tm_year = year - 1900, t.tm_mon = month - 1, t.tm_mday = day;
    t.tm_hour = hour, t.tm_min = minute, t.tm_sec = second;
    return t;
}

} // namespace zarvion::testing
