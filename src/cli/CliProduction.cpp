// zarvion-cli production: which reactions form and consume a species over the interval.
//   zarvion-cli production FILE --species NAME [--parameter P] [--copy-text] [--from T0]
//       [--to T1] [--every N] [--tsv]
// Text: the title line, the table (No, Reaction, Integral in mol/g, ranked by magnitude; with
// --parameter only the important reactions), then "Sum of Reactions" and "Derivative" as the
// window shows them. --copy-text prints what "Copy Table" puts on the clipboard.
// TSV: No, Reaction, Integral rows, then an empty line and "sum", "derivative" key lines.

#include "CliViews.h"

#include "postprocessor/ProductionAnalysis.h"

namespace zarvion::cli {
namespace {

using namespace zarvion::postprocessor;

struct ProductionArguments {
    views::ViewOptions view;
    std::string species;
    std::string parameter;
    bool copyText = false;
};

int runProduction(const ProductionArguments& a)
{
    std::string fileName;
    auto state = views::Load(a.view, &fileName);
    const int s = views::Species(*state, a.species);
    const ProductionTable table = ShowReacDeRe(*state, s, true);
    const ShownRows shown = ShowReacMen(table, a.parameter.empty() ? nullptr : &a.parameter);
    if (!shown.message.empty()) {
        throw CommandFailure{shown.message.text};
    }
    const SumDisplay sum = TemperSum(table, shown.count, true);
    const SumDisplay derivative = TemperSum(table, shown.count, false);
    std::ostream& out = std::cout;
    if (a.copyText) {
        CopyReacContext ctx;
        ctx.fileName = fileName;
        ctx.intervalBeginText = IntervalText(state->IntervalBegin);
        ctx.intervalEndText = IntervalText(state->IntervalEnd);
        ctx.date = shell::Now();
        ctx.lineEnd = "\n";
        out << CopyReac(table, shown.count, ctx);
        return 0;
    }
    if (a.view.tsv) {
        out << "No\tReaction\tIntegral\n";
        for (std::size_t i = 0; i < shown.count; ++i) {
            const ProductionRow& row = table.rows[i];
            out << row.number << "\t" << row.text << "\t" << shell::ShortestText(row.value) << "\n";
        }
        out << "\nsum\t" << shell::ShortestText(sum.sum) << "\nsmall difference\t"
            << (sum.smallDifference ? "yes" : "no") << "\nderivative\t"
            << shell::ShortestText(table.difference) << "\n";
        return 0;
    }
    out << shown.titleLabel << "\n";
    std::size_t width = 8;
    for (std::size_t i = 0; i < shown.count; ++i) {
        width = std::max(width, table.rows[i].text.size());
    }
    const std::string textField = "!" + std::string(width, '@');
    out << shell::FormatText("Num", "@@@@@") << "  " << shell::FormatText("Reaction", textField)
        << "  Integral\n";
    for (std::size_t i = 0; i < shown.count; ++i) {
        const ProductionRow& row = table.rows[i];
        out << shell::FormatText(std::to_string(row.number), "@@@@@") << "  "
            << shell::FormatText(row.text, textField) << "  " << shell::Format(row.value, "0.00E+00")
            << "\n";
    }
    out << sum.label << "  " << sum.text << (sum.toolTip.empty() ? "" : "  (" + sum.toolTip + ")")
        << "\n";
    out << derivative.label << "  " << derivative.text
        << (derivative.toolTip.empty() ? "" : "  (" + derivative.toolTip + ")") << "\n";
    return 0;
}

const RegisterCommand registration([](CLI::App& app, int& exitCode) {
    auto a = std::make_shared<ProductionArguments>();
    CLI::App* cmd = app.add_subcommand(
        "production", "Production analysis of one species: every reaction that changes it with "
                      "its integral [mol/g] over the time interval, ranked by magnitude, the sum, "
                      "and the change of the species itself (\"Derivative\")");
    views::AddViewOptions(cmd, a->view);
    cmd->add_option("--species", a->species, "species name")->required();
    cmd->add_option("--parameter", a->parameter,
                    "share of the total flux that may be dropped (0 to 1): only the important "
                    "reactions are listed");
    cmd->add_flag("--copy-text", a->copyText, "print the text of \"Copy Table\"");
    cmd->callback([a, &exitCode] { exitCode = views::Run([&] { return runProduction(*a); }); });
});

} // namespace
} // namespace zarvion::cli
