#pragma once
// Production analysis of one species: every reaction that forms or consumes it, with the
// amount [mol/g] it contributed over the current interval, ranked by weight, compared with
// the species' own change; the important-reaction cut, the sum, the copied text and the
// histogram bars.

#include <ctime>
#include <span>
#include <string>
#include <vector>

#include "postprocessor/PostprocessorState.h"
#include "shell/Message.h"

namespace zarvion::postprocessor {

//! One row of the production table.
struct ProductionRow {
    int number = 0;     //!< reaction j
    std::string text;   //!< reaction text
    double value = 0;   //!< integral [mol/g]
    int nu = 0;         //!< change of the species' count by the reaction
};

//! The table of `ShowReacDeRe` after `ReacUpdate`.
struct ProductionTable {
    int species = 0;
    std::string speciesName;      //!< as the "Prepare" step keeps it (short names padded to 13)
    bool withValues = false;
    std::vector<ProductionRow> rows; //!< ranked by |value| with values, by number without
    double difference = 0;        //!< change of the species over the interval [mol/g]
    std::string differenceText;   //!< through "0.00E+00"
    std::string countLabel;       //!< "All reactions  " + n, or "Reactions: " + n
};

//! Non-uniform trapezoid rule with the cubic interior correction and the one-sided end
//! corrections, accumulated row by row over k = firstRow() .. lastRow().
class ProductionIntegrator {
public:
    //! stepSize[k]: time from row k - 1 to row k; rows 1 .. rowCount - 1; interval [p, e].
    ProductionIntegrator(std::span<const double> stepSize, int rowCount, int p, int e,
                         std::size_t valueCount);
    int firstRow() const { return m_k0; }
    int lastRow() const { return m_k1; }
    //! The values g of row k (called for every k in order).
    void add(int k, std::span<const double> g);
    //! A/2 + C/12 + E/6 per value: the integral over [t_p, t_e].
    std::vector<double> integrals() const;

private:
    double h(int k) const;
    std::span<const double> m_h;
    int m_rowCount, m_p, m_e, m_k0, m_k1;
    std::size_t m_n;
    std::vector<double> m_A, m_C, m_E, m_f1, m_f2, m_f3;
};

//! `ShowReacDeRe` + `ReacUpdate`: the reactions that change species s (nu != 0) and, with
//! wantIntegrals, their integrals over [IntervalFirst, IntervalLast] of every stored row.
ProductionTable ShowReacDeRe(PostprocessorState& state, int species, bool wantIntegrals);

//! `ReacUpdate`: ranks (with values) or orders by number (without), and sets the labels.
void ReacUpdate(ProductionTable& table);

//! The name as the "Prepare" step keeps it: under 10 characters through "!@@@@@@@@@@@@".
std::string PreparedSpeciesName(const std::string& name);

//! What `ShowReacMen` shows.
struct ShownRows {
    std::size_t count = 0;   //!< leading rows of the table shown
    std::string countLabel;  //!< "Important reactions n" or "All reactions n"
    std::string titleLabel;  //!< `Label11`
    shell::Message message;  //!< a refused Parameter
};

//! `ShowReacMen`: with a parameter text (the "Important" command) the leading rows that the
//! flux-share cut keeps; without it (nullptr) every row.
ShownRows ShowReacMen(const ProductionTable& table, const std::string* parameterText);

//! What `TemperSum` puts into `Label25` and `Text19`.
struct SumDisplay {
    std::string label;    //!< "Sum of Reactions" or "Derivative"
    std::string text;
    bool centred = false; //!< "***" is centred; numbers are right-aligned
    bool warning = false; //!< in the session's warning colour
    std::string toolTip;
    double sum = 0;
    bool smallDifference = false;
};

//! `TemperSum` over the first `count` rows.
SumDisplay TemperSum(const ProductionTable& table, std::size_t count, bool withSum);

//! Inputs of `CopyReac` beyond the table.
struct CopyReacContext {
    std::string fileName;
    std::string intervalBeginText; //!< `Text2`
    std::string intervalEndText;   //!< `Text3`
    std::tm date{};
    std::string lineEnd = "\r\n";
};

//! `CopyReac`: the shown rows as text.
std::string CopyReac(const ProductionTable& table, std::size_t count, const CopyReacContext& ctx);

//! One bar of the production histogram.
struct HistogramBar {
    std::string label;      //!< "R" + reaction number
    std::string valueText;  //!< value through "0.00E+00"
    double value = 0;       //!< value x scale
    int colour = 0;         //!< standard colour 9 above 0, else 12
};

//! The histogram of the shown rows (`ShowHisto`, without the drawing).
struct Histogram {
    std::string title;           //!< name + " Production"
    std::string label;           //!< with " x " + scale through "0.0E+00" when not 1
    std::string plottingMethod;  //!< "Histogram"
    std::vector<HistogramBar> bars;
    shell::Message message;      //!< a refused scale
};

//! Bars of the first `count` rows with the scale text of `Text11`.
Histogram ShowHisto(const ProductionTable& table, std::size_t count, const std::string& scaleText);

} // namespace zarvion::postprocessor
