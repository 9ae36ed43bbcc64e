#pragma once
// Common part of the post-processor view commands (profile, mean, meantable, rate,
// derivative, production, data): the file, the interval and thinning options, loading, and
// the output of a curve.

#include "CliCommand.h"

#include "postprocessor/PlotData.h"
#include "postprocessor/PostprocessorSession.h"
#include "shell/Error.h"
#include "shell/SessionState.h"
#include "shell/TextFormat.h"

#include <iostream>
#include <memory>
#include <string>

namespace zarvion::cli::views {

//! Options every view command takes.
struct ViewOptions {
    std::string file;
    std::string from;  //!< interval start [s], as typed; empty: the first row
    std::string to;    //!< interval end [s], as typed; empty: the last row
    std::string every = "1";
    bool tsv = false;
};

inline void AddViewOptions(CLI::App* cmd, ViewOptions& o)
{
    cmd->add_option("file", o.file, "solved solver file")->required();
    cmd->add_option("--from", o.from, "start of the time interval [s] (default: first row)");
    cmd->add_option("--to", o.to, "end of the time interval [s] (default: last row)");
    cmd->add_option("--every", o.every, "show every n-th row (\"Show every\"; default 1)");
    cmd->add_flag("--tsv", o.tsv, "machine output: tab-separated, one header line");
}

//! Loads the file and applies the interval; a refusal ends the command with its message.
inline std::unique_ptr<postprocessor::PostprocessorState> Load(const ViewOptions& o,
                                                               std::string* fileName = nullptr)
{
    using namespace postprocessor;
    LoadedResults loaded = LoadForViews(o.file, LoadSessionConstants(shell::ProgramFolder()));
    if (!loaded.ok()) {
        throw CommandFailure{loaded.message.text};
    }
    const shell::Message m = ApplyInterval(*loaded.state, o.from, o.to, o.every);
    if (!m.empty()) {
        throw CommandFailure{m.text};
    }
    if (fileName != nullptr) {
        *fileName = loaded.fileName;
    }
    return std::move(loaded.state);
}

//! Species number of a name, or the window's "not found" message.
inline int Species(const postprocessor::PostprocessorState& state, const std::string& name)
{
    shell::Message m;
    const auto s = state.FindSpec(name, m);
    if (!s) {
        throw CommandFailure{m.text};
    }
    return *s;
}

//! Applies a Y scale through the window's check.
inline void ApplyScaleY(postprocessor::PostprocessorState& state, const std::string& text,
                        bool logY)
{
    const postprocessor::FieldCheck c = postprocessor::CheckScaleY(text, logY);
    if (!c.ok()) {
        throw CommandFailure{c.message.text};
    }
    state.ScaleY = c.value;
}

//! Prints the curve that the chart would receive. Text: the label, then one "X  Y" line per
//! slot with -99999 for a missing point. TSV: header "X<TAB>label", the same rows.
inline int PrintCurve(const postprocessor::PlotCurve& curve, bool tsv)
{
    if (!curve.ok()) {
        throw CommandFailure{curve.message.text};
    }
    std::ostream& out = std::cout;
    if (tsv) {
        out << "X\t" << curve.label << "\n";
    } else {
        out << curve.label << "\n";
    }
    const char* sep = tsv ? "\t" : "  ";
    for (std::size_t k = 0; k < curve.x.size(); ++k) {
        out << shell::ShortestText(curve.x[k]) << sep << shell::ShortestText(curve.y[k]) << "\n";
    }
    return 0;
}

//! Runs a command body, turning core errors into the command's failure.
template <class Body>
int Run(Body body)
{
    try {
        return body();
    } catch (const zarvion::Error& e) {
        throw CommandFailure{e.what()};
    }
}

} // namespace zarvion::cli::views
