#include "postprocessor/ThermoModule.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "postprocessor/ResultSet.h"
#include "shell/Error.h"

namespace zarvion::postprocessor {

namespace {

const double Ln10 = std::log(10.0);

constexpr std::uint8_t HotReversible = 1;
constexpr std::uint8_t HotThirdBody = 2;
constexpr std::uint8_t HotFalloff = 4;
constexpr std::uint8_t HotNoHeat = 8;

// y = exp(x) over an array. Four lanes at a time where the processor has AVX2 and FMA:
// exp(x) = 2^k exp(r), k = round(x / ln 2), r = x - k ln 2 with a two-part ln 2 (|r| <= ln2 / 2),
// exp(r) by its Taylor series to degree 13 (truncation below 1e-17 relative). Lanes with
// |x| > 700 or NaN are redone with std::exp, so over- and underflow behave as std::exp does.
typedef double V4d __attribute__((vector_size(32)));
typedef double V2d __attribute__((vector_size(16), may_alias));
typedef long long V4i __attribute__((vector_size(32)));

__attribute__((target("avx2,fma"))) void expArrayAvx2(const double* x, double* y, int n)
{
    const V4d magic = {6755399441055744.0, 6755399441055744.0, 6755399441055744.0,
                       6755399441055744.0};  // 1.5 x 2^52: adding it rounds to an integer
    const double invLn2 = 1.44269504088896338700e+00;
    const double ln2Hi = 6.93147180369123816490e-01;
    const double ln2Lo = 1.90821492927058770002e-10;
    int i = 0;
    for (; i + 4 <= n; i += 4) {
        V4d v;
        std::memcpy(&v, x + i, sizeof v);
        const V4d t = v * invLn2 + magic;
        const V4d k = t - magic;
        const V4d r = (v - k * ln2Hi) - k * ln2Lo;
        V4d p = r * (1.0 / 6227020800.0) + 1.0 / 479001600.0;
        p = p * r + 1.0 / 39916800.0;
        p = p * r + 1.0 / 3628800.0;
        p = p * r + 1.0 / 362880.0;
        p = p * r + 1.0 / 40320.0;
        p = p * r + 1.0 / 5040.0;
        p = p * r + 1.0 / 720.0;
        p = p * r + 1.0 / 120.0;
        p = p * r + 1.0 / 24.0;
        p = p * r + 1.0 / 6.0;
        p = p * r + 0.5;
        p = p * r + 1.0;
        p = p * r + 1.0;
        const V4i ki = (V4i)t - (V4i)magic;
        const V4d scale = (V4d)((ki + 1023) << 52);
        const V4d res = p * scale;
        std::memcpy(y + i, &res, sizeof res);
    }
    for (; i < n; ++i) y[i] = std::exp(x[i]);
    for (int j = 0; j < n; ++j)
        if (!(std::abs(x[j]) <= 700.0)) y[j] = std::exp(x[j]);
}

void expArray(const double* x, double* y, int n)
{
    static const bool simd = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    if (simd) {
        expArrayAvx2(x, y, n);
        return;
    }
    for (int i = 0; i < n; ++i) y[i] = std::exp(x[i]);
}

double sumOf(const double* a, int first, int last)
{
    double s = 0;
    for (int k = first; k <= last; ++k) s += a[k];
    return s;
}

} // namespace

void EvaluateThermoPolynomial(const double* coefficients, double T, double Tcommon,
                              const double* powers, double& hOverRT, double& cpOverR,
                              double& sOverR)
{
    hOverRT = 0;
    cpOverR = 0;
    sOverR = 0;
    const double* a = nullptr;
    if (Tcommon < T) {
        if (sumOf(coefficients, 1, 7) != 0) a = coefficients + 1;
    } else if (sumOf(coefficients, 8, 14) != 0) {
        a = coefficients + 8;
    }
    if (a == nullptr) return;
    const double lnT = powers[1], T2 = powers[2], T3 = powers[3], T4 = powers[4];
    cpOverR = a[0] + a[1] * T + a[2] * T2 + a[3] * T3 + a[4] * T4;
    hOverRT = a[0] + a[1] * T / 2 + a[2] * T2 / 3 + a[3] * T3 / 4 + a[4] * T4 / 5 + a[5] / T;
    sOverR = a[0] * lnT + a[1] * T + a[2] * T2 / 2 + a[3] * T3 / 3 + a[4] * T4 / 4 + a[6];
}

RateWorkspace::RateWorkspace(const solverfile::Mechanism& mechanism)
    : m_gasConstantEnergy(mechanism.header.GasConstantEnergy),
      m_gasConstantConc(mechanism.header.GasConstantConc)
{
    std::vector<solverfile::ReactionInts> ints;
    std::vector<solverfile::ReactionReals> reals;
    ints.reserve(mechanism.reactions.size());
    reals.reserve(mechanism.reactions.size());
    for (const auto& r : mechanism.reactions) {
        ints.push_back(r.ints);
        reals.push_back(r.reals);
    }
    build(mechanism.thermo, ints, reals);
}

RateWorkspace::RateWorkspace(const ResultSet& results)
    : m_gasConstantEnergy(results.GasConstantEnergy), m_gasConstantConc(results.GasConstantConc)
{
    build(results.thermo, results.ReactionInts, results.ReactionReals);
}

RateWorkspace::RateWorkspace(std::span<const solverfile::ThermoRecord> thermo,
                             std::span<const solverfile::ReactionInts> ints,
                             std::span<const solverfile::ReactionReals> reals,
                             double GasConstantEnergy, double GasConstantConc)
    : m_gasConstantEnergy(GasConstantEnergy), m_gasConstantConc(GasConstantConc)
{
    build(thermo, ints, reals);
}

void RateWorkspace::build(std::span<const solverfile::ThermoRecord> thermo,
                          std::span<const solverfile::ReactionInts> ints,
                          std::span<const solverfile::ReactionReals> reals)
{
    if (ints.size() != reals.size())
        throw Error("Rate workspace: " + std::to_string(ints.size()) + " integer rows but " +
                    std::to_string(reals.size()) + " real rows");
    m_ns = static_cast<int>(thermo.size());
    m_nr = static_cast<int>(ints.size());
    const int ns = m_ns;

    m_high.resize(ns);
    m_low.resize(ns);
    m_tCommon.resize(ns);
    m_highUsable.resize(ns);
    m_lowUsable.resize(ns);
    m_weight.resize(ns);
    for (int i = 0; i < ns; ++i) {
        const auto& t = thermo[i];
        for (int k = 0; k < 7; ++k) {
            m_high[i][k] = t[1 + k];
            m_low[i][k] = t[8 + k];
        }
        m_highUsable[i] = sumOf(t.data(), 1, 7) != 0;
        m_lowUsable[i] = sumOf(t.data(), 8, 14) != 0;
        m_tCommon[i] = t[18];
        m_weight[i] = t[15];
    }

    // A species number outside 1..NS (or a slot beyond the count) points at the padding slot
    // NS, whose concentration is 1 and whose thermo values are 0.
    auto species = [ns](std::int32_t number) { return number >= 1 && number <= ns ? number - 1 : ns; };

    m_reactions.assign(m_nr, {});
    m_A.resize(m_nr);
    m_n.resize(m_nr);
    m_E.resize(m_nr);
    m_A0.resize(m_nr);
    m_n0.resize(m_nr);
    m_E0.resize(m_nr);
    m_dn.resize(m_nr);
    m_falloffList.clear();
    for (int j = 0; j < m_nr; ++j) {
        const auto& in = ints[j];
        const auto& re = reals[j];
        auto& d = m_reactions[j];
        d.reactantCount = std::clamp(in[solverfile::slot::ReactantCount], 0, 3);
        d.productCount = std::clamp(in[solverfile::slot::ProductCount], 0, 6);
        d.reactants.fill(ns);
        d.products.fill(ns);
        for (int k = 0; k < d.reactantCount; ++k) d.reactants[k] = species(in[1 + k]);
        for (int k = 0; k < d.productCount; ++k) d.products[k] = species(in[4 + k]);
        d.thirdBodyKind = in[solverfile::slot::ThirdBodyKind];
        d.partnerCount = std::clamp(in[solverfile::slot::PartnerCount], 0, 10);
        d.hasLowLimit = in[solverfile::slot::HasLowLimit];
        d.falloffKind = in[solverfile::slot::FalloffKind];
        d.reversible = in[solverfile::slot::Reversible];
        d.partners.fill(ns);
        d.efficiencies.fill(0);
        for (int k = 0; k < d.partnerCount; ++k) {
            d.partners[k] = species(in[17 + k]);
            // An unknown partner adds nothing to M: (e - base) = 0.
            d.efficiencies[k] = d.partners[k] < ns ? re[12 + k] : (d.thirdBodyKind > 0 ? 1.0 : 0.0);
        }
        for (int k = 0; k < 5; ++k) d.falloff[k] = re[7 + k];
        m_A[j] = re[1];
        m_n[j] = re[2];
        m_E[j] = re[3];
        m_A0[j] = re[4];
        m_n0[j] = re[5];
        m_E0[j] = re[6];
        m_dn[j] = static_cast<double>(in[solverfile::slot::ProductCount]) -
                  static_cast<double>(in[solverfile::slot::ReactantCount]);
        if (d.hasLowLimit == 1) m_falloffList.push_back(j);
    }

    m_hot.assign(m_nr, {});
    m_partnerSpecies.clear();
    m_partnerExcess.clear();
    for (int j = 0; j < m_nr; ++j) {
        const auto& d = m_reactions[j];
        auto& h = m_hot[j];
        h.reactants = d.reactants;
        h.products = d.products;
        h.reactantCount = static_cast<std::int16_t>(d.reactantCount);
        h.productCount = static_cast<std::int16_t>(d.productCount);
        const bool thirdBody = d.thirdBodyKind > 0 || d.partnerCount > 0;
        h.flags = static_cast<std::uint8_t>((d.reversible == 1 ? HotReversible : 0) |
                                            (thirdBody ? HotThirdBody : 0) |
                                            (d.hasLowLimit == 1 ? HotFalloff : 0) |
                                            (d.reversible == -1 ? HotNoHeat : 0));
        h.base = d.thirdBodyKind > 0 ? 1 : 0;
        h.partnerBegin = static_cast<std::int32_t>(m_partnerSpecies.size());
        for (int k = 0; k < d.partnerCount; ++k) {
            m_partnerSpecies.push_back(d.partners[k]);
            m_partnerExcess.push_back(d.efficiencies[k] - h.base);
        }
        h.partnerEnd = static_cast<std::int32_t>(m_partnerSpecies.size());
    }

    m_hOverRT.assign(ns + 1, 0.0);
    m_cpOverR.assign(ns + 1, 0.0);
    m_sOverR.assign(ns + 1, 0.0);
    m_gOverRT.assign(ns + 1, 0.0);
    m_kInf.assign(m_nr, 0.0);
    m_kc.assign(m_nr, 0.0);
    m_k0.assign(m_nr, 0.0);
    m_centre.assign(m_nr, 0.0);
    m_M.assign(m_nr, 0.0);
    m_mult.assign(m_nr, 1.0);
    m_dmdM.assign(m_nr, 0.0);
    m_conc.assign(ns + 1, 1.0);
    m_prod.assign(ns + 1, {0.0, 0.0});
    m_expArg.assign(std::max(ns, m_nr) + 1, 0.0);
    m_expOut.assign(std::max(ns, m_nr) + 1, 0.0);
    m_expMinusG.assign(ns + 1, 1.0);
    m_expPlusG.assign(ns + 1, 1.0);
    m_gPairs.assign(2 * (ns + 1), 1.0);
    m_invKc.assign(m_nr, 0.0);
    m_falloffArg.assign(4 * m_falloffList.size() + 1, 0.0);
    m_falloffExp.assign(4 * m_falloffList.size() + 1, 0.0);
    m_moleFrac.assign(ns + 1, 0.0);
    m_T = -1;
}

void RateWorkspace::writeComputedSlots(std::span<solverfile::ReactionReals> reals) const
{
    const int n = std::min<int>(m_nr, static_cast<int>(reals.size()));
    for (int j = 0; j < n; ++j) {
        reals[j][22] = m_kInf[j];
        reals[j][23] = m_kc[j];
        reals[j][24] = m_k0[j];
        reals[j][25] = m_centre[j];
    }
}

void ComputeTemperatureFunctions(double T, RateWorkspace& ws)
{
    if (T == ws.m_T) return;
    const int ns = ws.m_ns;
    const double lnT = std::log(T);
    const double invT = 1.0 / T;

    for (int i = 0; i < ns; ++i) {
        const double* a = nullptr;
        if (ws.m_tCommon[i] < T) {
            if (ws.m_highUsable[i]) a = ws.m_high[i].data();
        } else if (ws.m_lowUsable[i]) {
            a = ws.m_low[i].data();
        }
        if (a == nullptr) {
            ws.m_cpOverR[i] = ws.m_hOverRT[i] = ws.m_sOverR[i] = ws.m_gOverRT[i] = 0;
            continue;
        }
        const double cp = a[0] + T * (a[1] + T * (a[2] + T * (a[3] + T * a[4])));
        const double h = a[0] + T * (a[1] / 2 + T * (a[2] / 3 + T * (a[3] / 4 + T * a[4] / 5))) +
                         a[5] * invT;
        const double s = a[0] * lnT + T * (a[1] + T * (a[2] / 2 + T * (a[3] / 3 + T * a[4] / 4))) +
                         a[6];
        ws.m_cpOverR[i] = cp;
        ws.m_hOverRT[i] = h;
        ws.m_sOverR[i] = s;
        ws.m_gOverRT[i] = h - s;
    }

    // k = A T^n exp(-E / (R1 T))
    const double invRT = 1.0 / (ws.m_gasConstantEnergy * T);
    const int nr = ws.m_nr;
    const double* A = ws.m_A.data();
    const double* n = ws.m_n.data();
    const double* E = ws.m_E.data();
    double* kInf = ws.m_kInf.data();
    double* arg = ws.m_expArg.data();
    double* ex = ws.m_expOut.data();
    for (int j = 0; j < nr; ++j) arg[j] = n[j] * lnT - E[j] * invRT;
    expArray(arg, ex, nr);
    for (int j = 0; j < nr; ++j) kInf[j] = A[j] * ex[j];

    // Fall-off reactions: k0 and the exponentials of the Troe centre or the SRI base, four a
    // reaction, in one batch.
    const int nf = static_cast<int>(ws.m_falloffList.size());
    double* fa = ws.m_falloffArg.data();
    double* fe = ws.m_falloffExp.data();
    for (int t = 0; t < nf; ++t) {
        const int j = ws.m_falloffList[t];
        const auto& d = ws.m_reactions[j];
        double* x = fa + 4 * t;
        x[0] = ws.m_n0[j] * lnT - ws.m_E0[j] * invRT;
        x[1] = x[2] = x[3] = 0;
        if (d.falloffKind == 1 || d.falloffKind == 3) {
            x[1] = -std::min(T / d.falloff[1], TroeExponentGuard);
            x[2] = -std::min(T / d.falloff[2], TroeExponentGuard);
            if (d.falloffKind == 1) x[3] = -std::min(d.falloff[3] / T, TroeExponentGuard);
        } else if (d.falloffKind == 2) {
            x[1] = -d.falloff[1] / T;  // no guard in the SRI form
            x[2] = -T / d.falloff[2];
        }
    }
    expArray(fa, fe, 4 * nf);
    for (int t = 0; t < nf; ++t) {
        const int j = ws.m_falloffList[t];
        const auto& d = ws.m_reactions[j];
        const double* e = fe + 4 * t;
        ws.m_k0[j] = ws.m_A0[j] * e[0];
        if (d.falloffKind == 1 || d.falloffKind == 3) {
            const double a = d.falloff[0];
            double fcent = (1 - a) * e[1] + a * e[2];
            if (d.falloffKind == 1) fcent += e[3];
            ws.m_centre[j] = std::log(fcent) / Ln10;
        } else if (d.falloffKind == 2) {
            ws.m_centre[j] = d.falloff[0] * e[1] + e[2];
        }
    }

    // Kc = exp(-dG/RT) / (R2 T)^(nR - nL) and its reciprocal (the reverse rate uses 1/Kc),
    // formed from per-species exp(-g/RT) and exp(g/RT) so that a reaction costs
    // multiplications only; a product that leaves the safe range (large g at low T) is redone
    // with one exponential.
    const double R2T = ws.m_gasConstantConc * T;
    const double lnR2T = std::log(R2T);
    const double invR2T = 1.0 / R2T;
    const double* g = ws.m_gOverRT.data();  // padding slot NS holds 0
    double* eg = ws.m_expMinusG.data();     // padding slot NS holds 1
    double* egInv = ws.m_expPlusG.data();   // padding slot NS holds 1
    for (int i = 0; i < ns; ++i) arg[i] = -g[i];
    expArray(arg, eg, ns);
    // Pairs (exp(-g), exp(g)) side by side, so one product over a reaction's slots gives Kc
    // and 1/Kc together; reactants enter swapped.
    V2d* pair = reinterpret_cast<V2d*>(ws.m_gPairs.data());  // 16-byte aligned; slot NS (1, 1)
    for (int i = 0; i < ns; ++i) {
        egInv[i] = 1.0 / eg[i];
        pair[i] = V2d{eg[i], egInv[i]};
    }
    double* invKc = ws.m_invKc.data();
    for (int j = 0; j < nr; ++j) {
        const auto& d = ws.m_hot[j];
        if (!(d.flags & HotReversible)) {
            ws.m_kc[j] = 0;
            invKc[j] = 0;
            continue;
        }
        const auto& p = d.products;
        const auto& r = d.reactants;
        const V2d fwd = pair[p[0]] * pair[p[1]] * pair[p[2]] * pair[p[3]] * pair[p[4]] * pair[p[5]];
        const V2d rev = pair[r[0]] * pair[r[1]] * pair[r[2]];
        double kc = fwd[0] * rev[1];
        double inv = fwd[1] * rev[0];
        const double dn = ws.m_dn[j];
        if (dn == 0) {
        } else if (dn == 1) {
            kc *= invR2T;
            inv *= R2T;
        } else if (dn == -1) {
            kc *= R2T;
            inv *= invR2T;
        } else {
            const double f = std::exp(-dn * lnR2T);
            kc *= f;
            inv /= f;
        }
        if (!(kc > 1e-280 && kc < 1e280)) {
            const double dG = g[p[0]] + g[p[1]] + g[p[2]] + g[p[3]] + g[p[4]] + g[p[5]] - g[r[0]] -
                              g[r[1]] - g[r[2]];
            kc = std::exp(-dG - dn * lnR2T);
            inv = 1.0 / kc;
        }
        ws.m_kc[j] = kc;
        invKc[j] = inv;
    }
    ws.m_T = T;
}

struct RateKernel {
    // Fall-off multiplier m(M) and its slope dm/dM for reaction j.
    static void falloff(const RateWorkspace& ws, int j, double M, double T, double& m, double& dmdM)
    {
        const auto& d = ws.m_reactions[j];
        const double kInf = ws.m_kInf[j];
        const double k0 = ws.m_k0[j];
        const double pr = k0 * M / kInf;
        if (!(pr > 0)) {  // k0 = 0: the low-pressure limit switches the reaction off
            m = 0;
            dmdM = 0;
            return;
        }
        const double lind = pr / (1 + pr);
        double F = 1;
        double dlnFdL = 0;  // d ln F / d log10 Pr
        if (d.falloffKind == 1 || d.falloffKind == 3) {
            const double L = std::log10(pr);
            const double fc = ws.m_centre[j];
            const double c = -0.4 - 0.67 * fc;
            const double nn = 0.75 - 1.27 * fc;
            const double u = L + c;
            const double den = nn - 0.14 * u;
            const double w = u / den;
            const double q = 1 + w * w;
            const double log10F = fc / q;
            F = std::exp(log10F * Ln10);
            const double dwdu = nn / (den * den);
            dlnFdL = Ln10 * (-2 * fc * w / (q * q)) * dwdu;
        } else if (d.falloffKind == 2) {
            const double L = std::log10(pr);
            const double X = 1 / (1 + L * L);
            F = std::pow(ws.m_centre[j], X);
            if (d.falloff[3] > 0) F *= d.falloff[3];
            if (d.falloff[4] != 0) F *= std::pow(T, d.falloff[4]);
            const double dXdL = -2 * L * X * X;
            dlnFdL = std::log(ws.m_centre[j]) * dXdL;
        }
        m = lind * F;
        // dm/dPr = F / (1 + Pr)^2 + Pr / (1 + Pr) dF/dPr, dF/dPr = F dlnF/dL / (Pr ln 10)
        const double dmdPr = F / ((1 + pr) * (1 + pr)) + F * dlnFdL / (Ln10 * (1 + pr));
        dmdM = dmdPr * k0 / kInf;
    }
};

void ComputeReactionRates(std::span<const double> concentrations, std::span<RatePair> production,
                          RateWorkspace& ws, double pressure, int TemperatureMode, double T,
                          std::span<const std::uint8_t> active, std::span<RatePair> rates,
                          bool wantHeat, bool wantTemperatureDerivative,
                          bool applySmallDifferenceCut)
{
    const int ns = ws.m_ns;
    const int nr = ws.m_nr;
    const bool energy = TemperatureMode == 1;
    if (concentrations.size() < static_cast<std::size_t>(ns + (energy ? 1 : 0)) ||
        production.size() < static_cast<std::size_t>(ns + (energy ? 1 : 0)) ||
        rates.size() < static_cast<std::size_t>(nr) ||
        (!active.empty() && active.size() < static_cast<std::size_t>(nr)))
        throw Error("ComputeReactionRates: array shorter than the mechanism");

    if (energy) T = concentrations[ns];
    ComputeTemperatureFunctions(T, ws);

    const double ctot = pressure / (T * ws.m_gasConstantConc);
    ws.m_ctot = ctot;
    double* c = ws.m_conc.data();  // c[ns] = 1 (padding)
    for (int i = 0; i < ns; ++i) c[i] = concentrations[i];
    RatePair* prod = ws.m_prod.data();  // row ns absorbs the padding slots
    static_assert(sizeof(RatePair) == sizeof(V2d));
    V2d* prodV = reinterpret_cast<V2d*>(prod);  // 16-byte aligned rows
    for (int i = 0; i <= ns; ++i) prod[i] = {0.0, 0.0};

    const double* h = ws.m_hOverRT.data();
    const double* kInf = ws.m_kInf.data();
    const double* invKc = ws.m_invKc.data();
    const RateWorkspace::HotReaction* hot = ws.m_hot.data();
    const bool all = active.empty();
    for (int j = 0; j < nr; ++j) {
        if (!all && active[j] == 0) continue;
        const auto& d = hot[j];
        double k = kInf[j];
        if (d.flags & (HotThirdBody | HotFalloff)) {
            double M = ctot;
            double m = 1;
            double dmdM = 0;
            if (d.flags & HotThirdBody) {
                M = d.base * ctot;
                for (int p = d.partnerBegin; p < d.partnerEnd; ++p)
                    M += ws.m_partnerExcess[p] * c[ws.m_partnerSpecies[p]];
                m = M;
                dmdM = 1;
                if (!(M > 0)) {  // no collision partner: the reaction stands still
                    ws.m_M[j] = M;
                    ws.m_mult[j] = 0;
                    ws.m_dmdM[j] = 0;
                    rates[j] = {0.0, 0.0};
                    continue;
                }
            }
            if (d.flags & HotFalloff) RateKernel::falloff(ws, j, M, T, m, dmdM);
            ws.m_M[j] = M;
            ws.m_mult[j] = m;
            ws.m_dmdM[j] = dmdM;
            k *= m;
        } else {
            ws.m_mult[j] = 1;
        }

        const auto& r = d.reactants;
        const auto& p = d.products;
        const double f = k * c[r[0]] * c[r[1]] * c[r[2]];
        double q = f;
        if (d.flags & HotReversible)
            q -= k * invKc[j] * c[p[0]] * c[p[1]] * c[p[2]] * c[p[3]] * c[p[4]] * c[p[5]];
        if (applySmallDifferenceCut && f != 0 && std::abs(q) < SmallDifferenceCut * std::abs(f))
            q = 0;
        rates[j] = {q, f};

        // Gross formation counts the positive side only: -q for a reactant when q < 0. Each
        // species row {net, gross} is updated as one two-lane vector.
        const double qNeg = q < 0 ? q : 0.0;
        const V2d lost{q, qNeg};
        const V2d gained{q, q - qNeg};
        for (int s = 0; s < d.reactantCount; ++s) prodV[r[s]] -= lost;
        for (int s = 0; s < d.productCount; ++s) prodV[p[s]] += gained;

        if (wantHeat) {
            if (d.flags & HotNoHeat) {
                rates[j][0] = 0;
            } else {
                const double dH = h[p[0]] + h[p[1]] + h[p[2]] + h[p[3]] + h[p[4]] + h[p[5]] -
                                  h[r[0]] - h[r[1]] - h[r[2]];
                rates[j][0] = q * dH * T;
            }
        }
    }
    for (int i = 0; i < ns; ++i) production[i] = prod[i];

    if (energy) {
        double A = 0;
        double B = 0;
        const double* cp = ws.m_cpOverR.data();
        double* x = ws.m_moleFrac.data();
        for (int i = 0; i < ns; ++i) {
            x[i] = c[i] / ctot;
            A -= production[i][0] * h[i];
            B += x[i] * cp[i];
        }
        production[ns] = {T * A / (B * ctot), 0.0};
        if (wantTemperatureDerivative) {
            for (int j = 0; j < nr; ++j) {
                if (!all && active[j] == 0) continue;
                rates[j][0] = -rates[j][0] / (B * ctot);
            }
        }
    }
}

} // namespace zarvion::postprocessor
