#pragma once

#include <iosfwd>

#include "Converter.h"
#include "Failure.h"
#include "JsonTree.h"
#include "Plan.h"

/// Plans, conversions and failures, for people and as JSON.
namespace App {

Json ToJson(const Plan& plan);
Json ToJson(const Conversion& conversion);
Json ToJson(const Problem& problem);

void Print(std::ostream& out, const Plan& plan, std::size_t width);
/// What the plan changed and left out, without the settings.
void PrintChanges(std::ostream& out, const Plan& plan, std::size_t width);
void Print(std::ostream& out, const Conversion& conversion, std::size_t width);
void Print(std::ostream& out, const Problem& problem, std::size_t width);

}  // namespace App
