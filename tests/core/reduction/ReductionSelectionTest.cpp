#include <gtest/gtest.h>

#include "reduction/ReductionEngine.h"
#include "shell/Error.h"

namespace zarvion::reduction {
namespace {

solverfile::ReactionInts Ints(std::initializer_list<int> fields)
{
    solverfile::ReactionInts r{};
    int k = 1;
    for (int f : fields) {
        r[k++] = f;
    }
    return r;
}

// Species 1 A, 2 B, 3 C, 4 D, 5 E.
//   r1  A + B = C
//   r2  A = D
//   r3  A + C = A + D            (A only a catalyst)
//   r4  C + D + M = B            (M with partner E, efficiency 5)
class SelectionTest : public ::testing::Test {
protected:
    ReductionTables t;
    RowFlags species;
    RowFlags reactions;

    void SetUp() override
    {
        std::vector<solverfile::ReactionInts> ints = {
            Ints({1, 2, 0, 3, 0, 0, 0, 0, 0, 2, 1, 0, 0, 0, 0, 1}),
            Ints({1, 0, 0, 4, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1}),
            Ints({1, 3, 0, 1, 4, 0, 0, 0, 0, 2, 2, 0, 0, 0, 0, 1}),
            Ints({3, 4, 0, 2, 0, 0, 0, 0, 0, 2, 1, 2, 1, 0, 0, 1, 5}),
        };
        std::vector<solverfile::ReactionReals> reals(4, solverfile::ReactionReals{});
        reals[3][12] = 5.0;
        LoadReductionTables(t, 5, {"A", "B", "C", "D", "E"}, 4, ints, reals);
        t.FirstRowConcentrations = {1, 1, 1, 1, 1};
        species.reset(5);
        reactions.reset(4);
    }
    void Rates(std::vector<double> v)
    {
        for (std::size_t r = 0; r < v.size(); ++r) {
            t.RateTable[r] = {static_cast<int>(r) + 1, v[r]};
        }
    }
    static ReductionRequest Target(int s, double p, double others)
    {
        ReductionRequest q;
        q.targetSpecies = {s};
        q.speciesParameters = {p};
        q.nonTargetParameter = others;
        return q;
    }
    std::vector<int> Kept(const RowFlags& f)
    {
        std::vector<int> out;
        for (std::size_t i = 0; i < f.kept.size(); ++i) {
            if (f.kept[i]) {
                out.push_back(static_cast<int>(i) + 1);
            }
        }
        return out;
    }
};

TEST_F(SelectionTest, TablesCountNetCoefficientsAndTexts)
{
    EXPECT_EQ(t.net(1, 1), -1);
    EXPECT_EQ(t.net(3, 1), 0); // catalyst
    EXPECT_EQ(t.net(3, 4), 1);
    EXPECT_EQ(t.SpeciesReactionCount, (std::vector<int>{2, 2, 3, 3, 0}));
    EXPECT_EQ(t.ReactionTexts[0], "A + B= C");
    EXPECT_EQ(t.ReactionTexts[3], "C + D= B");
    EXPECT_FALSE(t.KeptSpecies[0]);
    EXPECT_THROW(LoadReductionTables(t, 5, {"A"}, 0, {}, {}), zarvion::Error);
}

TEST_F(SelectionTest, ParameterZeroKeepsEveryReactionButCatalystOnes)
{
    Rates({10, 1, 5, 2});
    SelectRow(t, Target(1, 0.0, 1.0), species, reactions);
    EXPECT_EQ(Kept(reactions), (std::vector<int>{1, 2}));
    // the kept reactions bring their species in; non-target 1 selects nothing further
    EXPECT_EQ(Kept(species), (std::vector<int>{1, 2, 3, 4}));
    for (auto p : species.pending) {
        EXPECT_EQ(p, 0);
    }
}

TEST_F(SelectionTest, CutOffDropsTheSmallTail)
{
    // |A| contributions 10 and 0.2: limit t = 0.1 x 10.2 = 1.02; the tail 0.2 fits and
    // 0.2 / 1.02 < 0.3, so r2 goes (hand calculation of the cut-off rule)
    Rates({10, 0.2, 5, 2});
    SelectRow(t, Target(1, 0.1, 1.0), species, reactions);
    EXPECT_EQ(Kept(reactions), (std::vector<int>{1}));
    EXPECT_EQ(Kept(species), (std::vector<int>{1, 2, 3}));
}

TEST_F(SelectionTest, TargetWithParameterOneKeepsOnlyItself)
{
    Rates({10, 1, 5, 2});
    SelectRow(t, Target(2, 1.0, 0.0), species, reactions);
    EXPECT_TRUE(Kept(reactions).empty());
    EXPECT_EQ(Kept(species), (std::vector<int>{2}));
}

TEST_F(SelectionTest, NonTargetClosureAndThirdBodies)
{
    // Target B at 0: r1 and r4 kept. r4 brings C, D and, of the third bodies ranked by
    // efficiency x first-row concentration (E 5, A..D 1 each; total 9, limit 4.5 at 0.5),
    // only E. Drawn-in C at 0.5: |r4| 4, |r1| 3, |r3| 3 -> limit 5; the tail r3 (3) fits,
    // r1 would make 6; 3 / 5 = 0.6 > 0.3 brings r3 back, so r3 is kept through C.
    Rates({3, 0, 3, 4});
    SelectRow(t, Target(2, 0.0, 0.5), species, reactions);
    EXPECT_EQ(Kept(species), (std::vector<int>{1, 2, 3, 4, 5}));
    // D at 0.5: r4 4, r3 3, r2 0 -> limit 3.5; the tail r2 + r3 (3) fits, 3 / 3.5 > 0.3
    // brings r3 back, r2 (rate 0) stays out.
    EXPECT_EQ(Kept(reactions), (std::vector<int>{1, 3, 4}));
}

TEST_F(SelectionTest, CloseOverReactionsAddsExplicitPartner)
{
    t.ReactionInts[1] = Ints({1, 0, 0, 4, 0, 0, 0, 0, 0, 1, 1, 0, 1, 1, 0, 1, 5});
    reactions.keep(2);
    CloseOverReactions(t, reactions, species, 1.0);
    EXPECT_EQ(Kept(species), (std::vector<int>{1, 4, 5}));
    EXPECT_EQ(reactions.pending[1], 0);
    EXPECT_EQ(species.pending[4], 1);
}

//! n reactions A = B, both species at unit first-row concentration.
ReductionTables Chain(int n)
{
    ReductionTables t;
    const std::vector<solverfile::ReactionInts> ints(
        n, Ints({1, 0, 0, 2, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1}));
    LoadReductionTables(t, 2, {"A", "B"}, n, ints, std::vector<solverfile::ReactionReals>(n));
    t.FirstRowConcentrations = {1, 1};
    return t;
}

//! One selection on fresh flags: the kept flags of species and of reactions.
std::pair<std::vector<std::uint8_t>, std::vector<std::uint8_t>> Select(ReductionTables& t,
                                                                       const ReductionRequest& q)
{
    RowFlags s;
    RowFlags r;
    s.reset(static_cast<std::size_t>(t.NumSpecies));
    r.reset(static_cast<std::size_t>(t.NumReactions));
    SelectRow(t, q, s, r);
    return {s.kept, r.kept};
}

TEST(SelectionTies, EqualMagnitudesKeepTheLowerReactionNumber)
{
    // Six reactions A = B with |rates| 1, 10, 1, 1, 1, 1: total 15, limit 3.75 at 0.25.
    // Sorted: r2, r1, r3, r4, r5, r6; the tail r4..r6 (3) fits, r3 would make 4; r4 / 3.75
    // = 0.27 stays out. Kept: r2, r1, r3 - the tied rows with the lower numbers.
    ReductionTables t = Chain(6);
    const std::vector<double> v = {1, 10, 1, 1, 1, 1};
    for (int r = 0; r < 6; ++r) {
        t.RateTable[r] = {r + 1, v[r]};
    }
    ReductionRequest q;
    q.targetSpecies = {1};
    q.speciesParameters = {0.25};
    q.nonTargetParameter = 1;
    EXPECT_EQ(Select(t, q).second, (std::vector<std::uint8_t>{1, 1, 1, 0, 0, 0}));
}

TEST(SelectionTemperature, HeatTableRanksReactionsForTemperature)
{
    ReductionTables t = Chain(3);
    t.HeatTable = {{1, 0.1}, {2, -50}, {3, 5}};
    t.TemperatureIsTarget = true;
    ReductionRequest q;
    q.temperatureParameter = 0.1; // limit 5.51: r1 (0.1) and r3 (5) form the tail; 5/5.51 > 0.3
    q.nonTargetParameter = 1;
    auto [s, r] = Select(t, q);
    EXPECT_EQ(r, (std::vector<std::uint8_t>{0, 1, 1}));
    EXPECT_EQ(s, (std::vector<std::uint8_t>{1, 1}));
    q.temperatureParameter = 1.0; // keeps nothing
    std::tie(s, r) = Select(t, q);
    EXPECT_EQ(r, (std::vector<std::uint8_t>{0, 0, 0}));
    EXPECT_EQ(s, (std::vector<std::uint8_t>{0, 0}));
}

} // namespace
} // namespace zarvion::reduction
