// The analytic Jacobian of the constant-pressure problem against central finite differences of
// the right-hand side, on a mechanism with third bodies, Lindemann/Troe/SRI fall-off, an explicit
// partner and an irreversible reaction.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "solver/ConstantPressureProblem.h"
#include "solverfile/SolverFileReader.h"

using namespace zarvion;
using namespace zarvion::solver;

namespace {

solverfile::Mechanism toyMechanism()
{
    return solverfile::ReadMechanism(ZARVION_SOURCE_DIR "/tests/data/toy_mechanism.txt");
}

// A state with every species present, so that every reaction runs both ways.
std::vector<double> state(const ConstantPressureProblem& p, double T)
{
    std::vector<double> x{0.02, 0.2, 0.005, 0.775};
    auto y = p.massFractionsFromMoleFractions(x);
    if (p.energyEquation()) y.push_back(T);
    return y;
}

// Central differences with a relative step of 1e-6 (truncation ~1e-12, cancellation ~1e-10
// relative to the column scale).
std::vector<double> finiteDifferenceJacobian(ConstantPressureProblem& p, std::vector<double> y)
{
    const int n = p.size();
    std::vector<double> J(n * n), fp(n), fm(n);
    for (int m = 0; m < n; ++m) {
        const double h = 1e-6 * std::max(std::abs(y[m]), m < p.speciesCount() ? 1e-3 : 1.0);
        const double keep = y[m];
        y[m] = keep + h;
        p.rhs(y, fp);
        y[m] = keep - h;
        p.rhs(y, fm);
        y[m] = keep;
        for (int i = 0; i < n; ++i) J[i + m * n] = (fp[i] - fm[i]) / (2 * h);
    }
    return J;
}

void compare(const std::vector<double>& expected, const std::vector<double>& actual, int n,
             double tol)
{
    // Entries are compared against the largest magnitude in their row: rows mix terms of very
    // different size and an entry that is tiny against its row is noise in the differences.
    for (int i = 0; i < n; ++i) {
        double scale = 0;
        for (int m = 0; m < n; ++m) scale = std::max(scale, std::abs(expected[i + m * n]));
        for (int m = 0; m < n; ++m)
            EXPECT_NEAR(actual[i + m * n], expected[i + m * n], tol * scale + 1e-300)
                << "row " << i << " column " << m;
    }
}

} // namespace

TEST(ConstantPressureJacobian, DenseMatchesFiniteDifferencesWithEnergyEquation)
{
    const auto mech = toyMechanism();
    for (double T : {900.0, 1500.0, 2400.0}) {
        ConstantPressureProblem p(mech, 2.0, 1, T);
        const auto y = state(p, T);
        const int n = p.size();
        std::vector<double> J(n * n);
        p.denseJacobian(y, J.data());
        // The temperature column is itself a forward difference: 1e-6 of the row scale.
        compare(finiteDifferenceJacobian(p, y), J, n, 1e-6);
    }
}

TEST(ConstantPressureJacobian, DenseMatchesFiniteDifferencesAtConstantTemperature)
{
    const auto mech = toyMechanism();
    ConstantPressureProblem p(mech, 0.5, 0, 1300);
    const auto y = state(p, 1300);
    const int n = p.size();
    ASSERT_EQ(n, p.speciesCount());
    std::vector<double> J(n * n);
    p.denseJacobian(y, J.data());
    compare(finiteDifferenceJacobian(p, y), J, n, 1e-7);
}

TEST(ConstantPressureJacobian, SparseAgreesWithDenseWhereItIsExact)
{
    const auto mech = toyMechanism();
    ConstantPressureProblem p(mech, 2.0, 1, 1500);
    const auto y = state(p, 1500);
    const int n = p.size();
    std::vector<double> dense(n * n);
    p.denseJacobian(y, dense.data());
    const auto& pat = p.pattern();
    ASSERT_EQ(pat.size, n);
    std::vector<double> values(pat.nonZeros());
    p.sparseJacobian(y, values.data());
    const int ns = p.speciesCount();
    bool diagonal[64] = {};
    for (int i = 0; i < n; ++i) {
        for (auto k = pat.rowStart[i]; k < pat.rowStart[i + 1]; ++k) {
            const int m = static_cast<int>(pat.columns[k]);
            if (k > pat.rowStart[i]) {
                EXPECT_LT(pat.columns[k - 1], m);  // sorted, unique
            }
            if (m == i) diagonal[i] = true;
            // The temperature row and column carry the same terms in both forms.
            if (i == ns || m == ns) {
                EXPECT_NEAR(values[k], dense[i + m * n], 1e-12 * std::abs(dense[i + m * n]) + 1e-300);
            }
        }
        EXPECT_TRUE(diagonal[i]) << "row " << i << " lacks its diagonal";
    }
    // Structure of the toy mechanism: H, O2 and HO2 meet in every reaction and AR is a listed
    // partner, so their rows hold all five columns; AR never changes (its row is the diagonal
    // and T); the temperature row is full: 3 x 5 + 2 + 5 = 22.
    EXPECT_EQ(pat.nonZeros(), 22);
}
