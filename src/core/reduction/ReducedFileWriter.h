#pragma once
// Writes the reduced solver file: the source file's records of the kept species and
// reactions, renumbered from 1 in source order, with line 12 recording the targets.

#include <ctime>
#include <vector>

#include "reduction/ReductionTables.h"
#include "shell/Message.h"

namespace zarvion::reduction {

//! `WriteReducedFile`: rereads tables.SourcePath and writes tables.ReducedPath atomically.
//! Recounts ReducedSpeciesCount and ReducedReactionCount. Returns the refusal when the
//! reaction block of the source has no closing "END" (no file is then written); throws
//! zarvion::Error when the source cannot be read or the target not written.
shell::Message WriteReducedFile(ReductionTables& tables, double temperatureParameter,
                                const std::vector<double>& speciesParameters,
                                double nonTargetParameter, const std::tm& stamp);

//! Line 12 of a reduced file: " c -1 i j !Targets T p, NAME p, Others p".
std::string TargetLine(bool temperatureIsTarget, double temperatureParameter,
                       const std::vector<int>& newNumbers, const std::vector<std::string>& names,
                       const std::vector<double>& parameters, double nonTargetParameter);

} // namespace zarvion::reduction
