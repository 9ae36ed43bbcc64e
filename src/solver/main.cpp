// zarvion-solver [FILE]: integrates the problem of a solver file and appends the results.
// Without FILE the path is read from SolverFilePath.txt in the current folder.
// Exit codes: 0 solved, 1 the run ended with an ERROR line, 2 the file could not be used.

#include <CLI/CLI.hpp>

#include <iostream>

#include "shell/Error.h"
#include "solver/SolverRun.h"

int main(int argc, char** argv)
{
    CLI::App app{"Integrates the constant-pressure problem of a solver file"};
    std::string file;
    std::string linear = "auto";
    app.add_option("file", file, "Solver file (default: the path in SolverFilePath.txt)");
    app.add_option("--linear-solver", linear, "Jacobian solver: auto, dense or sparse")
        ->check(CLI::IsMember({"auto", "dense", "sparse"}));
    CLI11_PARSE(app, argc, argv);

    using namespace zarvion::solver;
    try {
        const std::filesystem::path path =
            file.empty() ? ReadSolverFilePath("SolverFilePath.txt") : std::filesystem::path(file);
        SolverRunOptions options;
        options.progress = &std::cout;
        options.linearSolver = linear == "dense"    ? LinearSolverKind::Dense
                               : linear == "sparse" ? LinearSolverKind::Sparse
                                                    : LinearSolverKind::Automatic;
        std::cout << "Solver file: " << path.string() << std::endl;
        const auto result = RunSolverFile(path, options);
        return result.success ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << "zarvion-solver: " << e.what() << std::endl;
        return 2;
    }
}
