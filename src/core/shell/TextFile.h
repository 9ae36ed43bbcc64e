#pragma once
// Reading text files line by line with either line end, as every reader of the program does.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zarvion::shell {

//! The lines of a text file without their line ends (LF or CR LF; a lone CR inside a line is
//! kept). A final line without a line end counts; a file ending in a line end has no extra
//! empty line. Throws zarvion::Error when the file cannot be read.
std::vector<std::string> ReadLines(const std::filesystem::path& path);

//! The same for text already in memory.
std::vector<std::string> SplitLines(std::string_view text);

//! The whole file as bytes; throws zarvion::Error when it cannot be read.
std::string ReadFile(const std::filesystem::path& path);

//! Joins lines with CR LF after each, the line end of every fixed-format file.
std::string JoinCrLf(const std::vector<std::string>& lines);

} // namespace zarvion::shell
