#include "solver/CvodeIntegrator.h"

#include <cvode/cvode.h>
#include <nvector/nvector_serial.h>
#include <sundials/sundials_context.h>
#include <sunlinsol/sunlinsol_dense.h>
#include <sunlinsol/sunlinsol_klu.h>
#include <sunmatrix/sunmatrix_dense.h>
#include <sunmatrix/sunmatrix_sparse.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "shell/Error.h"

namespace zarvion::solver {

static_assert(sizeof(sunindextype) == sizeof(std::int64_t), "sparse indices are 64-bit");

namespace {

std::string flagName(long flag)
{
    char* name = CVodeGetReturnFlagName(flag);
    std::string s = name ? name : "CV_UNKNOWN";
    std::free(name);
    return s;
}

} // namespace

struct CvodeIntegrator::Impl {
    SUNContext ctx = nullptr;
    void* cvode = nullptr;
    N_Vector y = nullptr;
    SUNMatrix A = nullptr;
    SUNLinearSolver LS = nullptr;
    ConstantPressureProblem* problem = nullptr;
    std::string lastMessage;

    ~Impl()
    {
        if (cvode) CVodeFree(&cvode);
        if (LS) SUNLinSolFree(LS);
        if (A) SUNMatDestroy(A);
        if (y) N_VDestroy(y);
        if (ctx) SUNContext_Free(&ctx);
    }

    void check(int flag, const char* what)
    {
        if (flag < 0) throw SolverError(flagName(flag), std::string(what) + " failed" +
                                                            (lastMessage.empty() ? "" : ": " + lastMessage));
    }

    // No exception crosses a CVODE callback: 0 ok, 1 recoverable, -1 fatal.
    static int rhs(realtype, N_Vector y, N_Vector ydot, void* data)
    {
        auto* self = static_cast<Impl*>(data);
        const auto n = static_cast<std::size_t>(N_VGetLength_Serial(y));
        try {
            std::span<const double> in(N_VGetArrayPointer_Serial(y), n);
            std::span<double> out(N_VGetArrayPointer_Serial(ydot), n);
            self->problem->rhs(in, out);
            for (double v : out)
                if (!std::isfinite(v)) return 1;
            return 0;
        } catch (const std::exception& e) {
            self->lastMessage = e.what();
            return -1;
        }
    }

    static int denseJac(realtype, N_Vector y, N_Vector, SUNMatrix J, void* data, N_Vector, N_Vector,
                        N_Vector)
    {
        auto* self = static_cast<Impl*>(data);
        const auto n = static_cast<std::size_t>(N_VGetLength_Serial(y));
        try {
            self->problem->denseJacobian(std::span<const double>(N_VGetArrayPointer_Serial(y), n),
                                         SUNDenseMatrix_Data(J));
            return 0;
        } catch (const std::exception& e) {
            self->lastMessage = e.what();
            return -1;
        }
    }

    static int sparseJac(realtype, N_Vector y, N_Vector, SUNMatrix J, void* data, N_Vector,
                         N_Vector, N_Vector)
    {
        auto* self = static_cast<Impl*>(data);
        const auto n = static_cast<std::size_t>(N_VGetLength_Serial(y));
        try {
            const auto& pattern = self->problem->pattern();
            std::copy(pattern.rowStart.begin(), pattern.rowStart.end(), SUNSparseMatrix_IndexPointers(J));
            std::copy(pattern.columns.begin(), pattern.columns.end(), SUNSparseMatrix_IndexValues(J));
            self->problem->sparseJacobian(std::span<const double>(N_VGetArrayPointer_Serial(y), n),
                                          SUNSparseMatrix_Data(J));
            return 0;
        } catch (const std::exception& e) {
            self->lastMessage = e.what();
            return -1;
        }
    }

    static void errorHandler(int, const char*, const char*, char* msg, void* data)
    {
        static_cast<Impl*>(data)->lastMessage = msg ? msg : "";
    }
};

CvodeIntegrator::CvodeIntegrator(ConstantPressureProblem& problem, std::span<const double> y0,
                                 double t0, const IntegratorSettings& settings)
    : m_impl(std::make_unique<Impl>()), m_problem(problem), m_y(y0.begin(), y0.end()), m_t(t0),
      m_tf(settings.finalTime)
{
    auto& d = *m_impl;
    d.problem = &problem;
    const int n = problem.size();
    if (static_cast<int>(y0.size()) != n) throw Error("Initial state has the wrong size");
    if (SUNContext_Create(nullptr, &d.ctx) != 0) throw SolverError("SUNContext_Create", "No SUNDIALS context");
    d.y = N_VNew_Serial(n, d.ctx);
    std::copy(y0.begin(), y0.end(), N_VGetArrayPointer_Serial(d.y));
    d.cvode = CVodeCreate(CV_BDF, d.ctx);
    if (!d.cvode) throw SolverError("CVodeCreate", "No CVODE memory");
    CVodeSetErrHandlerFn(d.cvode, &Impl::errorHandler, &d);
    d.check(CVodeInit(d.cvode, &Impl::rhs, t0, d.y), "CVodeInit");
    d.check(CVodeSetUserData(d.cvode, &d), "CVodeSetUserData");
    d.check(CVodeSStolerances(d.cvode, settings.relativeTolerance, settings.absoluteTolerance),
            "CVodeSStolerances");
    if (settings.initialStep > 0) d.check(CVodeSetInitStep(d.cvode, settings.initialStep), "CVodeSetInitStep");
    d.check(CVodeSetStopTime(d.cvode, settings.finalTime), "CVodeSetStopTime");
    d.check(CVodeSetMaxNumSteps(d.cvode, 100000), "CVodeSetMaxNumSteps");
    d.check(CVodeSetMaxErrTestFails(d.cvode, 20), "CVodeSetMaxErrTestFails");
    d.check(CVodeSetMaxConvFails(d.cvode, 50), "CVodeSetMaxConvFails");

    m_sparse = settings.linearSolver == LinearSolverKind::Sparse ||
               (settings.linearSolver == LinearSolverKind::Automatic && n >= SparseSolverThreshold);
    if (m_sparse) {
        d.A = SUNSparseMatrix(n, n, problem.pattern().nonZeros(), CSR_MAT, d.ctx);
        d.LS = SUNLinSol_KLU(d.y, d.A, d.ctx);
        if (!d.A || !d.LS) throw SolverError("SUNLinSol_KLU", "No sparse linear solver");
        // AMD keeps the fill of the reaction graph with its dense temperature row and column far
        // lower than COLAMD: about four times faster refactorisations on a 650-species mechanism.
        d.check(SUNLinSol_KLUSetOrdering(d.LS, 0), "SUNLinSol_KLUSetOrdering");
        d.check(CVodeSetLinearSolver(d.cvode, d.LS, d.A), "CVodeSetLinearSolver");
        d.check(CVodeSetJacFn(d.cvode, &Impl::sparseJac), "CVodeSetJacFn");
    } else {
        d.A = SUNDenseMatrix(n, n, d.ctx);
        d.LS = SUNLinSol_Dense(d.y, d.A, d.ctx);
        if (!d.A || !d.LS) throw SolverError("SUNLinSol_Dense", "No dense linear solver");
        d.check(CVodeSetLinearSolver(d.cvode, d.LS, d.A), "CVodeSetLinearSolver");
        d.check(CVodeSetJacFn(d.cvode, &Impl::denseJac), "CVodeSetJacFn");
    }
}

CvodeIntegrator::~CvodeIntegrator() = default;

bool CvodeIntegrator::step()
{
    auto& d = *m_impl;
    realtype t = m_t;
    d.lastMessage.clear();
    const int flag = CVode(d.cvode, m_tf, d.y, &t, CV_ONE_STEP);
    if (flag < 0) {
        throw SolverError(flagName(flag), d.lastMessage.empty() ? "CVODE failed" : d.lastMessage);
    }
    m_t = t;
    const double* p = N_VGetArrayPointer_Serial(d.y);
    std::copy(p, p + m_y.size(), m_y.begin());
    return flag == CV_TSTOP_RETURN || m_t >= m_tf;
}

void CvodeIntegrator::derivative(std::span<double> dydt) const
{
    auto& d = *m_impl;
    N_Vector dky = N_VMake_Serial(static_cast<sunindextype>(dydt.size()), dydt.data(), d.ctx);
    const int flag = CVodeGetDky(d.cvode, m_t, 1, dky);
    N_VDestroy(dky);
    if (flag < 0) throw SolverError(flagName(flag), "CVodeGetDky failed");
}

IntegratorStatistics CvodeIntegrator::statistics() const
{
    auto& d = *m_impl;
    IntegratorStatistics s;
    long v = 0;
    CVodeGetNumSteps(d.cvode, &v);
    s.steps = v;
    CVodeGetNumRhsEvals(d.cvode, &v);
    s.rhsEvaluations = v;
    CVodeGetNumJacEvals(d.cvode, &v);
    s.jacobianEvaluations = v;
    CVodeGetNumNonlinSolvIters(d.cvode, &v);
    s.nonlinearIterations = v;
    CVodeGetNumErrTestFails(d.cvode, &v);
    s.errorTestFailures = v;
    CVodeGetNumNonlinSolvConvFails(d.cvode, &v);
    s.convergenceFailures = v;
    realtype h = 0;
    CVodeGetLastStep(d.cvode, &h);
    s.lastStep = h;
    return s;
}

} // namespace zarvion::solver
