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

} // namespace

TEST(ConstantPressureJacobian, MatchesFiniteDifferences)
{
    const auto mech = solverfile::ReadMechanism(ZARVION_SOURCE_DIR "/tests/data/toy_mechanism.txt");
    // The temperature column is itself a forward difference: 1e-6 of the row scale with the
    // energy equation, 1e-7 for the purely analytic species block. Pattern sizes by hand: H, O2
    // and HO2 meet in every reaction and AR is a listed partner, so their rows hold every species
    // column; AR never changes (its row is the diagonal, and T); with the energy equation the
    // temperature row is full: 3 x 5 + 2 + 5 = 22, without it 3 x 4 + 1 = 13.
    struct Case { double P; int mode; double T, tol; int nonZeros; };
    for (const Case c : {Case{2.0, 1, 900, 1e-6, 22}, Case{2.0, 1, 1500, 1e-6, 22},
                         Case{2.0, 1, 2400, 1e-6, 22}, Case{0.5, 0, 1300, 1e-7, 13}}) {
        SCOPED_TRACE("mode " + std::to_string(c.mode) + ", T " + std::to_string(c.T));
        ConstantPressureProblem p(mech, c.P, c.mode, c.T);
        // Every species present, so that every reaction runs both ways.
        auto y = p.massFractionsFromMoleFractions(std::vector<double>{0.02, 0.2, 0.005, 0.775});
        if (c.mode == 1) y.push_back(c.T);
        const int n = p.size(), ns = p.speciesCount();
        std::vector<double> dense(n * n);
        p.denseJacobian(y, dense.data());
        // Entries are compared against the largest magnitude in their row: rows mix terms of
        // very different size and an entry tiny against its row is noise in the differences.
        const auto fd = finiteDifferenceJacobian(p, y);
        for (int i = 0; i < n; ++i) {
            double scale = 0;
            for (int m = 0; m < n; ++m) scale = std::max(scale, std::abs(fd[i + m * n]));
            for (int m = 0; m < n; ++m)
                EXPECT_NEAR(dense[i + m * n], fd[i + m * n], c.tol * scale + 1e-300)
                    << "row " << i << " column " << m;
        }

        // The sparse form leaves out rank-one terms; its temperature row and column carry the
        // same terms as the dense form. Rows are sorted, unique and hold their diagonal.
        const auto& pat = p.pattern();
        ASSERT_EQ(pat.size, n);
        EXPECT_EQ(pat.nonZeros(), c.nonZeros);
        std::vector<double> values(pat.nonZeros());
        p.sparseJacobian(y, values.data());
        for (int i = 0; i < n; ++i) {
            bool diagonal = false;
            for (auto k = pat.rowStart[i]; k < pat.rowStart[i + 1]; ++k) {
                const int m = static_cast<int>(pat.columns[k]);
                if (k > pat.rowStart[i]) { EXPECT_LT(pat.columns[k - 1], m); }
                diagonal = diagonal || m == i;
                const double d = dense[i + m * n];
                if (i == ns || m == ns) { EXPECT_NEAR(values[k], d, 1e-12 * std::abs(d) + 1e-300); }
            }
            EXPECT_TRUE(diagonal) << "row " << i << " lacks its diagonal";
        }
    }
}
