#pragma once
// The constant-pressure reactor in mass fractions: y = (Y_1 .. Y_NS [, T]).
//
//   dY_i/dt = W_i w_i / rho                                  w_i from ComputeReactionRates
//   dT/dt   = -T sum_i (h_i/RT) w_i / (Ctot sum_i x_i cp_i/R)   (energy equation, mode 1)
//
// with c_i = rho Y_i / W_i, rho = Ctot / sum_k (Y_k / W_k) and Ctot = P / (R T). The rates are
// exact net rates (no small-difference cut). Knows nothing of the integrator.

#include <cstdint>
#include <span>
#include <vector>

#include "postprocessor/ThermoModule.h"
#include "solverfile/Mechanism.h"

namespace zarvion::solver {

//! Compressed-row pattern of a square matrix (0-based).
struct SparsePattern {
    int size = 0;
    std::vector<std::int64_t> rowStart;  //!< size + 1 entries
    std::vector<std::int64_t> columns;   //!< sorted within each row
    std::int64_t nonZeros() const { return static_cast<std::int64_t>(columns.size()); }
};

//! Right-hand side and Jacobian of the constant-pressure problem.
class ConstantPressureProblem {
public:
    //! pressure in the unit GasConstantConc expects (atm for files that use cm^3 atm/(mol K));
    //! TemperatureMode 0 holds T at fixedTemperature, 1 integrates the energy equation.
    ConstantPressureProblem(const solverfile::Mechanism& mechanism, double pressure,
                            int TemperatureMode, double fixedTemperature);

    int size() const { return m_ns + (m_energy ? 1 : 0); }
    int speciesCount() const { return m_ns; }
    bool energyEquation() const { return m_energy; }
    double pressure() const { return m_pressure; }

    //! Mass fractions from mole fractions (negative entries count as 0, the rest normalised).
    //! Throws zarvion::Error when no fraction is positive.
    std::vector<double> massFractionsFromMoleFractions(std::span<const double> moleFractions) const;

    //! Temperature of state y [K].
    double temperature(std::span<const double> y) const { return m_energy ? y[m_ns] : m_fixedT; }

    //! ydot = f(y).
    void rhs(std::span<const double> y, std::span<double> ydot);

    //! Dense Jacobian df/dy, column-major with leading dimension size(): species columns
    //! analytic, the temperature column by a forward difference.
    void denseJacobian(std::span<const double> y, double* columnMajor);

    //! Pattern used by sparseJacobian (species couplings through each reaction's participants
    //! and listed partners, the diagonal, and the full temperature row and column).
    const SparsePattern& pattern() const { return m_pattern; }

    //! Values on pattern(): the same terms as the dense form except the dense rank-one parts
    //! (the density change with composition and the unit-efficiency third-body couplings),
    //! which are left out of this Newton matrix.
    void sparseJacobian(std::span<const double> y, double* values);

    //! Number of right-hand-side evaluations so far, Jacobian ones included.
    std::int64_t rhsCount() const { return m_rhsCount; }

    postprocessor::RateWorkspace& workspace() { return m_ws; }

private:
    void evaluate(std::span<const double> y, std::span<double> ydot);
    // Structural derivative columns of reaction j (reactants, products, partners; unique).
    int reactionColumns(int j, int* columns) const;
    // d q_j / d c_k for the columns of reactionColumns, at the last evaluated state.
    void reactionDerivatives(int j, const int* columns, int count, double* dqdc) const;
    // Temperature column by a forward difference; fills m_baseF and m_scratchF.
    void temperatureColumn(std::span<const double> y);
    // Temperature row over species columns: exact, from hJ and x.
    double temperatureRowEntry(int m) const;
    // Heat release and mean heat capacity sums the temperature row needs (m_Aheat, m_Bcp).
    void sumHeatAndCapacity();
    // Enthalpy change of reaction j over RT, products minus reactants.
    double reactionEnthalpyOverRT(int j) const;
    void buildPattern();

    postprocessor::RateWorkspace m_ws;
    int m_ns = 0;
    int m_nr = 0;
    bool m_energy = false;
    double m_pressure = 0;
    double m_fixedT = 0;
    std::vector<double> m_weight;
    std::vector<double> m_conc;        // NS (+ T)
    std::vector<postprocessor::RatePair> m_production, m_rates;
    std::vector<double> m_omega;       // net production at the last evaluation
    std::vector<double> m_scratchY, m_scratchF, m_baseF;
    std::vector<double> m_jc;          // dense d w / d c, column-major NS x NS
    std::vector<double> m_hJ, m_Jx, m_cPadded, m_deltaH;
    double m_Bcp = 0, m_Aheat = 0;
    double m_S = 0, m_rho = 0, m_ctot = 0;
    std::int64_t m_rhsCount = 0;
    SparsePattern m_pattern;
    std::vector<std::int64_t> m_diagonalPos;
    // Per reaction: for every (participant row, derivative column) pair the position in the
    // sparse values, in the order reactionDerivatives produces columns.
    std::vector<std::int64_t> m_reactionPosStart, m_reactionPos;
};

} // namespace zarvion::solver
