#pragma once
// The two readers of a solved file's results, MenuForm's and SOL_RESX's, into a ResultSet.
//
//   OPEN_Rich(fileName, form, constants, outcome)      reads the file
//   ReadResultsText(text, fileName, form, constants, outcome)   the same on text in memory
//
// A refusal sets outcome.failed and carries its exact message (warning, "ZARVION"); the
// CheckOutputFormat refusal is marked to go through the common reporter. A broken input side
// throws zarvion::ParseError, any other fault zarvion::Error; the caller reports both.
//
// Rows come back rebuilt: column c (0 time, 1 temperature, 2 density "Ro", i + 2 species i)
// is the 16 characters from 17c + 1; a species value's sign stands one character to the left
// of its window, so views see magnitudes while the density here sees the sign.

#include <filesystem>
#include <string>

#include "postprocessor/ResultSet.h"
#include "shell/Message.h"

namespace zarvion::postprocessor {

//! The session constants the density needs.
struct PhysicalConstants {
    double AvogadroNumber = 6.02214076e23; //!< [1/mol]
    double BoltzmannConstant = 1.380649e-16; //!< [erg/K]
    double AtmosphereDyn = 1013250.0;      //!< one atmosphere [dyn/cm^2]
};

//! Avogadro x Boltzmann / atmosphere [cm^3 atm/(mol K)].
double GasConstantDensity(const PhysicalConstants& constants);

//! Which window's reader: they differ in messages, the "$$" rule, the step column and the
//! rounding of the time span.
enum class ReaderForm { MenuForm, SOL_RESX };

//! What a read answers besides the set.
struct ReadOutcome {
    bool failed = false;
    shell::Message message;        //!< the refusal, when failed
    bool viaReportError = false;   //!< the refusal goes through the common reporter
    std::string caption;           //!< "Solver File  " + name or "Solver " + name
    bool statisticsFound = false;  //!< "Statistics" in the text
    bool errorFound = false;       //!< "Error" in the text
};

//! Reads a solver file with its results. fileName is used in the messages as given; the
//! caption takes its last path component. The read-out text of the window is fileText.
ResultSet OPEN_Rich(const std::filesystem::path& fileName, ReaderForm form,
                    const PhysicalConstants& constants, ReadOutcome& outcome);

//! The same over the file's text already in memory. A fileName beginning with "$" names a
//! temporary run: the caption takes the rest of it.
ResultSet ReadResultsText(const std::string& text, const std::string& fileName, ReaderForm form,
                          const PhysicalConstants& constants, ReadOutcome& outcome);

//! Physical lines of one record: 50 species a line (49 -> 1, 50 -> 1, 51 -> 2, 100 -> 2,
//! 101 -> 3).
int PhysicalLinesPerRecord(int speciesCount);

} // namespace zarvion::postprocessor
