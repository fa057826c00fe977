#pragma once

#include <optional>
#include <string>
#include <vector>

#include "prove/Combination.h"
#include "report/ReportJson.h"

namespace App {

enum class Verdict { Proven, Refused, NoEncoder, Contradicts };
inline constexpr Verdict kVerdicts[] = {Verdict::Proven, Verdict::Refused, Verdict::NoEncoder, Verdict::Contradicts};

/// "proven", "refused", "no-encoder", "contradicts".
const char* VerdictName(Verdict verdict);

/// What came of one combination.
struct Proof {
    std::string id;
    std::string about;
    std::string format;
    std::map<StreamType, std::string> codecs;  ///< of the output, or those that were asked for
    std::vector<StreamType> copied;
    std::vector<Planner::Change> settings;
    Verdict verdict = Verdict::Contradicts;
    std::string by;   ///< who refused, or is at fault
    std::string why;  ///< it is not proven
    double seconds = 0.0;
};

/// A proof of the combination, its verdict still open.
Proof ProofOf(const Combination& combination);

Json ToJson(const Proof& proof);
/// None: the text is no row.
std::optional<Proof> ProofFromJson(const Json& json);

}  // namespace App
