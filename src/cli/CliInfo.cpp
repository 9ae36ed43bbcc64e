// zarvion-cli info: the input side of a solver file.
//   zarvion-cli info FILE
// Output: "key<TAB>value" lines for the counts and header values, then an empty line and the
// species table, then an empty line and the reaction table. Tables are tab-separated with one
// header line:
//   species  name  formula  weight  initial mole fraction  composition
//   reaction  text  ints  reals
// "ints" are the 26 integer slots and "reals" the 21 slots read from the file, each list
// separated by single blanks. Numbers are written with up to 15 significant digits.

#include "CliCommand.h"

#include "shell/Error.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileReader.h"

#include <iostream>
#include <memory>

namespace zarvion::cli {
namespace {

using shell::ShortestText;

int runInfo(const std::string& file)
{
    const solverfile::Mechanism m = solverfile::ReadMechanism(file);
    const auto& h = m.header;
    std::ostream& out = std::cout;
    out << "species\t" << h.SpeciesCount << "\n"
        << "reactions\t" << h.ReactionCount << "\n"
        << "pressure atm\t" << ShortestText(h.pressureAtm) << "\n"
        << "temperature mode\t" << h.TemperatureMode << "\n"
        << "initial temperature K\t" << ShortestText(h.initialTemperature) << "\n"
        << "minimal temperature K\t" << ShortestText(h.minTemperature) << "\n"
        << "maximal temperature K\t" << ShortestText(h.maxTemperature) << "\n"
        << "initial time s\t" << ShortestText(h.initialTime) << "\n"
        << "final time s\t" << ShortestText(h.finalTime) << "\n"
        << "initial step s\t" << ShortestText(h.initialStep) << "\n"
        << "maximum steps\t" << h.maxSteps << "\n"
        << "relative tolerance\t" << ShortestText(h.relativeTolerance) << "\n"
        << "absolute tolerance\t" << ShortestText(h.absoluteTolerance) << "\n"
        << "output every\t" << h.outputEvery << "\n"
        << "gas constant energy\t" << ShortestText(h.GasConstantEnergy) << "\n"
        << "gas constant conc\t" << ShortestText(h.GasConstantConc) << "\n"
        << "elements\t";
    for (std::size_t k = 0; k < m.elementNames.size(); ++k) {
        out << (k ? " " : "") << m.elementNames[k];
    }
    out << "\n\nspecies\tname\tformula\tweight\tinitial mole fraction\tcomposition\n";
    for (std::size_t i = 0; i < m.speciesNames.size(); ++i) {
        out << i + 1 << "\t" << m.speciesNames[i] << "\t" << m.MolFormula[i] << "\t"
            << ShortestText(m.thermo[i][15]) << "\t" << ShortestText(m.initialMoleFractions[i])
            << "\t" << shell::Trim(m.composition[i]) << "\n";
    }
    out << "\nreaction\ttext\tints\treals\n";
    for (std::size_t j = 0; j < m.reactions.size(); ++j) {
        const auto& r = m.reactions[j];
        out << j + 1 << "\t" << r.text << "\t";
        for (int k = 1; k <= 26; ++k) {
            out << (k > 1 ? " " : "") << r.ints[k];
        }
        out << "\t";
        for (int k = 1; k <= 21; ++k) {
            out << (k > 1 ? " " : "") << ShortestText(r.reals[k]);
        }
        out << "\n";
    }
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto file = std::make_shared<std::string>();
    CLI::App* cmd = app.add_subcommand(
        "info",
        "Print the input side of a solver file: key<TAB>value lines (species, reactions, "
        "header values, elements), an empty line, the table 'species name formula weight "
        "initial mole fraction composition', an empty line, the table 'reaction text ints "
        "reals' (26 integer and 21 real slots, blank-separated)");
    cmd->add_option("file", *file, "solver file")->required();
    cmd->callback([file, &exitCode] {
        try {
            exitCode = runInfo(*file);
        } catch (const zarvion::Error& e) {
            throw CommandFailure{e.what()};
        }
    });
});

} // namespace
} // namespace zarvion::cli
