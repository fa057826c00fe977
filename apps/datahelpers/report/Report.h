#pragma once

#include <iosfwd>

#include "Kestro/Planner/Plan.h"
#include "Kestro/Planner/Problem.h"

#include "cli/Failure.h"
#include "convert/Converter.h"
#include "report/ReportJson.h"

/// Plans, conversions and failures, for people and as JSON.
namespace App {

Json ToJson(const Planner::Plan& plan);
Json ToJson(const Conversion& conversion);
/// A problem of the planner, its way out in the words of the command line.
Complaint Told(const Planner::Problem& problem);
Json ToJson(const Complaint& complaint);

/// A file and its streams, a line each.
void Print(std::ostream& out, const Planner::MediaInfo& media);
/// On a screen: the streams, what is left out, what was chosen and corrected; isFull: and the whole tree of settings.
void Print(std::ostream& out, const Planner::Plan& plan, std::size_t width, bool isFull);
/// What the plan changed and left out, without the settings.
void PrintChanges(std::ostream& out, const Planner::Plan& plan, std::size_t width);
void Print(std::ostream& out, const Conversion& conversion, std::size_t width);
/// Where a conversion is not as planned, and what ffmpeg called errors; nothing for none.
void PrintFaults(std::ostream& out, const Conversion& conversion, std::size_t width);
/// Files that were read beside the input; nothing for none.
void PrintOpened(std::ostream& out, const std::vector<std::string>& names);
void Print(std::ostream& out, const Complaint& complaint, std::size_t width);

}  // namespace App
