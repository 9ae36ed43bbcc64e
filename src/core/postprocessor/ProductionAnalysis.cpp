#include "postprocessor/ProductionAnalysis.h"

#include "postprocessor/PostprocessorTexts.h"
#include "postprocessor/Ranking.h"
#include "postprocessor/ReactionRateViews.h"
#include "postprocessor/RowFields.h"
#include "postprocessor/ThermoModule.h"
#include "shell/TextFormat.h"

#include <algorithm>
#include <cmath>

namespace zarvion::postprocessor {

ProductionIntegrator::ProductionIntegrator(std::span<const double> stepSize, int rowCount, int p,
                                           int e, std::size_t valueCount)
    : m_h(stepSize), m_rowCount(rowCount), m_p(p), m_e(e), m_n(valueCount),
      m_A(valueCount, 0.0), m_C(valueCount, 0.0), m_E(valueCount, 0.0), m_f1(valueCount, 0.0),
      m_f2(valueCount, 0.0), m_f3(valueCount, 0.0)
{
    m_k0 = p == 1 ? 1 : p - 1;
    m_k1 = e == rowCount - 1 ? e : e + 1;
}

double ProductionIntegrator::h(int k) const
{
    return k >= 0 && static_cast<std::size_t>(k) < m_h.size() ? m_h[k] : 0.0;
}

void ProductionIntegrator::add(int k, std::span<const double> g)
{
    // Trapezoid weights: h_(p+1) at the start, h_e at the end, h_k + h_(k+1) inside.
    if (m_p <= k && k <= m_e) {
        const double w = k == m_p ? h(m_p + 1) : k == m_e ? h(m_e) : h(k) + h(k + 1);
        for (std::size_t j = 0; j < m_n; ++j) {
            m_A[j] += w * g[j];
        }
    }
    // Cubic correction of the interval [t_(k-2), t_(k-1)] from the four points k-3 .. k.
    if (k > m_k0 + 2) {
        const double a = h(k - 2);
        const double b = h(k - 1);
        const double d = h(k);
        const double r1 = a / b;
        const double r2 = (a + b) / b;
        const double r3 = d / b;
        const double r4 = (d + b) / b;
        const double r5 = (a + b + d) / b;
        const double cA = (1 + 2 * r3) / (r1 * r2 * r5);
        const double cB = (1 + 2 * (r3 - r1)) / (r1 * r4);
        const double cC = (1 + 2 * (r1 - r3)) / (r2 * r3);
        const double cD = (1 + 2 * r1) / (r5 * r4 * r3);
        for (std::size_t j = 0; j < m_n; ++j) {
            m_C[j] += b * (-cA * m_f1[j] + cB * m_f2[j] + cC * m_f3[j] - cD * g[j]);
        }
    }
    // One-sided quadratic corrections of the first and the last interval of the table.
    if (m_p == 1 && m_k0 == 1 && k == 3) {
        const double a = h(2);
        const double b = h(3);
        const double r1 = a / b;
        const double r2 = (a + b) / b;
        for (std::size_t j = 0; j < m_n; ++j) {
            m_E[j] = (r1 * r1 * r1 * b / r2) * (((m_f3[j] - m_f2[j]) / r1) - g[j] + m_f3[j]);
        }
    }
    if (m_e == m_rowCount - 1 && k == m_e && m_rowCount > 2) {
        const double a = h(k - 1);
        const double b = h(k);
        const double r1 = a / b;
        const double r2 = (a + b) / b;
        for (std::size_t j = 0; j < m_n; ++j) {
            m_E[j] += (b / r2) * (((m_f3[j] - m_f2[j]) / r1) - g[j] + m_f3[j]);
        }
    }
    for (std::size_t j = 0; j < m_n; ++j) {
        m_f1[j] = m_f2[j];
        m_f2[j] = m_f3[j];
        m_f3[j] = g[j];
    }
}

std::vector<double> ProductionIntegrator::integrals() const
{
    std::vector<double> out(m_n);
    for (std::size_t j = 0; j < m_n; ++j) {
        out[j] = m_A[j] / 2 + m_C[j] / 12 + m_E[j] / 6;
    }
    return out;
}

std::string PreparedSpeciesName(const std::string& name)
{
    return name.size() < 10 ? shell::FormatText(name, "!@@@@@@@@@@@@") : name;
}

ProductionTable ShowReacDeRe(PostprocessorState& state, int species, bool wantIntegrals)
{
    const ResultSet& r = state.results();
    ProductionTable table;
    table.species = species;
    table.speciesName = PreparedSpeciesName(shell::Trim(state.speciesName(species)));
    table.withValues = wantIntegrals;

    std::vector<std::uint8_t> active(static_cast<std::size_t>(r.ReactionCount), 0);
    std::vector<int> selected;
    for (int j = 1; j <= r.ReactionCount; ++j) {
        const int nu = StoichiometricChange(r.ReactionInts[j - 1], species);
        if (nu != 0) {
            active[j - 1] = 1;
            selected.push_back(j);
            table.rows.push_back({j, r.ReactionTexts[j - 1], 0.0, nu});
        }
    }

    if (wantIntegrals && !selected.empty()) {
        const int p = state.IntervalFirst;
        const int e = state.IntervalLast;
        ProductionIntegrator integrator(r.stepSize, r.rowCount, p, e, selected.size());
        RateWorkspace& ws = state.workspace();
        std::vector<double> conc;
        std::vector<RatePair> production(static_cast<std::size_t>(r.SpeciesCount + 1));
        std::vector<RatePair> rates(static_cast<std::size_t>(r.ReactionCount), RatePair{0, 0});
        std::vector<double> g(selected.size());
        for (int k = integrator.firstRow(); k <= integrator.lastRow(); ++k) {
            const double rho = r.density[k];
            const double T = RowConcentrations(r, r.rows[k], rho, conc);
            ComputeReactionRates(conc, production, ws, r.pressureAtm, r.TemperatureMode, T,
                                 active, rates, false, false);
            for (std::size_t s = 0; s < selected.size(); ++s) {
                g[s] = rates[selected[s] - 1][0] / rho; // net rate [mol/(g s)]
            }
            integrator.add(k, g);
        }
        const std::vector<double> integral = integrator.integrals();
        for (std::size_t s = 0; s < selected.size(); ++s) {
            table.rows[s].value = table.rows[s].nu * integral[s];
        }
    }

    // Change of the species itself between rows p and e.
    auto endValue = [&](int k) {
        double y = FieldValue(r.rows[k], SpeciesColumn(species));
        if (r.absoluteTolerance * 0.001 > y) {
            y = 0.0;
        }
        return RoundSeven(y);
    };
    table.difference = (endValue(state.IntervalLast) - endValue(state.IntervalFirst)) /
                       r.molecularWeight(species);
    ReacUpdate(table);
    return table;
}

void ReacUpdate(ProductionTable& table)
{
    if (table.withValues) {
        SortRowsByMagnitude(table.rows, [](const ProductionRow& row) { return row.value; });
        table.countLabel = "All reactions  " + std::to_string(table.rows.size());
    } else {
        std::stable_sort(table.rows.begin(), table.rows.end(),
                         [](const ProductionRow& a, const ProductionRow& b) {
                             return a.number < b.number;
                         });
        table.countLabel = "Reactions: " + std::to_string(table.rows.size());
    }
    table.differenceText = shell::Format(table.difference, "0.00E+00");
}

ShownRows ShowReacMen(const ProductionTable& table, const std::string* parameterText)
{
    ShownRows out;
    const std::size_t all = table.rows.size();
    out.count = all;
    out.countLabel = "All reactions " + std::to_string(all);
    if (parameterText != nullptr) {
        const auto p = shell::ToDouble(*parameterText);
        if (!p || *p < 0.0 || *p > 1.0) {
            out.message = shell::Message{"Parameter, please enter a number on the interval (0, 1).",
                                         shell::StyleWarning, shell::DefaultTitle};
            return out;
        }
        if (*p > 0.0) {
            const std::size_t n =
                CutoffCount(table.rows, [](const ProductionRow& row) { return row.value; }, *p);
            if (n > 0) {
                out.count = n;
                out.countLabel = "Important reactions " + std::to_string(n);
            }
        }
    }
    out.titleLabel = table.speciesName + " Production. (mol/g). " + out.countLabel + ".";
    return out;
}

SumDisplay TemperSum(const ProductionTable& table, std::size_t count, bool withSum)
{
    SumDisplay out;
    count = std::min(count, table.rows.size());
    if (withSum) {
        out.label = "Sum of Reactions";
        double s = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            s += table.rows[i].value;
        }
        out.sum = s;
        const double scale =
            count > 0 ? std::fabs(table.rows[0].value) + std::fabs(table.rows[count - 1].value) : 0.0;
        // 0 / 0 (no rows, or only zero contributions) counts as a small difference as well.
        out.smallDifference = !(std::fabs(s) / scale >= 0.001);
        if (out.smallDifference) {
            out.text = "***";
            out.centred = true;
            out.warning = true;
            out.toolTip = "A small difference between large numbers";
        } else {
            out.text = shell::Format(s, "0.00E+00");
        }
    } else {
        out.label = "Derivative";
        out.text = table.differenceText;
        out.sum = table.difference;
        if (table.difference == 0.0 && !table.rows.empty()) {
            out.toolTip =
                "The value cannot be defined exactly; it is a small difference between large numbers.";
            out.warning = true;
        }
    }
    return out;
}

std::string CopyReac(const ProductionTable& table, std::size_t count, const CopyReacContext& ctx)
{
    count = std::min(count, table.rows.size());
    const std::string& nl = ctx.lineEnd;
    std::size_t width = 0;
    for (std::size_t i = 0; i < count; ++i) {
        width = std::max(width, table.rows[i].text.size());
    }
    width = std::max<std::size_t>(width, 1);
    const std::string textField = "!" + std::string(width, '@');
    const std::string numberField(10, '@');

    std::string out;
    out += "Zarvion Postprocessor, " + shell::FormatDate(ctx.date, "mmm d yyyy") + nl;
    out += "Solver File: " + ctx.fileName + nl + nl;
    out += "Time interval " + ctx.intervalBeginText + " - " + ctx.intervalEndText + " sec" + nl + nl;
    out += shell::FormatText("No", numberField) + "  " + shell::FormatText("Reaction", textField) +
           texts::IntegralTitle + nl;
    for (std::size_t i = 0; i < count; ++i) {
        const ProductionRow& row = table.rows[i];
        out += shell::FormatText(std::to_string(row.number), numberField) + "  " +
               shell::FormatText(row.text, textField) + shell::Format(row.value, "0.00E+00") + nl;
    }
    out += "  ------------------------------------------------------------------" + nl;
    const SumDisplay sum = TemperSum(table, count, true);
    const std::string lead = shell::FormatText("Sum", "!" + std::string(12 + width, '@'));
    out += lead + (sum.smallDifference ? std::string("***   ") : sum.text) + nl;
    out += shell::FormatText("Derivative", "!" + std::string(12 + width, '@')) +
           table.differenceText + nl;
    if (sum.smallDifference) {
        out += nl + " Small difference between large numbers, the correct value cannot be calculated." + nl + nl;
    }
    return out;
}

Histogram ShowHisto(const ProductionTable& table, std::size_t count, const std::string& scaleText)
{
    Histogram out;
    const auto scale = shell::ToDouble(scaleText);
    if (!scale || *scale == 0.0 || !std::isfinite(*scale)) {
        out.message = shell::Message{"Scaling factor, please enter a nonzero number.",
                                     shell::StyleWarning, shell::DefaultTitle};
        return out;
    }
    out.title = shell::Trim(table.speciesName) + " Production";
    out.label = "(mol/g)";
    if (*scale != 1.0) {
        out.label += " x " + shell::Format(*scale, "0.0E+00");
    }
    out.plottingMethod = "Histogram";
    count = std::min(count, table.rows.size());
    for (std::size_t i = 0; i < count; ++i) {
        const ProductionRow& row = table.rows[i];
        HistogramBar bar;
        bar.label = "R" + std::to_string(row.number);
        bar.valueText = shell::Format(row.value, "0.00E+00");
        bar.value = row.value * *scale;
        bar.colour = bar.value > 0 ? 9 : 12;
        out.bars.push_back(std::move(bar));
    }
    return out;
}

} // namespace zarvion::postprocessor
