#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "Kestro/Planner/NotAcceptable.h"

namespace Kestro::Planner {

/// Gathers the problems of several checks, so that all of them can be told at once.
class Collector {
public:
    /// Whether the check found nothing.
    template <class Check>
    bool From(const Check& check) {
        try {
            check();
            return true;
        } catch (const NotAcceptable& refused) {
            for (const Problem& problem : refused.Problems()) {
                // One fault may be met in several places.
                if (std::ranges::find(problems_, problem.message, &Problem::message) == problems_.end()) {
                    problems_.push_back(problem);
                }
            }
            return false;
        }
    }
    /// Throws NotAcceptable when there are any.
    void Throw() {
        if (!problems_.empty()) throw NotAcceptable(std::move(problems_));
    }

private:
    std::vector<Problem> problems_;
};

}  // namespace Kestro::Planner
