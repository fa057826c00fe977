#pragma once

#include <iosfwd>
#include <vector>

#include "Kestro/Planner/Fits.h"

#include "report/ReportJson.h"

namespace App {

Json ToJson(const std::vector<Kestro::Planner::Fit>& fits);
void Print(std::ostream& out, const std::vector<Kestro::Planner::Fit>& fits);

}  // namespace App
