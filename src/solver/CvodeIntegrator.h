#pragma once
// Stiff integration of a ConstantPressureProblem with CVODE (BDF, Newton iterations, analytic
// Jacobian; dense LU for small systems, KLU sparse LU for large ones). The integrator library
// stays behind this header: no SUNDIALS type appears here.

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "solver/ConstantPressureProblem.h"

namespace zarvion::solver {

enum class LinearSolverKind { Automatic, Dense, Sparse };

//! Unknowns at and above which Automatic picks the sparse solver.
inline constexpr int SparseSolverThreshold = 40;

struct IntegratorSettings {
    double relativeTolerance = 1e-6;
    double absoluteTolerance = 1e-15;
    double initialStep = 0;             //!< 0 lets CVODE choose [s]
    double finalTime = 0;               //!< the integration stops exactly here [s]
    LinearSolverKind linearSolver = LinearSolverKind::Automatic;
};

//! Counters of one integration.
struct IntegratorStatistics {
    long steps = 0;
    long rhsEvaluations = 0;        //!< CVODE's own calls
    long jacobianEvaluations = 0;
    long nonlinearIterations = 0;
    long errorTestFailures = 0;
    long convergenceFailures = 0;
    double lastStep = 0;
};

//! One CVODE integrator over one problem; steps one accepted step at a time.
class CvodeIntegrator {
public:
    //! Throws zarvion::SolverError when CVODE refuses the set-up.
    CvodeIntegrator(ConstantPressureProblem& problem, std::span<const double> y0, double t0,
                    const IntegratorSettings& settings);
    ~CvodeIntegrator();
    CvodeIntegrator(const CvodeIntegrator&) = delete;
    CvodeIntegrator& operator=(const CvodeIntegrator&) = delete;

    //! Takes one accepted step, never beyond the final time; returns true when the final time
    //! has been reached. Throws zarvion::SolverError with CVODE's flag name on failure.
    bool step();

    double time() const { return m_t; }
    std::span<const double> state() const { return m_y; }
    //! dy/dt at time() from the integrator's interpolating polynomial.
    void derivative(std::span<double> dydt) const;
    bool sparse() const { return m_sparse; }
    IntegratorStatistics statistics() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
    ConstantPressureProblem& m_problem;
    std::vector<double> m_y;
    double m_t = 0;
    double m_tf = 0;
    bool m_sparse = false;
};

} // namespace zarvion::solver
