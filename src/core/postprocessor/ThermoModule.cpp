#include "postprocessor/ThermoModule.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <type_traits>

#include "postprocessor/ResultSet.h"
#include "shell/Error.h"

namespace zarvion::postprocessor {

namespace {

const double Ln10 = std::log(10.0);

constexpr std::uint8_t HotReversible = 1;
constexpr std::uint8_t HotThirdBody = 2;
constexpr std::uint8_t HotFalloff = 4;
constexpr std::uint8_t HotNoHeat = 8;
constexpr std::uint8_t HotShortProducts = 16;  // product slots 3 to 5 are padding
constexpr std::uint8_t HotTwoReactants = 32;   // reactant slot 2 is padding

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

// k = A exp(n lnT - E invRT) over an array, the exponential as in expArrayAvx2; arg receives
// the exponents (rounded as the scalar expression: no fused multiply-add here).
__attribute__((target("avx2"))) void arrheniusArrayAvx2(const double* A, const double* n,
                                                      const double* E, double lnT,
                                                      double invRT, double* arg, double* k,
                                                      int count)
{
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        V4d nn, e;
        std::memcpy(&nn, n + i, sizeof nn);
        std::memcpy(&e, E + i, sizeof e);
        const V4d v = nn * lnT - e * invRT;
        std::memcpy(arg + i, &v, sizeof v);
    }
    for (; i < count; ++i) arg[i] = n[i] * lnT - E[i] * invRT;
    expArrayAvx2(arg, k, count);
    i = 0;
    for (; i + 4 <= count; i += 4) {
        V4d a, y;
        std::memcpy(&a, A + i, sizeof a);
        std::memcpy(&y, k + i, sizeof y);
        y = a * y;
        std::memcpy(k + i, &y, sizeof y);
    }
    for (; i < count; ++i) k[i] = A[i] * k[i];
}

void arrheniusArray(const double* A, const double* n, const double* E, double lnT, double invRT,
                    double* arg, double* k, int count)
{
    static const bool simd = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    if (simd) {
        arrheniusArrayAvx2(A, n, E, lnT, invRT, arg, k, count);
        return;
    }
    for (int i = 0; i < count; ++i) k[i] = A[i] * std::exp(n[i] * lnT - E[i] * invRT);
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

// y = ln(x) over an array, AVX2 lanes as for expArray: x = 2^e m with m in [sqrt(1/2), sqrt(2)),
// ln m = 2 atanh(s), s = (m - 1) / (m + 1), |s| <= 0.1716, by its odd series to s^21 (truncation
// below 1e-17 relative); ln 2 in two parts. Lanes outside the normal positive range (0,
// negatives, subnormals, infinity, NaN) are redone with std::log.
__attribute__((target("avx2,fma"))) void logArrayAvx2(const double* x, double* y, int n)
{
    const V4i mantissa = {0x000FFFFFFFFFFFFFLL, 0x000FFFFFFFFFFFFFLL, 0x000FFFFFFFFFFFFFLL,
                          0x000FFFFFFFFFFFFFLL};
    const V4i oneBits = {0x3FF0000000000000LL, 0x3FF0000000000000LL, 0x3FF0000000000000LL,
                         0x3FF0000000000000LL};
    const V4d magic = {6755399441055744.0, 6755399441055744.0, 6755399441055744.0,
                       6755399441055744.0};
    const double sqrt2 = 1.41421356237309504880;
    const double ln2Hi = 6.93147180369123816490e-01;
    const double ln2Lo = 1.90821492927058770002e-10;
    int i = 0;
    for (; i + 4 <= n; i += 4) {
        V4d v;
        std::memcpy(&v, x + i, sizeof v);
        const V4i bits = (V4i)v;
        V4i e = (bits >> 52) - 1023;
        V4d m = (V4d)((bits & mantissa) | oneBits);  // [1, 2)
        const V4i big = m > sqrt2;                      // -1 where m is halved
        m = (V4d)(((V4i)m & ~big) | ((V4i)(m * 0.5) & big));
        e -= big;
        const V4d k = (V4d)(e + (V4i)magic) - magic;
        const V4d f = m - 1.0;
        const V4d s = f / (m + 1.0);
        const V4d z = s * s;
        V4d p = z * (1.0 / 21) + 1.0 / 19;
        p = p * z + 1.0 / 17;
        p = p * z + 1.0 / 15;
        p = p * z + 1.0 / 13;
        p = p * z + 1.0 / 11;
        p = p * z + 1.0 / 9;
        p = p * z + 1.0 / 7;
        p = p * z + 1.0 / 5;
        p = p * z + 1.0 / 3;
        const V4d s2 = s + s;
        const V4d res = k * ln2Hi + (s2 + (s2 * z * p + k * ln2Lo));
        std::memcpy(y + i, &res, sizeof res);
    }
    for (; i < n; ++i) y[i] = std::log(x[i]);
    for (int j = 0; j < n; ++j)
        if (!(x[j] >= 2.2250738585072014e-308 && x[j] <= 1.7976931348623157e308))
            y[j] = std::log(x[j]);
}

void logArray(const double* x, double* y, int n)
{
    static const bool simd = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    if (simd) {
        logArrayAvx2(x, y, n);
        return;
    }
    for (int i = 0; i < n; ++i) y[i] = std::log(x[i]);
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
                                            (d.reversible == -1 ? HotNoHeat : 0) |
                                            (d.products[3] == ns && d.products[4] == ns &&
                                                     d.products[5] == ns
                                                 ? HotShortProducts
                                                 : 0) |
                                            (d.reactants[2] == ns ? HotTwoReactants : 0));
        h.base = d.thirdBodyKind > 0 ? 1 : 0;
        h.partnerBegin = static_cast<std::int32_t>(m_partnerSpecies.size());
        for (int k = 0; k < d.partnerCount; ++k) {
            m_partnerSpecies.push_back(d.partners[k]);
            m_partnerExcess.push_back(d.efficiencies[k] - h.base);
        }
        h.partnerEnd = static_cast<std::int32_t>(m_partnerSpecies.size());
    }

    m_shortReversible.clear();
    m_longReversible.clear();
    for (int j = 0; j < m_nr; ++j) {
        const auto& h = m_hot[j];
        if (!(h.flags & HotReversible)) continue;
        const double dn = m_dn[j];
        if (h.products[3] == ns && h.products[4] == ns && h.products[5] == ns &&
            (dn == 0 || dn == 1 || dn == -1))
            m_shortReversible.push_back(
                {j, {h.products[0], h.products[1], h.products[2]}, h.reactants});
        else
            m_longReversible.push_back(j);
    }

    // Grouped by dn = 0, 1, -1, so that each group scales by one fixed factor, and by width.
    auto group = [this, ns](const ShortReversible& e) {
        const double dn = m_dn[e.reaction];
        const int wide = e.products[2] != ns || e.reactants[2] != ns ? 1 : 0;
        return 2 * (dn == 0 ? 0 : dn == 1 ? 1 : 2) + wide;
    };
    std::stable_sort(m_shortReversible.begin(), m_shortReversible.end(),
                     [&group](const ShortReversible& a, const ShortReversible& b) {
                         return group(a) < group(b);
                     });
    m_shortGroupEnd.fill(0);
    for (const auto& e : m_shortReversible)
        for (int k = group(e); k < 6; ++k) ++m_shortGroupEnd[k];

    // Occurrence lists by counting sort; slots at the padding species are left out.
    m_occurrenceBegin.assign(ns + 1, 0);
    for (const auto& d : m_reactions) {
        for (int k = 0; k < d.reactantCount; ++k)
            if (d.reactants[k] < ns) ++m_occurrenceBegin[d.reactants[k] + 1];
        for (int k = 0; k < d.productCount; ++k)
            if (d.products[k] < ns) ++m_occurrenceBegin[d.products[k] + 1];
    }
    for (int i = 0; i < ns; ++i) m_occurrenceBegin[i + 1] += m_occurrenceBegin[i];
    m_occurrence.assign(m_occurrenceBegin[ns], 0);
    {
        std::vector<std::int32_t> next(m_occurrenceBegin.begin(), m_occurrenceBegin.end() - 1);
        for (int j = 0; j < m_nr; ++j) {
            const auto& d = m_reactions[j];
            for (int k = 0; k < d.reactantCount; ++k)
                if (d.reactants[k] < ns) m_occurrence[next[d.reactants[k]]++] = 2 * j + 1;
            for (int k = 0; k < d.productCount; ++k)
                if (d.products[k] < ns) m_occurrence[next[d.products[k]]++] = 2 * j;
        }
    }
    m_flux.assign(4 * static_cast<std::size_t>(m_nr) + 4, 0.0);
    const std::size_t nf = m_falloffList.size();
    m_falloffActive.assign(nf + 1, 0);
    m_falloffPr.assign(nf + 1, 0.0);
    m_falloffLog.assign(nf + 1, 0.0);
    m_falloffExpArg.assign(nf + 1, 0.0);
    m_falloffF.assign(nf + 1, 0.0);

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
    m_expArg.assign(std::max(ns, m_nr) + 1, 0.0);
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
    arrheniusArray(A, n, E, lnT, invRT, arg, kInf, nr);

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
    double* fcent = ws.m_falloffPr.data();  // Troe Fcent, 1 for the other forms
    double* lnFcent = ws.m_falloffLog.data();
    for (int t = 0; t < nf; ++t) {
        const int j = ws.m_falloffList[t];
        const auto& d = ws.m_reactions[j];
        const double* e = fe + 4 * t;
        ws.m_k0[j] = ws.m_A0[j] * e[0];
        fcent[t] = 1;
        if (d.falloffKind == 1 || d.falloffKind == 3) {
            const double a = d.falloff[0];
            fcent[t] = (1 - a) * e[1] + a * e[2];
            if (d.falloffKind == 1) fcent[t] += e[3];
        } else if (d.falloffKind == 2) {
            ws.m_centre[j] = d.falloff[0] * e[1] + e[2];
        }
    }
    logArray(fcent, lnFcent, nf);
    for (int t = 0; t < nf; ++t) {
        const int j = ws.m_falloffList[t];
        const int kind = ws.m_reactions[j].falloffKind;
        if (kind == 1 || kind == 3) ws.m_centre[j] = lnFcent[t] / Ln10;
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
    // Reactions that are not reversible keep Kc = 1/Kc = 0 from the build.
    double* kcOut = ws.m_kc.data();
    double* invKc = ws.m_invKc.data();
    const double* dnOf = ws.m_dn.data();
    auto finish = [&](int j, const std::int32_t* p, const std::int32_t* r, double kc,
                      double inv) __attribute__((always_inline)) {
        const double dn = dnOf[j];
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
        kcOut[j] = kc;
        invKc[j] = inv;
    };
    const auto* shortList = ws.m_shortReversible.data();
    // Factors (on Kc, on 1/Kc) of the groups dn = 0, 1, -1.
    const V2d groupScale[3] = {V2d{1.0, 1.0}, V2d{invR2T, R2T}, V2d{R2T, invR2T}};
    // Slot 2 of a narrow entry is padding (1, 1), so both widths give the same numbers.
    auto shortKc = [&](const RateWorkspace::ShortReversible& s, V2d scale,
                       auto wide) __attribute__((always_inline)) {
        const auto& p = s.products;
        const auto& r = s.reactants;
        V2d fwd = pair[p[0]] * pair[p[1]];
        V2d rev = pair[r[0]] * pair[r[1]];
        if constexpr (decltype(wide)::value) {
            fwd *= pair[p[2]];
            rev *= pair[r[2]];
        }
        double kc = fwd[0] * rev[1] * scale[0];
        double inv = fwd[1] * rev[0] * scale[1];
        const int j = s.reaction;
        if (!(kc > 1e-280 && kc < 1e280)) {
            const auto& hp = ws.m_hot[j].products;
            const auto& hr = ws.m_hot[j].reactants;
            const double dG = g[hp[0]] + g[hp[1]] + g[hp[2]] - g[hr[0]] - g[hr[1]] - g[hr[2]];
            kc = std::exp(-dG - dnOf[j] * lnR2T);
            inv = 1.0 / kc;
        }
        kcOut[j] = kc;
        invKc[j] = inv;
    };
    for (int grp = 0, e = 0; grp < 6; ++grp) {
        const int end = ws.m_shortGroupEnd[grp];
        const V2d scale = groupScale[grp / 2];
        if (grp % 2 == 0)
            for (; e < end; ++e) shortKc(shortList[e], scale, std::false_type{});
        else
            for (; e < end; ++e) shortKc(shortList[e], scale, std::true_type{});
    }
    for (const int j : ws.m_longReversible) {
        const auto& p = ws.m_hot[j].products;
        const auto& r = ws.m_hot[j].reactants;
        const V2d fwd = pair[p[0]] * pair[p[1]] * pair[p[2]] * pair[p[3]] * pair[p[4]] * pair[p[5]];
        const V2d rev = pair[r[0]] * pair[r[1]] * pair[r[2]];
        finish(j, p.data(), r.data(), fwd[0] * rev[1], fwd[1] * rev[0]);
    }
    ws.m_T = T;
}

struct RateKernel {
    // Fall-off multipliers m(M) and slopes dm/dM of the active fall-off reactions, with the
    // logarithms of Pr and the exponentials of the Troe form taken in batches. Leaves M, m and
    // dm/dM in the workspace for the main loop; a third-body fall-off reaction without any
    // collision partner (M <= 0) is left with m = 0 for the main loop to stop.
    static void falloffBatch(RateWorkspace& ws, const double* c, double ctot, double T,
                             std::span<const std::uint8_t> active)
    {
        const int nf = static_cast<int>(ws.m_falloffList.size());
        std::int32_t* list = ws.m_falloffActive.data();
        double* pr = ws.m_falloffPr.data();
        double* lnPr = ws.m_falloffLog.data();  // ln Pr, then d ln F / d log10 Pr
        double* arg = ws.m_falloffExpArg.data();
        double* Fv = ws.m_falloffF.data();
        int na = 0;
        for (int t = 0; t < nf; ++t) {
            const int j = ws.m_falloffList[t];
            if (!active.empty() && active[j] == 0) continue;
            const auto& h = ws.m_hot[j];
            double M = ctot;
            if (h.flags & HotThirdBody) {
                M = h.base * ctot;
                for (int p = h.partnerBegin; p < h.partnerEnd; ++p)
                    M += ws.m_partnerExcess[p] * c[ws.m_partnerSpecies[p]];
            }
            ws.m_M[j] = M;
            const double x = ws.m_k0[j] * M / ws.m_kInf[j];
            if (((h.flags & HotThirdBody) && !(M > 0)) || !(x > 0)) {
                // No collision partner, or k0 = 0: the low-pressure limit switches it off.
                ws.m_mult[j] = 0;
                ws.m_dmdM[j] = 0;
                continue;
            }
            list[na] = j;
            pr[na] = x;
            ++na;
        }
        logArray(pr, lnPr, na);
        for (int a = 0; a < na; ++a) {
            const auto& d = ws.m_reactions[list[a]];
            arg[a] = 0;
            if (d.falloffKind == 1 || d.falloffKind == 3) {
                const double L = lnPr[a] / Ln10;
                const double fc = ws.m_centre[list[a]];
                const double cc = -0.4 - 0.67 * fc;
                const double nn = 0.75 - 1.27 * fc;
                const double u = L + cc;
                const double den = nn - 0.14 * u;
                const double w = u / den;
                const double q = 1 + w * w;
                arg[a] = fc / q * Ln10;  // F = 10^(log10 Fcent / q)
                const double dwdu = nn / (den * den);
                lnPr[a] = Ln10 * (-2 * fc * w / (q * q)) * dwdu;
            }
        }
        expArray(arg, Fv, na);
        for (int a = 0; a < na; ++a) {
            const int j = list[a];
            const auto& d = ws.m_reactions[j];
            const double x = pr[a];
            double F = 1;
            double dlnFdL = 0;  // d ln F / d log10 Pr
            if (d.falloffKind == 1 || d.falloffKind == 3) {
                F = Fv[a];
                dlnFdL = lnPr[a];
            } else if (d.falloffKind == 2) {
                const double L = std::log10(x);
                const double X = 1 / (1 + L * L);
                F = std::pow(ws.m_centre[j], X);
                if (d.falloff[3] > 0) F *= d.falloff[3];
                if (d.falloff[4] != 0) F *= std::pow(T, d.falloff[4]);
                const double dXdL = -2 * L * X * X;
                dlnFdL = std::log(ws.m_centre[j]) * dXdL;
            }
            const double lind = x / (1 + x);
            // dm/dPr = F / (1 + Pr)^2 + Pr / (1 + Pr) dF/dPr, dF/dPr = F dlnF/dL / (Pr ln 10)
            const double dmdPr = F / ((1 + x) * (1 + x)) + F * dlnFdL / (Ln10 * (1 + x));
            ws.m_mult[j] = lind * F;
            ws.m_dmdM[j] = dmdPr * ws.m_k0[j] / ws.m_kInf[j];
        }
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

    RateKernel::falloffBatch(ws, c, ctot, T, active);

    static_assert(sizeof(RatePair) == sizeof(V2d));
    V2d* flux = reinterpret_cast<V2d*>(ws.m_flux.data());  // 16-byte aligned pairs
    const double* h = ws.m_hOverRT.data();
    const double* kInf = ws.m_kInf.data();
    const double* invKc = ws.m_invKc.data();
    const RateWorkspace::HotReaction* hot = ws.m_hot.data();
    const bool all = active.empty();
    for (int j = 0; j < nr; ++j) {
        if (!all && active[j] == 0) {
            flux[2 * j] = flux[2 * j + 1] = V2d{0.0, 0.0};
            continue;
        }
        const auto& d = hot[j];
        double k = kInf[j];
        if (d.flags & HotFalloff) {
            if ((d.flags & HotThirdBody) && !(ws.m_M[j] > 0)) {  // no collision partner
                rates[j] = {0.0, 0.0};
                flux[2 * j] = flux[2 * j + 1] = V2d{0.0, 0.0};
                continue;
            }
            k *= ws.m_mult[j];
        } else if (d.flags & HotThirdBody) {
            double M = d.base * ctot;
            for (int p = d.partnerBegin; p < d.partnerEnd; ++p)
                M += ws.m_partnerExcess[p] * c[ws.m_partnerSpecies[p]];
            ws.m_M[j] = M;
            if (!(M > 0)) {  // no collision partner: the reaction stands still
                ws.m_mult[j] = 0;
                ws.m_dmdM[j] = 0;
                rates[j] = {0.0, 0.0};
                flux[2 * j] = flux[2 * j + 1] = V2d{0.0, 0.0};
                continue;
            }
            ws.m_mult[j] = M;
            ws.m_dmdM[j] = 1;
            k *= M;
        } else {
            ws.m_mult[j] = 1;
        }

        const auto& r = d.reactants;
        const auto& p = d.products;
        const double f = d.flags & HotTwoReactants ? k * c[r[0]] * c[r[1]]
                                                   : k * c[r[0]] * c[r[1]] * c[r[2]];
        double q = f;
        if (d.flags & HotReversible) {
            // Padding slots hold concentration 1, so the short product is the same number.
            if (d.flags & HotShortProducts)
                q -= k * invKc[j] * c[p[0]] * c[p[1]] * c[p[2]];
            else
                q -= k * invKc[j] * c[p[0]] * c[p[1]] * c[p[2]] * c[p[3]] * c[p[4]] * c[p[5]];
        }
        if (applySmallDifferenceCut && f != 0 && std::abs(q) < SmallDifferenceCut * std::abs(f))
            q = 0;
        rates[j] = {q, f};

        // Gross formation counts the positive side only: -q for a reactant when q < 0.
        const double qNeg = q < 0 ? q : 0.0;
        flux[2 * j] = V2d{q, q - qNeg};
        flux[2 * j + 1] = V2d{-q, -qNeg};

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

    // Each species row sums its terms in reaction order, one two-lane vector at a time.
    const std::int32_t* occ = ws.m_occurrence.data();
    const std::int32_t* begin = ws.m_occurrenceBegin.data();
    for (int i = 0; i < ns; ++i) {
        V2d acc{0.0, 0.0};
        for (int o = begin[i]; o < begin[i + 1]; ++o) acc += flux[occ[o]];
        production[i] = {acc[0], acc[1]};
    }

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
