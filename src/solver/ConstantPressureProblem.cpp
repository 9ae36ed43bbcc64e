#include "solver/ConstantPressureProblem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "shell/Error.h"

namespace zarvion::solver {

using postprocessor::ComputeReactionRates;

ConstantPressureProblem::ConstantPressureProblem(const solverfile::Mechanism& mechanism,
                                                 double pressure, int TemperatureMode,
                                                 double fixedTemperature)
    : m_ws(mechanism), m_energy(TemperatureMode == 1), m_pressure(pressure),
      m_fixedT(fixedTemperature)
{
    m_ns = m_ws.speciesCount();
    m_nr = m_ws.reactionCount();
    const auto w = m_ws.molecularWeights();
    m_weight.assign(w.begin(), w.end());
    for (int i = 0; i < m_ns; ++i)
        if (!(m_weight[i] > 0))
            throw Error("Species " + std::to_string(i + 1) + " has no positive molecular weight");
    const int n = size();
    m_conc.assign(m_ns + 1, 0.0);
    m_cPadded.assign(m_ns + 1, 1.0);
    m_production.assign(n, {0.0, 0.0});
    m_rates.assign(m_nr, {0.0, 0.0});
    m_omega.assign(m_ns, 0.0);
    m_scratchY.assign(n, 0.0);
    m_scratchF.assign(n, 0.0);
    m_baseF.assign(n, 0.0);
    m_hJ.assign(m_ns, 0.0);
    m_Jx.assign(m_ns, 0.0);
    m_deltaH.assign(m_nr, 0.0);
    buildPattern();
}

std::vector<double> ConstantPressureProblem::massFractionsFromMoleFractions(
    std::span<const double> moleFractions) const
{
    std::vector<double> y(m_ns, 0.0);
    double sum = 0;
    for (int i = 0; i < m_ns && i < static_cast<int>(moleFractions.size()); ++i) {
        const double x = moleFractions[i] > 0 ? moleFractions[i] : 0.0;
        y[i] = x * m_weight[i];
        sum += y[i];
    }
    if (!(sum > 0)) throw Error("No species has a positive initial mole fraction");
    for (double& v : y) v /= sum;  // normalising mass also normalises the mole fractions
    return y;
}

void ConstantPressureProblem::evaluate(std::span<const double> y, std::span<double> ydot)
{
    ++m_rhsCount;
    const double T = temperature(y);
    double S = 0;
    for (int k = 0; k < m_ns; ++k) S += y[k] / m_weight[k];
    const double ctot = m_pressure / (m_ws.GasConstantConc() * T);
    const double scale = ctot / S;  // = rho
    for (int k = 0; k < m_ns; ++k) {
        m_conc[k] = scale * y[k] / m_weight[k];
        m_cPadded[k] = m_conc[k];
    }
    if (m_energy) m_conc[m_ns] = T;
    ComputeReactionRates(std::span<const double>(m_conc.data(), size()), m_production, m_ws,
                         m_pressure, m_energy ? 1 : 0, T, {}, m_rates, false, false, false);
    m_S = S;
    m_rho = scale;
    m_ctot = ctot;
    for (int i = 0; i < m_ns; ++i) {
        m_omega[i] = m_production[i][0];
        ydot[i] = m_weight[i] * m_omega[i] / m_rho;
    }
    if (m_energy) ydot[m_ns] = m_production[m_ns][0];
}

void ConstantPressureProblem::rhs(std::span<const double> y, std::span<double> ydot)
{
    evaluate(y, ydot);
}

int ConstantPressureProblem::reactionColumns(int j, int* columns) const
{
    const auto& d = m_ws.reactions()[j];
    int count = 0;
    auto add = [&](int k) {
        if (k >= m_ns) return;
        for (int t = 0; t < count; ++t)
            if (columns[t] == k) return;
        columns[count++] = k;
    };
    for (int s = 0; s < d.reactantCount; ++s) add(d.reactants[s]);
    for (int s = 0; s < d.productCount; ++s) add(d.products[s]);
    for (int p = 0; p < d.partnerCount; ++p) add(d.partners[p]);
    return count;
}

void ConstantPressureProblem::reactionDerivatives(int j, const int* columns, int count,
                                                  double* dqdc) const
{
    // q = m(M) kInf (prod_r c - prod_p c / Kc) with M = base Ctot + sum (e - base) c_partner;
    // Ctot = P / (R T) does not move with composition, so dM/dc_k = e_k - base for partners.
    const auto& d = m_ws.reactions()[j];
    const double* c = m_cPadded.data();
    const double kInf = m_ws.kInfinity()[j];
    const double m = m_ws.rateMultiplier()[j];
    const double keff = kInf * m;
    std::fill(dqdc, dqdc + count, 0.0);
    auto at = [&](int k) -> double& {
        for (int t = 0; t < count; ++t)
            if (columns[t] == k) return dqdc[t];
        return dqdc[0];  // unreachable for structural columns
    };
    const auto& r = d.reactants;
    const double fwd = c[r[0]] * c[r[1]] * c[r[2]];
    if (keff != 0) {
        for (int s = 0; s < d.reactantCount; ++s) {
            if (r[s] >= m_ns) continue;
            double others = 1;
            for (int t = 0; t < 3; ++t)
                if (t != s) others *= c[r[t]];
            at(r[s]) += keff * others;
        }
    }
    double rev = 0;
    if (d.reversible == 1) {
        const auto& p = d.products;
        const double kr = keff / m_ws.equilibriumConstant()[j];
        rev = c[p[0]] * c[p[1]] * c[p[2]] * c[p[3]] * c[p[4]] * c[p[5]] / m_ws.equilibriumConstant()[j];
        if (kr != 0) {
            for (int s = 0; s < d.productCount; ++s) {
                if (p[s] >= m_ns) continue;
                double others = 1;
                for (int t = 0; t < 6; ++t)
                    if (t != s) others *= c[p[t]];
                at(p[s]) -= kr * others;
            }
        }
    }
    if ((d.thirdBodyKind > 0 || d.partnerCount > 0) && d.partnerCount > 0) {
        const double g = m_ws.multiplierSlope()[j] * kInf * (fwd - rev);
        if (g != 0) {
            const double base = d.thirdBodyKind > 0 ? 1.0 : 0.0;
            for (int t = 0; t < d.partnerCount; ++t)
                if (d.partners[t] < m_ns) at(d.partners[t]) += g * (d.efficiencies[t] - base);
        }
    }
}

void ConstantPressureProblem::temperatureColumn(std::span<const double> y)
{
    const int n = size();
    std::copy(y.begin(), y.end(), m_scratchY.begin());
    const double T = y[m_ns];
    const double delta = std::sqrt(std::numeric_limits<double>::epsilon()) * std::max(T, 1.0);
    m_scratchY[m_ns] = T + delta;
    evaluate(m_scratchY, m_scratchF);
    for (int i = 0; i < n; ++i) m_scratchF[i] = (m_scratchF[i] - m_baseF[i]) / delta;
}

double ConstantPressureProblem::temperatureRowEntry(int m) const
{
    // dTdot/dY_m with Tdot = T A / (B Ctot), A = -sum h_i w_i, B = sum x_i cp_i:
    //   dA/dY_m = -(Ctot / (S W_m)) (hJ_m - sum_k hJ_k x_k),  dB/dY_m = (cp_m - B) / (S W_m)
    const double T = m_ws.temperature();
    double hJx = 0;
    for (int k = 0; k < m_ns; ++k) hJx += m_hJ[k] * m_conc[k];
    hJx /= m_ctot;
    const double dA = -(m_ctot / (m_S * m_weight[m])) * (m_hJ[m] - hJx);
    const double dB = (m_ws.cpOverR()[m] - m_Bcp) / (m_S * m_weight[m]);
    return T / (m_Bcp * m_ctot) * dA - T * m_Aheat / (m_Bcp * m_Bcp * m_ctot) * dB;
}

void ConstantPressureProblem::sumHeatAndCapacity()
{
    const auto h = m_ws.hOverRT();
    const auto cp = m_ws.cpOverR();
    m_Aheat = 0;
    m_Bcp = 0;
    for (int i = 0; i < m_ns; ++i) {
        m_Aheat -= h[i] * m_omega[i];
        m_Bcp += m_conc[i] / m_ctot * cp[i];
    }
}

double ConstantPressureProblem::reactionEnthalpyOverRT(int j) const
{
    const auto h = m_ws.hOverRT();
    const auto& d = m_ws.reactions()[j];
    double dH = 0;
    for (int s = 0; s < d.productCount; ++s) dH += h[d.products[s]];
    for (int s = 0; s < d.reactantCount; ++s) dH -= h[d.reactants[s]];
    return dH;
}

void ConstantPressureProblem::denseJacobian(std::span<const double> y, double* J)
{
    const int n = size();
    const int ns = m_ns;
    evaluate(y, m_baseF);
    m_jc.assign(static_cast<std::size_t>(ns) * ns, 0.0);
    std::fill(m_hJ.begin(), m_hJ.end(), 0.0);
    int cols[19];
    double dq[19];
    for (int j = 0; j < m_nr; ++j) {
        const int count = reactionColumns(j, cols);
        reactionDerivatives(j, cols, count, dq);
        const auto& d = m_ws.reactions()[j];
        const double dH = reactionEnthalpyOverRT(j);
        for (int t = 0; t < count; ++t) {
            if (dq[t] == 0) continue;
            double* col = m_jc.data() + static_cast<std::size_t>(cols[t]) * ns;
            for (int s = 0; s < d.reactantCount; ++s)
                if (d.reactants[s] < ns) col[d.reactants[s]] -= dq[t];
            for (int s = 0; s < d.productCount; ++s)
                if (d.products[s] < ns) col[d.products[s]] += dq[t];
            m_hJ[cols[t]] += dH * dq[t];
        }
    }
    // (J x)_i with x_k = c_k / Ctot
    std::fill(m_Jx.begin(), m_Jx.end(), 0.0);
    for (int k = 0; k < ns; ++k) {
        const double xk = m_conc[k] / m_ctot;
        if (xk == 0) continue;
        const double* col = m_jc.data() + static_cast<std::size_t>(k) * ns;
        for (int i = 0; i < ns; ++i) m_Jx[i] += col[i] * xk;
    }
    // df_i/dY_m = (W_i / W_m) (Jc_im - (J x)_i) + W_i w_i / (rho S W_m)
    for (int m = 0; m < ns; ++m) {
        const double* col = m_jc.data() + static_cast<std::size_t>(m) * ns;
        double* out = J + static_cast<std::size_t>(m) * n;
        const double invWm = 1.0 / m_weight[m];
        const double densityTerm = invWm / (m_rho * m_S);
        for (int i = 0; i < ns; ++i)
            out[i] = m_weight[i] * invWm * (col[i] - m_Jx[i]) + m_weight[i] * m_omega[i] * densityTerm;
    }
    if (m_energy) {
        sumHeatAndCapacity();
        for (int m = 0; m < ns; ++m) J[static_cast<std::size_t>(m) * n + ns] = temperatureRowEntry(m);
        temperatureColumn(y);
        double* out = J + static_cast<std::size_t>(ns) * n;
        for (int i = 0; i < n; ++i) out[i] = m_scratchF[i];
    }
}

void ConstantPressureProblem::buildPattern()
{
    const int n = size();
    const int ns = m_ns;
    std::vector<std::set<std::int64_t>> rows(n);
    for (int i = 0; i < n; ++i) rows[i].insert(i);
    if (m_energy)
        for (int i = 0; i < n; ++i) {
            rows[i].insert(ns);
            rows[ns].insert(i);
        }
    int cols[19];
    for (int j = 0; j < m_nr; ++j) {
        const auto& d = m_ws.reactions()[j];
        const int count = reactionColumns(j, cols);
        auto addRow = [&](int i) {
            if (i >= ns) return;
            for (int t = 0; t < count; ++t) rows[i].insert(cols[t]);
        };
        for (int s = 0; s < d.reactantCount; ++s) addRow(d.reactants[s]);
        for (int s = 0; s < d.productCount; ++s) addRow(d.products[s]);
    }
    m_pattern.size = n;
    m_pattern.rowStart.assign(1, 0);
    m_pattern.columns.clear();
    for (int i = 0; i < n; ++i) {
        m_pattern.columns.insert(m_pattern.columns.end(), rows[i].begin(), rows[i].end());
        m_pattern.rowStart.push_back(static_cast<std::int64_t>(m_pattern.columns.size()));
    }
    auto position = [&](int row, int col) {
        const auto b = m_pattern.columns.begin() + m_pattern.rowStart[row];
        const auto e = m_pattern.columns.begin() + m_pattern.rowStart[row + 1];
        return static_cast<std::int64_t>(std::lower_bound(b, e, col) - m_pattern.columns.begin());
    };
    m_diagonalPos.resize(n);
    for (int i = 0; i < n; ++i) m_diagonalPos[i] = position(i, i);
    m_reactionPosStart.assign(1, 0);
    m_reactionPos.clear();
    for (int j = 0; j < m_nr; ++j) {
        const auto& d = m_ws.reactions()[j];
        const int count = reactionColumns(j, cols);
        auto addRow = [&](int i) {
            if (i >= ns) return;
            for (int t = 0; t < count; ++t) m_reactionPos.push_back(position(i, cols[t]));
        };
        for (int s = 0; s < d.reactantCount; ++s) addRow(d.reactants[s]);
        for (int s = 0; s < d.productCount; ++s) addRow(d.products[s]);
        m_reactionPosStart.push_back(static_cast<std::int64_t>(m_reactionPos.size()));
    }
}

void ConstantPressureProblem::sparseJacobian(std::span<const double> y, double* values)
{
    const int ns = m_ns;
    evaluate(y, m_baseF);
    std::fill(values, values + m_pattern.nonZeros(), 0.0);
    std::fill(m_hJ.begin(), m_hJ.end(), 0.0);
    int cols[19];
    double dq[19];
    for (int j = 0; j < m_nr; ++j) {
        const int count = reactionColumns(j, cols);
        reactionDerivatives(j, cols, count, dq);
        const auto& d = m_ws.reactions()[j];
        const std::int64_t* pos = m_reactionPos.data() + m_reactionPosStart[j];
        auto addRow = [&](int i, double sign) {
            if (i >= ns) return;
            const double wi = m_weight[i];
            for (int t = 0; t < count; ++t) values[*pos++] += sign * dq[t] * wi / m_weight[cols[t]];
        };
        for (int s = 0; s < d.reactantCount; ++s) addRow(d.reactants[s], -1.0);
        for (int s = 0; s < d.productCount; ++s) addRow(d.products[s], 1.0);
        const double dH = reactionEnthalpyOverRT(j);
        for (int t = 0; t < count; ++t) m_hJ[cols[t]] += dH * dq[t];
    }
    if (m_energy) {
        sumHeatAndCapacity();
        // Temperature row: columns 0..ns of the last row, in order.
        const std::int64_t rowT = m_pattern.rowStart[ns];
        for (int m = 0; m < ns; ++m) values[rowT + m] = temperatureRowEntry(m);
        temperatureColumn(y);
        for (int i = 0; i <= ns; ++i) {
            const auto b = m_pattern.columns.begin() + m_pattern.rowStart[i];
            const auto e = m_pattern.columns.begin() + m_pattern.rowStart[i + 1];
            const auto p = std::lower_bound(b, e, ns) - m_pattern.columns.begin();
            values[p] = m_scratchF[i];
        }
    }
}

} // namespace zarvion::solver
