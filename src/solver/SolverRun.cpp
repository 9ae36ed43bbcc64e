#include "solver/SolverRun.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ostream>

#include "shell/Error.h"
#include "shell/TextFile.h"
#include "solverfile/ResultsWriter.h"
#include "solverfile/SolverFileReader.h"

namespace zarvion::solver {

namespace {

std::string sci(double v, int digits = 6)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*E", digits, v);
    return buf;
}

std::string trim(std::string s)
{
    const auto b = s.find_first_not_of(" \t\r\n");
    if (b == std::string::npos) return {};
    const auto e = s.find_last_not_of(" \t\r\n");
    return s.substr(b, e - b + 1);
}

using Clock = std::chrono::steady_clock;

} // namespace

std::filesystem::path ReadSolverFilePath(const std::filesystem::path& pathFile)
{
    const auto lines = shell::ReadLines(pathFile);
    std::string path = lines.empty() ? std::string() : lines.front();
    path = trim(path.substr(0, path.find(',')));
    if (path.empty()) throw Error(pathFile.string() + " names no solver file");
    return path;
}

SolverRunResult RunSolverFile(const std::filesystem::path& file, const SolverRunOptions& options)
{
    const auto start = Clock::now();
    const solverfile::Mechanism mech = solverfile::ReadMechanism(file);
    const auto& hd = mech.header;
    solverfile::ResultsWriter writer(file, mech.reactionsEndLine, mech.speciesNames);

    SolverRunResult result;
    std::ostream* out = options.progress;
    auto fail = [&](std::string reason, std::vector<std::string> lines) {
        result.success = false;
        result.errorReason = std::move(reason);
        result.explanation = std::move(lines);
        result.wallSeconds = std::chrono::duration<double>(Clock::now() - start).count();
        result.explanation.push_back("Wall time: " + sci(result.wallSeconds, 3) + " s");
        writer.fail(result.errorReason, result.explanation);
        result.rowsWritten = static_cast<long>(writer.rowsWritten());
        if (out) *out << "ERROR " << result.errorReason << std::endl;
        return result;
    };

    if (hd.TemperatureMode != 0 && hd.TemperatureMode != 1)
        return fail("Temperature mode " + std::to_string(hd.TemperatureMode) + " is not supported",
                    {"Only constant temperature (0) and the energy equation (1) at constant pressure "
                     "are solved."});
    if (!(hd.finalTime > hd.initialTime))
        return fail("Final time not after the initial time",
                    {"Initial time " + sci(hd.initialTime) + " s, final time " + sci(hd.finalTime) + " s."});
    if (!(hd.pressureAtm > 0) || !(hd.initialTemperature > 0))
        return fail("Pressure and initial temperature must be positive",
                    {"P = " + sci(hd.pressureAtm) + " atm, T = " + sci(hd.initialTemperature) + " K."});
    if (hd.initialTemperature < hd.minTemperature || hd.initialTemperature > hd.maxTemperature)
        return fail("Temperature outside the allowable interval",
                    {"The initial temperature " + sci(hd.initialTemperature) + " K is outside " +
                     sci(hd.minTemperature) + " K .. " + sci(hd.maxTemperature) + " K."});

    ConstantPressureProblem problem(mech, hd.pressureAtm, hd.TemperatureMode, hd.initialTemperature);
    std::vector<double> y0;
    try {
        y0 = problem.massFractionsFromMoleFractions(mech.initialMoleFractions);
    } catch (const Error& e) {
        return fail("No initial composition", {e.what()});
    }
    if (problem.energyEquation()) y0.push_back(hd.initialTemperature);
    const int ns = problem.speciesCount();

    IntegratorSettings settings;
    settings.relativeTolerance = hd.relativeTolerance;
    settings.absoluteTolerance = hd.absoluteTolerance;
    settings.initialStep = hd.initialStep;
    settings.finalTime = hd.finalTime;
    settings.linearSolver = options.linearSolver;

    double lastRowTime = hd.initialTime;
    auto writeRow = [&](double t, std::span<const double> y) {
        writer.writeRow(t, problem.temperature(y), y.subspan(0, ns),
                        writer.rowsWritten() == 0 ? 0.0 : t - lastRowTime);
        lastRowTime = t;
    };
    writeRow(hd.initialTime, y0);

    std::unique_ptr<CvodeIntegrator> integrator;
    try {
        integrator = std::make_unique<CvodeIntegrator>(problem, y0, hd.initialTime, settings);
    } catch (const SolverError& e) {
        return fail("Integrator set-up failed", {e.what()});
    }
    result.sparse = integrator->sparse();
    if (out)
        *out << "Solving " << ns << " species, " << problem.workspace().reactionCount()
             << " reactions, " << (result.sparse ? "sparse" : "dense") << " Jacobian" << std::endl;

    std::vector<double> dydt(problem.size());
    auto lastProgress = Clock::now();
    long steps = 0;
    bool done = false;
    while (!done) {
        try {
            done = integrator->step();
        } catch (const SolverError& e) {
            result.statistics = integrator->statistics();
            const std::string flag = e.flagName();
            std::string reason = "Integration failed";
            if (flag == "CV_TOO_CLOSE" || flag == "CV_ERR_FAILURE" || flag == "CV_CONV_FAILURE")
                reason = "Step size too small";
            else if (flag == "CV_RHSFUNC_FAIL" || flag == "CV_REPTD_RHSFUNC_ERR" ||
                     flag == "CV_UNREC_RHSFUNC_ERR")
                reason = "Non-finite value in the right-hand side";
            return fail(reason, {"At t = " + sci(integrator->time()) + " s after " +
                                     std::to_string(steps) + " steps: " + e.what(),
                                 "Last step size " + sci(result.statistics.lastStep) + " s."});
        }
        ++steps;
        const double t = integrator->time();
        const auto y = integrator->state();
        bool finite = std::isfinite(t);
        for (double v : y) finite = finite && std::isfinite(v);
        if (!finite)
            return fail("Non-finite value in the solution",
                        {"At step " + std::to_string(steps) + " the state holds a value that is not a number."});
        const double T = problem.temperature(y);
        if (problem.energyEquation()) {
            integrator->derivative(dydt);
            if (dydt[ns] > result.steepestRiseRate) {
                result.steepestRiseRate = dydt[ns];
                result.steepestRiseTime = t;
            }
        }
        const bool outOfRange = T < hd.minTemperature || T > hd.maxTemperature;
        const bool regular = steps % hd.outputEvery == 0 && writer.rowsWritten() < MaximumOutputRows - 1;
        if (done || outOfRange || regular) writeRow(t, y);
        if (outOfRange)
            return fail("Temperature outside the allowable interval",
                        {"T = " + sci(T) + " K at t = " + sci(t) + " s; the allowable interval is " +
                         sci(hd.minTemperature) + " K .. " + sci(hd.maxTemperature) + " K."});
        if (out && (done || Clock::now() - lastProgress >
                                std::chrono::duration<double>(options.progressInterval))) {
            lastProgress = Clock::now();
            *out << "t = " << sci(t, 4) << " s   T = " << sci(T, 5) << " K   steps = " << steps
                 << std::endl;
        }
        if (!done && steps >= hd.maxSteps)
            return fail("Maximum number of steps reached",
                        {std::to_string(steps) + " steps reached t = " + sci(t) + " s; the final time " +
                             hd.finalTimeText + " s was not achieved.",
                         "Raise the maximum number of steps or loosen the tolerances."});
    }

    result.success = true;
    result.statistics = integrator->statistics();
    result.finalTime = integrator->time();
    result.finalTemperature = problem.temperature(integrator->state());
    result.wallSeconds = std::chrono::duration<double>(Clock::now() - start).count();
    const auto& st = result.statistics;
    std::vector<std::string> stats{
        "Accepted steps: " + std::to_string(st.steps),
        "Right-hand side evaluations: " + std::to_string(st.rhsEvaluations) + " (" +
            std::to_string(problem.rhsCount()) + " with the Jacobians)",
        "Jacobian evaluations: " + std::to_string(st.jacobianEvaluations),
        "Nonlinear iterations: " + std::to_string(st.nonlinearIterations),
        "Error test failures: " + std::to_string(st.errorTestFailures),
        std::string("Linear solver: ") +
            (result.sparse ? "KLU sparse LU, " + std::to_string(problem.pattern().nonZeros()) + " nonzeros"
                           : "dense LU"),
        "Final temperature: " + sci(result.finalTemperature) + " K"};
    if (problem.energyEquation())
        stats.push_back("Steepest temperature rise at t = " + sci(result.steepestRiseTime) +
                        " s, dT/dt = " + sci(result.steepestRiseRate) + " K/s");
    stats.push_back("Wall time: " + sci(result.wallSeconds, 3) + " s");
    writer.finish(stats);
    result.rowsWritten = static_cast<long>(writer.rowsWritten());
    if (out) *out << "Done: " << st.steps << " steps, " << result.rowsWritten << " rows" << std::endl;
    return result;
}

} // namespace zarvion::solver
