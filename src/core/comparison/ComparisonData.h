#pragma once
// Loading two solved files side by side: their result lines, their species with marks,
// the merged species table, and the profiles of every species as P/T times mole fraction.

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "shell/Message.h"

namespace zarvion::comparison {

//! What the loader keeps of one file.
struct ComparisonFile {
    std::string path;
    std::vector<std::string> lines;       //!< the whole file, line 1 at [0]
    std::vector<std::string> resultLines; //!< behind the results keyword, up to "!$END"
    double Pressure = 0;                  //!< ahead of "!pressure" [atm]
    bool HasStepMark = false;             //!< the keyword line ends in "$$"
    double Tolerance = 0;                 //!< line 24
    int speciesCount = 0;                 //!< line 10
    //! Row 0 temperature, row k species k: {name, mark "*" or "v"}.
    std::vector<std::array<std::string, 2>> SpeciesList;
    std::vector<double> MolecularWeight;  //!< [k] for species k; [0] unused [g/mol]
    //! ProfileTable[record][column]: 0 time [s], 1 temperature [K], k + 1 species k as
    //! P / T x mole fraction [atm/K].
    std::vector<std::vector<double>> ProfileTable;
    int RecordCount = 0;
};

//! One entry of the merged species table. Absent numbers are std::nullopt.
struct MergedRow {
    std::string name;
    std::string mark1;
    std::string mark2;
    std::optional<int> number1;
    std::optional<int> number2;
};

//! `ExtractVal`: the text ahead of the first occurrence of delimiter, empty when there is none.
std::string ExtractVal(const std::string& text, const std::string& delimiter);

//! `OpenFiles` for file n (1 or 2): reads the file, finds the pressure and the results
//! keyword, keeps the result lines. A refusal message comes back; file is then partly filled.
shell::Message OpenFile(const std::filesystem::path& path, int n, ComparisonFile& file);

//! `SpeciesAARR` for one file: tolerance, species names with marks, molecular weights, and
//! the "v" marks of the targets recorded on line 12. Throws zarvion::Error on a file whose
//! header or species records are cut short.
void ReadSpecies(ComparisonFile& file);

//! The merge of `SpeciesAARR`: file 1's species in order, then file 2's species that file 1
//! lacks (names compared exactly, case counted); row 0 is "Temperature".
std::vector<MergedRow> MergeSpecies(const ComparisonFile& file1, const ComparisonFile& file2);

//! `ConvertToMoleFractions`: builds ProfileTable and RecordCount from the result lines.
void ConvertToMoleFractions(ComparisonFile& file);

//! The loaded pair and their merged table.
struct ComparisonSet {
    ComparisonFile file1;
    ComparisonFile file2;
    std::vector<MergedRow> MergedTable;
};

//! `PrepGrid`: access checks, the check for results, `OpenFiles`, `SpeciesAARR`,
//! `ConvertToMoleFractions`. Returns the first refusal; on refusal set is left empty and
//! failedFile, when given, names the file refused (1 or 2; 0 on success).
shell::Message PrepGrid(const std::filesystem::path& path1, const std::filesystem::path& path2,
                        ComparisonSet& set, int* failedFile = nullptr);

} // namespace zarvion::comparison
