#include "postprocessor/MeanParameters.h"

#include "postprocessor/RowFields.h"
#include "postprocessor/ThermoModule.h"
#include "shell/TextFormat.h"

#include <cmath>

namespace zarvion::postprocessor {

namespace {

std::string scaleText(double scale)
{
    return scale != 1.0 ? " x " + shell::Format(scale, "0.00E+00") : std::string();
}

std::string withScaleAndLog(std::string label, double scale, bool wantLog)
{
    label += scaleText(scale);
    return wantLog ? "Log10 " + label : label;
}

//! Reads the species values y_i of a row into y (0 for a non-numeric field).
void readSpecies(std::string_view row, int speciesCount, std::vector<double>& y)
{
    y.resize(static_cast<std::size_t>(speciesCount));
    for (int i = 1; i <= speciesCount; ++i) {
        y[i - 1] = FieldValue(row, SpeciesColumn(i));
    }
}

} // namespace

std::array<std::string, 2> HabdCpUnits(bool energyInJoule)
{
    if (energyInJoule) {
        return {"kJ/mol", "J/K mol"};
    }
    return {"kcal/mol", "cal/K mol"};
}

std::string SpeciesLabel(const PostprocessorState& state, int kind, const std::string& name,
                         bool wantLog)
{
    std::string label;
    switch (kind) {
    case KindMassFraction: label = name + ", " + "Mass Fraction"; break;
    case KindMolesPerGram: label = "{" + name + "} (mol/g)"; break;
    case KindConcentration:
        label = "[" + name + "], " + (state.ConcentrationUnit == 0 ? "(mol/cm^3)" : "(1/cm^3)");
        break;
    case KindMoleFraction: label = name + ", " + "Mole Fraction"; break;
    default: label = name; break;
    }
    return withScaleAndLog(std::move(label), state.ScaleY, wantLog);
}

CurveData MoleFract(const PostprocessorState& state, int kind, int column, const std::string& name,
                    CurveOptions options)
{
    const ResultSet& r = state.results();
    CurveData out;
    out.name = name;
    out.label = SpeciesLabel(state, kind, name, options.wantLog);
    out.column = column;
    const int species = column - 2;
    const double W = (species >= 1 && species <= r.SpeciesCount) ? r.molecularWeight(species) : 1.0;
    const double u = state.concentrationFactor();
    const double P = r.pressureAtm;
    const double rg = state.gasConstantDensity();
    const double threshold = state.zeroThreshold();

    out.values.resize(state.UsedRows.size(), NoValue);
    for (std::size_t k = 0; k < state.UsedRows.size(); ++k) {
        const std::string_view row = state.usedRow(k);
        bool numeric = false;
        if (kind == KindTemperatureText) {
            const double t = FieldValue(row, 1, numeric);
            out.values[k] = numeric ? t : NoValue;
            continue;
        }
        const double y = FieldValue(row, column, numeric);
        if (!numeric) {
            continue;
        }
        const double rho = state.UsedDensity[k];
        double v = y;
        switch (kind) {
        case KindMassFraction: v = y; break;
        case KindMolesPerGram: v = y / W; break;
        case KindConcentration: v = u * y * rho / W; break;
        case KindMoleFraction: {
            const double T = FieldValue(row, 1);
            v = (y * rho / W) / (P / (rg * T));
            break;
        }
        default: break;
        }
        if (options.wantText && y < threshold) {
            v = 0.0;
        }
        out.values[k] = v;
    }
    return out;
}

MeanItemText MeanParameterText(const PostprocessorState& state, int item)
{
    const auto energy = HabdCpUnits(state.EnergyUnit);
    switch (item) {
    case 1: return {"Temperature", "T", "K"};
    case 2: return {"Concentration", "Ctot", state.ConcentrationUnit == 0 ? "mol/cm^3" : "1/cm^3"};
    case 3: return {"Density ", "Ro", "g/cm^3"};
    case 4: return {"Molecular Weight", "M", "g/mol"};
    case 5: return {"Enthalpy", "H", energy[0]};
    case 6: return {"Heat Capacity", "Cp", energy[1]};
    default: return {};
    }
}

namespace {

//! Items 1..6 of one row into v (NaN where not computed); items outside `wanted` are skipped.
//! Returns false with the message of a failed species evaluation.
bool meanRow(const PostprocessorState& state, std::string_view row, double rho,
             const std::array<bool, 6>& wanted, std::vector<double>& y,
             std::array<double, 6>& v, shell::Message& error)
{
    const ResultSet& r = state.results();
    const SessionConstants& c = state.constants();
    v.fill(NoValue);
    const double T = FieldValue(row, 1);
    if (wanted[0]) {
        v[0] = T;
    }
    if (wanted[1]) {
        v[1] = state.concentrationFactor() * r.pressureAtm / (state.gasConstantDensity() * T);
    }
    if (wanted[2]) {
        v[2] = rho;
    }
    if (!(wanted[3] || wanted[4] || wanted[5])) {
        return true;
    }
    const int ns = r.SpeciesCount;
    readSpecies(row, ns, y);
    double S = 0.0;
    for (int i = 0; i < ns; ++i) {
        S += y[i] / r.thermo[i][15];
    }
    if (S == 0.0) {
        return true; // passed over: no value
    }
    if (wanted[3]) {
        v[3] = 1.0 / S;
    }
    if (wanted[4] || wanted[5]) {
        const double rJ = state.EnergyUnit ? c.GasConstantJ : c.GasConstantCal;
        double h = 0.0;
        double cp = 0.0;
        for (int i = 0; i < ns; ++i) {
            const auto& rec = r.thermo[i];
            const SpeciesThermo th = EvaluateSpeciesThermo(rec.data(), T, rec[18],
                                                           state.speciesName(i + 1),
                                                           c.LowestThermoTemperature);
            if (!th.error.empty()) {
                error = th.error;
                return false;
            }
            const double x = y[i] / S / rec[15];
            h += x * th.hOverRT;
            cp += x * th.cpOverR;
        }
        if (wanted[4]) {
            v[4] = h * T * 0.001 * rJ;
        }
        if (wanted[5]) {
            v[5] = cp * rJ;
        }
    }
    return true;
}

} // namespace

CurveData MEANVALF(const PostprocessorState& state, int item, bool wantLog)
{
    CurveData out;
    const MeanItemText text = MeanParameterText(state, item);
    out.name = text.name;
    out.label = withScaleAndLog(text.symbol + " (" + text.unit + ")", state.ScaleY, wantLog);
    out.values.assign(state.UsedRows.size(), NoValue);
    if (item < 1 || item > 6) {
        return out;
    }
    std::array<bool, 6> wanted{};
    wanted[static_cast<std::size_t>(item - 1)] = true;
    std::vector<double> y;
    std::array<double, 6> v{};
    for (std::size_t k = 0; k < state.UsedRows.size(); ++k) {
        if (!meanRow(state, state.usedRow(k), state.UsedDensity[k], wanted, y, v, out.error)) {
            out.values.clear();
            return out;
        }
        out.values[k] = v[static_cast<std::size_t>(item - 1)];
    }
    return out;
}

MeanTable MeanParameterTable(const PostprocessorState& state)
{
    MeanTable out;
    out.rows.resize(state.UsedRows.size());
    const std::array<bool, 6> all{true, true, true, true, true, true};
    std::vector<double> y;
    for (std::size_t k = 0; k < state.UsedRows.size(); ++k) {
        if (!meanRow(state, state.usedRow(k), state.UsedDensity[k], all, y, out.rows[k],
                     out.error)) {
            out.rows.clear();
            return out;
        }
    }
    return out;
}

SpeciesThermo EvaluateSpeciesThermo(const double* coefficients, double T, double Tcommon,
                                    const std::string& speciesName, double lowestTemperature)
{
    SpeciesThermo out;
    if (!(T >= lowestTemperature)) {
        return out;
    }
    double highSum = 0.0;
    double lowSum = 0.0;
    for (int s = 1; s <= 7; ++s) {
        highSum += coefficients[s];
        lowSum += coefficients[s + 7];
    }
    out.ok = (Tcommon < T && highSum != 0.0) || (T <= Tcommon && lowSum != 0.0);
    const double lnT = std::log(T);
    const double powers[5] = {0.0, lnT, T * T, T * T * T, T * T * T * T};
    EvaluateThermoPolynomial(coefficients, T, Tcommon, powers, out.hOverRT, out.cpOverR,
                             out.sOverR);
    if (!std::isfinite(out.hOverRT) || !std::isfinite(out.cpOverR) || !std::isfinite(out.sOverR)) {
        out = SpeciesThermo{};
        out.error = shell::Message{
            "Mod1#006. Calculation error for thermodynamic functions of the species '" +
                speciesName + "'",
            shell::StyleCritical, shell::DefaultTitle};
    }
    return out;
}

} // namespace zarvion::postprocessor
