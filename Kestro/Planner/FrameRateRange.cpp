#include "Kestro/Planner/FrameRateRange.h"

#include <utility>

#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Rate = boost::rational<int64_t>;

const Rate& Least() {
    static const Rate least(1, 3600);
    return least;
}
const Rate& Most() {
    static const Rate most(1000);
    return most;
}

}  // namespace

bool IsFrameRate(const Rate& rate) { return rate == Rate(0) || (rate >= Least() && rate <= Most()); }

std::string FrameRateRange() { return "from " + RatioText(Least()) + " to " + RatioText(Most()); }

void CheckFrameRates(const std::string& path, const Rate& input, const Rate& planned) {
    const bool isOfInput = !IsFrameRate(input) && input < Rate(1);
    if (!isOfInput && IsFrameRate(planned)) return;
    Problem problem{.code = ProblemCode::ValueNotAccepted,
                    .message = "No film has " + RatioText(isOfInput ? input : planned) + " frames/s" +
                               (isOfInput ? ", as the input says." : "."),
                    .path = path,
                    .value = RatioText(isOfInput ? input : planned),
                    .allowed = {FrameRateRange()}};
    if (!isOfInput) problem.changes = {{path, "25/1"}};
    throw NotAcceptable(std::move(problem));
}

}  // namespace Kestro::Planner
