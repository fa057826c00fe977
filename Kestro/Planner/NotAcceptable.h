#pragma once

#include <vector>

#include "Kestro/Exception.h"
#include "Kestro/Planner/Problem.h"

namespace Kestro::Planner {

/// What the planner throws, and nothing else: an input, preset, setting or plan that cannot be used.
class KESTRO_PLANNER_API NotAcceptable : public Exception {
public:
    /// problems: at least one.
    explicit NotAcceptable(std::vector<Problem> problems);
    explicit NotAcceptable(Problem problem);
    NotAcceptable(const NotAcceptable&);
    NotAcceptable& operator=(const NotAcceptable&);
    ~NotAcceptable() noexcept override;

    const std::vector<Problem>& Problems() const noexcept { return problems_; }
    /// The first problem's message.
    const char* what() const noexcept override;

private:
    std::vector<Problem> problems_;
};

}  // namespace Kestro::Planner
