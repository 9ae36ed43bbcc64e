// The selection of one row: flux-share cut-off per target, closure over species and third
// bodies, ties, the temperature ranking. Expected sets are worked out by hand.

#include <gtest/gtest.h>

#include "reduction/ReductionEngine.h"
#include "shell/Error.h"

namespace zarvion::reduction {
namespace {

using Flags = std::vector<std::uint8_t>;

ReductionTables Tables(int species, const std::vector<solverfile::ReactionInts>& ints)
{
    ReductionTables t;
    const std::vector<std::string> names = {"A", "B", "C", "D", "E"};
    LoadReductionTables(t, species, {names.begin(), names.begin() + species},
                        static_cast<int>(ints.size()), ints,
                        std::vector<solverfile::ReactionReals>(ints.size()));
    t.FirstRowConcentrations.assign(species, 1.0);
    return t;
}

//! One selection on fresh flags after setting the rates: the kept species and reactions.
std::pair<Flags, Flags> Select(ReductionTables& t, const std::vector<double>& rates,
                               std::vector<int> targets, std::vector<double> parameters,
                               double others, double temperature = -1)
{
    for (std::size_t r = 0; r < rates.size(); ++r) {
        t.RateTable[r] = {static_cast<int>(r) + 1, rates[r]};
    }
    const ReductionRequest q{"", 0, temperature, std::move(parameters), others,
                             std::move(targets), 1};
    RowFlags s;
    RowFlags r;
    s.reset(static_cast<std::size_t>(t.NumSpecies));
    r.reset(static_cast<std::size_t>(t.NumReactions));
    SelectRow(t, q, s, r);
    return {s.kept, r.kept};
}

// Species 1 A, 2 B, 3 C, 4 D, 5 E.
//   r1  A + B = C
//   r2  A = D
//   r3  A + C = A + D            (A only a catalyst)
//   r4  C + D + M = B            (M with partner E, efficiency 5)
ReductionTables FourReactions()
{
    ReductionTables t = Tables(5, {{0, 1, 2, 0, 3, 0, 0, 0, 0, 0, 2, 1, 0, 0, 0, 0, 1},
                                   {0, 1, 0, 0, 4, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1},
                                   {0, 1, 3, 0, 1, 4, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 1},
                                   {0, 3, 4, 0, 2, 0, 0, 0, 0, 0, 2, 1, 2, 1, 0, 0, 1, 5}});
    t.ReactionReals[3][12] = 5.0;
    return t;
}

TEST(Selection, TablesCountNetCoefficientsAndTexts)
{
    const ReductionTables t = FourReactions();
    EXPECT_EQ(t.net(1, 1), -1);
    EXPECT_EQ(t.net(3, 1), 0); // catalyst
    EXPECT_EQ(t.net(3, 4), 1);
    EXPECT_EQ(t.SpeciesReactionCount, (std::vector<int>{2, 2, 3, 3, 0}));
    EXPECT_EQ(t.ReactionTexts[0], "A + B= C");
    EXPECT_EQ(t.ReactionTexts[3], "C + D= B");
    EXPECT_FALSE(t.KeptSpecies[0]);
    ReductionTables u;
    EXPECT_THROW(LoadReductionTables(u, 5, {"A"}, 0, {}, {}), zarvion::Error);
}

TEST(Selection, CutOffPerTargetAndClosure)
{
    struct Case {
        const char* name;
        std::vector<double> rates;
        int target;
        double parameter, others;
        Flags species, reactions;
    };
    const std::vector<Case> cases = {
        // parameter 0 keeps every reaction of A but the catalytic r3; the kept reactions bring
        // their species in; non-target 1 selects nothing further
        {"zero", {10, 1, 5, 2}, 1, 0.0, 1.0, {1, 1, 1, 1, 0}, {1, 1, 0, 0}},
        // |A| contributions 10 and 0.2: limit 0.1 x 10.2 = 1.02; the tail 0.2 fits and
        // 0.2 / 1.02 < 0.3, so r2 goes
        {"cut-off", {10, 0.2, 5, 2}, 1, 0.1, 1.0, {1, 1, 1, 0, 0}, {1, 0, 0, 0}},
        {"one keeps only the target", {10, 1, 5, 2}, 2, 1.0, 0.0, {0, 1, 0, 0, 0}, {0, 0, 0, 0}},
        // Target B at 0: r1 and r4. r4 brings C, D and, of the third bodies ranked by
        // efficiency x first-row concentration (E 5, A..D 1 each; total 9, limit 4.5 at 0.5),
        // only E. Drawn-in C at 0.5: |r4| 4, |r1| 3, |r3| 3 -> limit 5; the tail r3 (3) fits,
        // r1 would make 6; 3 / 5 = 0.6 > 0.3 brings r3 back. D at 0.5: r4 4, r3 3, r2 0 ->
        // limit 3.5; the tail r2 + r3 (3) fits, 3 / 3.5 > 0.3 brings r3 back, r2 (rate 0) out.
        {"closure", {3, 0, 3, 4}, 2, 0.0, 0.5, {1, 1, 1, 1, 1}, {1, 0, 1, 1}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ReductionTables t = FourReactions();
        const auto [species, reactions] = Select(t, c.rates, {c.target}, {c.parameter}, c.others);
        EXPECT_EQ(species, c.species);
        EXPECT_EQ(reactions, c.reactions);
    }
}

TEST(Selection, CloseOverReactionsAddsExplicitPartner)
{
    ReductionTables t = FourReactions();
    t.ReactionInts[1] = {0, 1, 0, 0, 4, 0, 0, 0, 0, 0, 1, 1, 0, 1, 1, 0, 1, 5};
    RowFlags species;
    RowFlags reactions;
    species.reset(5);
    reactions.reset(4);
    reactions.keep(2);
    CloseOverReactions(t, reactions, species, 1.0);
    EXPECT_EQ(species.kept, (Flags{1, 0, 0, 1, 1}));
    EXPECT_EQ(reactions.pending[1], 0);
    EXPECT_EQ(species.pending[4], 1);
}

//! n reactions A = B.
ReductionTables Chain(int n)
{
    return Tables(2, std::vector<solverfile::ReactionInts>(
                         n, {0, 1, 0, 0, 2, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1}));
}

TEST(Selection, EqualMagnitudesKeepTheLowerReactionNumber)
{
    // Six reactions A = B with |rates| 1, 10, 1, 1, 1, 1: total 15, limit 3.75 at 0.25.
    // Sorted: r2, r1, r3, r4, r5, r6; the tail r4..r6 (3) fits, r3 would make 4; r4 / 3.75
    // = 0.27 stays out. Kept: r2, r1, r3 - the tied rows with the lower numbers.
    ReductionTables t = Chain(6);
    EXPECT_EQ(Select(t, {1, 10, 1, 1, 1, 1}, {1}, {0.25}, 1).second, (Flags{1, 1, 1, 0, 0, 0}));
}

TEST(Selection, HeatTableRanksReactionsForTemperature)
{
    ReductionTables t = Chain(3);
    t.HeatTable = {{1, 0.1}, {2, -50}, {3, 5}};
    t.TemperatureIsTarget = true;
    // limit 5.51 at 0.1: r1 (0.1) and r3 (5) form the tail; 5 / 5.51 > 0.3 brings r3 back
    EXPECT_EQ(Select(t, {}, {}, {}, 1, 0.1), std::pair(Flags{1, 1}, Flags{0, 1, 1}));
    EXPECT_EQ(Select(t, {}, {}, {}, 1, 1.0), std::pair(Flags{0, 0}, Flags{0, 0, 0}));
}

} // namespace
} // namespace zarvion::reduction
