#pragma once
// THERMO_Module: species thermodynamics and reaction rates at one state. The one rate routine
// of the program: the solver's right-hand side, every rate view and the reducer call it.
//
// A RateWorkspace is built once per mechanism (flat 0-based arrays, every scratch buffer
// sized at load); the routines then run without allocation:
//
//   RateWorkspace ws(mechanism);                         // or from a ResultSet
//   ComputeReactionRates(conc, production, ws, P, mode, T, {}, rates, false, false);
//
// Conventions of the rate routines (all arrays 0-based: species i of the file at i - 1,
// reaction j at j - 1):
//   concentrations  [0..NS-1] mol/cm^3; with TemperatureMode 1 the temperature [K] at [NS]
//   production      [0..NS-1+mode] pairs {net, gross formation} mol/(cm^3 s); with mode 1,
//                   production[NS][0] is dT/dt [K/s]
//   rates           [0..NR-1] pairs {net q (or heat term), forward f} mol/(cm^3 s)
//   active          [0..NR-1] nonzero = evaluate; an empty span means all reactions

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "solverfile/Mechanism.h"

namespace zarvion::postprocessor {

struct ResultSet;

//! Net rates with |q| / |f| below this are reported as exactly 0 (partial equilibrium).
inline constexpr double SmallDifferenceCut = 1e-6;

//! Arguments above this are clipped before exp(-x) in the Troe broadening centre.
inline constexpr double TroeExponentGuard = 500.0;

//! {net, gross} production of a species or {net, forward} rate of a reaction.
using RatePair = std::array<double, 2>;

//! Mechanism data in the layout the rate loops run over, plus all per-state scratch.
//! Build once per loaded mechanism; not thread-safe (one per thread).
class RateWorkspace {
public:
    RateWorkspace() = default;

    //! From the rows of a solver file's input side.
    explicit RateWorkspace(const solverfile::Mechanism& mechanism);

    //! From the results reader's copy of the same rows.
    explicit RateWorkspace(const ResultSet& results);

    //! From raw rows; GasConstantEnergy in the units of E, GasConstantConc with the pressure
    //! unit of the callers (cm^3 atm/(mol K) for pressures in atm).
    RateWorkspace(std::span<const solverfile::ThermoRecord> thermo,
                  std::span<const solverfile::ReactionInts> ints,
                  std::span<const solverfile::ReactionReals> reals, double GasConstantEnergy,
                  double GasConstantConc);

    int speciesCount() const { return m_ns; }
    int reactionCount() const { return m_nr; }
    double GasConstantEnergy() const { return m_gasConstantEnergy; }
    double GasConstantConc() const { return m_gasConstantConc; }
    //! Molecular weights [g/mol], slot 15 of each thermo row.
    std::span<const double> molecularWeights() const { return m_weight; }

    //! Temperature of the last ComputeTemperatureFunctions call [K].
    double temperature() const { return m_T; }
    //! Per-species results at temperature(): h/RT, cp/R, s/R, g/RT = h/RT - s/R.
    std::span<const double> hOverRT() const { return m_hOverRT; }
    std::span<const double> cpOverR() const { return m_cpOverR; }
    std::span<const double> sOverR() const { return m_sOverR; }
    std::span<const double> gOverRT() const { return m_gOverRT; }
    //! Per-reaction results at temperature(): the values of real slots 22 to 25.
    std::span<const double> kInfinity() const { return m_kInf; }          //!< slot 22
    std::span<const double> equilibriumConstant() const { return m_kc; }  //!< slot 23
    std::span<const double> kLow() const { return m_k0; }                 //!< slot 24
    std::span<const double> falloffCentre() const { return m_centre; }    //!< slot 25

    //! Copies the per-reaction temperature results into real slots 22 to 25 of reals.
    void writeComputedSlots(std::span<solverfile::ReactionReals> reals) const;

    //! Third-body concentration M and rate multiplier m of each reaction at the last
    //! ComputeReactionRates call (m = 1 for plain reactions, M = 0 when not used).
    std::span<const double> thirdBodyConcentration() const { return m_M; }
    std::span<const double> rateMultiplier() const { return m_mult; }
    //! dm/dM of each reaction at the last call (1 for plain third-body reactions, the fall-off
    //! slope through Pr for fall-off reactions, 0 otherwise); used by analytic Jacobians.
    std::span<const double> multiplierSlope() const { return m_dmdM; }
    //! Total concentration P / (GasConstantConc T) at the last call [mol/cm^3].
    double totalConcentration() const { return m_ctot; }

    // Flat per-reaction data, public for the Jacobian and the reducer; read-only by contract.
    struct ReactionData {
        std::array<std::int32_t, 3> reactants;  //!< 0-based species, padded with NS (c = 1)
        std::array<std::int32_t, 6> products;   //!< 0-based species, padded with NS (c = 1)
        std::int32_t reactantCount = 0;
        std::int32_t productCount = 0;
        std::int32_t thirdBodyKind = 0;
        std::int32_t partnerCount = 0;
        std::int32_t hasLowLimit = 0;
        std::int32_t falloffKind = 0;
        std::int32_t reversible = 0;
        std::array<std::int32_t, 10> partners;   //!< 0-based species
        std::array<double, 10> efficiencies;
        std::array<double, 5> falloff;           //!< real slots 7-11
    };
    const std::vector<ReactionData>& reactions() const { return m_reactions; }

private:
    friend void ComputeTemperatureFunctions(double T, RateWorkspace& ws);
    friend void ComputeReactionRates(std::span<const double>, std::span<RatePair>,
                                     RateWorkspace&, double, int, double,
                                     std::span<const std::uint8_t>, std::span<RatePair>, bool,
                                     bool, bool);
    friend struct RateKernel;

    void build(std::span<const solverfile::ThermoRecord> thermo,
               std::span<const solverfile::ReactionInts> ints,
               std::span<const solverfile::ReactionReals> reals);

    int m_ns = 0;
    int m_nr = 0;
    double m_gasConstantEnergy = 0;
    double m_gasConstantConc = 0;
    double m_T = -1;

    // Species: coefficients a1..a7 above and at/below the common temperature.
    std::vector<std::array<double, 7>> m_high;
    std::vector<std::array<double, 7>> m_low;
    std::vector<double> m_tCommon;
    std::vector<std::uint8_t> m_highUsable;  // sum of a1..a7 nonzero
    std::vector<std::uint8_t> m_lowUsable;
    std::vector<double> m_weight;

    // Reactions: rate parameters in contiguous arrays, and the part of each record that the
    // rate loop touches packed into one cache line.
    struct HotReaction {
        std::array<std::int32_t, 3> reactants;
        std::array<std::int32_t, 6> products;
        std::int16_t reactantCount;
        std::int16_t productCount;
        std::uint8_t flags;  // bit 0 reversible, 1 third body, 2 fall-off, 3 left out of heat
        std::uint8_t base;   // 1 when M starts from the total concentration
        std::int32_t partnerBegin;
        std::int32_t partnerEnd;
    };
    std::vector<ReactionData> m_reactions;
    std::vector<HotReaction> m_hot;
    std::vector<std::int32_t> m_partnerSpecies;
    std::vector<double> m_partnerExcess;  // e - base
    std::vector<double> m_A, m_n, m_E;        // slots 1-3
    std::vector<double> m_A0, m_n0, m_E0;     // slots 4-6
    std::vector<double> m_dn;                 // nR - nL (molecule counts, slots 11 - 10)
    std::vector<std::int32_t> m_falloffList;  // reactions with a low limit
    // Reversible reactions with at most three products (the common case), whose Kc takes
    // three product and three reactant slots; the rest go through the full six slots.
    struct ShortReversible {
        std::int32_t reaction;
        std::array<std::int32_t, 3> products;
        std::array<std::int32_t, 3> reactants;
    };
    // Grouped by dn (0, 1, -1) and within each by width (two slots a side, or three).
    std::vector<ShortReversible> m_shortReversible;
    std::array<int, 6> m_shortGroupEnd{};
    std::vector<std::int32_t> m_longReversible;
    // Species occurrences in reaction order (reactant slots, then product slots): index
    // 2 j for a product slot of reaction j, 2 j + 1 for a reactant slot, into m_flux.
    std::vector<std::int32_t> m_occurrenceBegin;  // NS + 1 entries
    std::vector<std::int32_t> m_occurrence;

    // Per-state results.
    std::vector<double> m_hOverRT, m_cpOverR, m_sOverR, m_gOverRT, m_expMinusG, m_expPlusG;
    std::vector<double> m_kInf, m_kc, m_k0, m_centre, m_invKc;
    std::vector<double> m_M, m_mult, m_dmdM;
    double m_ctot = 0;
    std::vector<double> m_conc;     // NS + 1 entries, last = 1 (padding slot)
    std::vector<double> m_expArg;  // arguments of batched exponentials
    std::vector<double> m_falloffArg, m_falloffExp;  // four a fall-off reaction
    std::vector<double> m_gPairs;  // (exp(-g/RT), exp(g/RT)) per species, NS + 1 pairs
    std::vector<double> m_moleFrac;
    // Per reaction the two-lane terms it adds to a product's and a reactant's {net, gross}
    // production row: (q, q - min(q, 0)) and (-q, -min(q, 0)).
    std::vector<double> m_flux;
    // Fall-off batch at one state: active reactions with Pr > 0, their Pr, then ln Pr, then
    // the exponent of F and F. At a new temperature, Pr and ln Pr hold Fcent and ln Fcent.
    std::vector<std::int32_t> m_falloffActive;
    std::vector<double> m_falloffPr, m_falloffLog, m_falloffExpArg, m_falloffF;
};

//! Species polynomial at T: coefficients[1..14] as in a ThermoRecord (index 0 unused), the
//! range at slots 1-7 used when Tcommon < T, slots 8-14 when T <= Tcommon; a range whose seven
//! coefficients sum to 0 gives all three results 0. powers[1] = ln T, powers[2..4] = T^2..T^4.
void EvaluateThermoPolynomial(const double* coefficients, double T, double Tcommon,
                              const double* powers, double& hOverRT, double& cpOverR,
                              double& sOverR);

//! Temperature-only work for all species (h/RT, cp/R, s/R, g/RT) and all reactions
//! (k-infinity, Kc, k0, Troe log10 Fcent or SRI base). Repeated calls at the same T return
//! at once.
void ComputeTemperatureFunctions(double T, RateWorkspace& ws);

//! Rates and production at one state. T is used when TemperatureMode is 0, concentrations[NS]
//! when it is 1. pressure in the unit that GasConstantConc expects. Inactive reactions keep
//! their rates row and add nothing; production is zeroed first. wantHeat turns rates[j][0]
//! into q x (sum of h/RT over products - over reactants) x T (0 for Reversible = -1);
//! wantTemperatureDerivative (mode 1 only) then divides it by -(Ctot x sum x_i cp_i/R), the
//! reaction's share of dT/dt [K/s]. applySmallDifferenceCut = false keeps exact net rates
//! (the integrator's right-hand side).
void ComputeReactionRates(std::span<const double> concentrations, std::span<RatePair> production,
                          RateWorkspace& ws, double pressure, int TemperatureMode, double T,
                          std::span<const std::uint8_t> active, std::span<RatePair> rates,
                          bool wantHeat, bool wantTemperatureDerivative,
                          bool applySmallDifferenceCut = true);

} // namespace zarvion::postprocessor
