#pragma once
// The results section appended behind the reactions' closing "END":
//
//   (one empty line)
//   !$Results   $$
//   head record, data records          one logical row per stored time point
//   !$END
//   Statistics
//   free lines
//
// or, for a failed run, the rows so far, a line beginning "ERROR" with the reason and lines that
// explain, and no "!$END". Every line ends in CR LF.
//
// Record geometry (columns 1-based): 1-7 row counter, 8-23 time, 25-40 temperature, then for
// each of the first 50 species one blank and a 16-character field, then one blank and the step
// field (the last 17 characters). Species 51 and up follow on further lines of 50: 40 blanks,
// then one blank and a field each. The head has titles right-aligned in the same fields.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zarvion::solverfile {

//! Width of a numeric field and of a field with its leading blank.
inline constexpr int ResultFieldWidth = 16;
inline constexpr int ResultColumnWidth = 17;
//! Species fields on one physical line of a record.
inline constexpr int SpeciesPerResultLine = 50;

//! One 16-character field: sign (blank or "-"), 1 digit, ".", 9 decimals, "E", exponent sign,
//! two digits. Magnitudes below 1E-99 are written as zero; values that do not fit (1E+100 and
//! above, infinities, NaN) are 16 stars.
std::string FormatResultField(double value);

//! The head record's physical lines, each without line end; names longer than 16 characters
//! throw zarvion::Error.
std::vector<std::string> FormatHeadRecord(std::span<const std::string> speciesNames);

//! A data record's physical lines, each without line end. counter is the row number (1 up).
std::vector<std::string> FormatDataRecord(std::int64_t counter, double time, double temperature,
                                          std::span<const double> massFractions, double step);

//! The text of a file up to and including its line number endLine (1-based) with the line's end;
//! a last line without a line end gets CR LF. Used to drop an old results section.
std::string InputSideText(std::string_view fileText, int endLine);

//! Appends a results section to a solver file, flushing every record so that a run that is
//! killed leaves a readable partial table.
class ResultsWriter {
public:
    //! Removes whatever stands behind line reactionsEndLine (by an atomic rewrite, only when
    //! something does), then appends the empty line, the keyword line and the head record.
    //! Throws zarvion::Error when the file cannot be rewritten or opened.
    ResultsWriter(const std::filesystem::path& file, int reactionsEndLine,
                  std::vector<std::string> speciesNames);

    //! Appends one data record; step is the time since the previous row (0 on the first).
    void writeRow(double time, double temperature, std::span<const double> massFractions,
                  double step);

    //! Closes a successful run: "!$END", "Statistics", then the given lines.
    void finish(const std::vector<std::string>& statistics);

    //! Closes a failed run: "ERROR " + reason, then the explanation lines; no "!$END".
    void fail(const std::string& reason, const std::vector<std::string>& explanation);

    std::int64_t rowsWritten() const { return m_rows; }

private:
    void put(const std::vector<std::string>& lines);

    std::filesystem::path m_file;
    std::vector<std::string> m_names;
    std::ofstream m_out;
    std::int64_t m_rows = 0;
};

} // namespace zarvion::solverfile
