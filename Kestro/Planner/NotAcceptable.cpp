#include "Kestro/Planner/NotAcceptable.h"

#include <utility>

namespace Kestro::Planner {

std::string_view ProblemText(ProblemCode code) {
    switch (code) {
        case ProblemCode::UnreadableInput:
            return "unreadable-input";
        case ProblemCode::OpensOtherFiles:
            return "opens-other-files";
        case ProblemCode::InvalidJson:
            return "invalid-json";
        case ProblemCode::InvalidPlan:
            return "invalid-plan";
        case ProblemCode::UnknownName:
            return "unknown-name";
        case ProblemCode::UnknownSetting:
            return "unknown-setting";
        case ProblemCode::WrongType:
            return "wrong-type";
        case ProblemCode::MissingSetting:
            return "missing-setting";
        case ProblemCode::NoSuchStream:
            return "no-such-stream";
        case ProblemCode::CodecNotTaken:
            return "codec-not-taken";
        case ProblemCode::ValueNotAccepted:
            return "value-not-accepted";
        case ProblemCode::TooManyStreams:
            return "too-many-streams";
        case ProblemCode::NothingToConvert:
            return "nothing-to-convert";
        case ProblemCode::ValueCorrected:
            return "value-corrected";
        case ProblemCode::NotInstalled:
            return "not-installed";
    }
    return {};
}

NotAcceptable::NotAcceptable(std::vector<Problem> problems) : problems_(std::move(problems)) {
    *this << TagDescription(problems_.front().message);
}
NotAcceptable::NotAcceptable(Problem problem) : NotAcceptable(std::vector{std::move(problem)}) {}
NotAcceptable::NotAcceptable(const NotAcceptable&) = default;
NotAcceptable& NotAcceptable::operator=(const NotAcceptable&) = default;
NotAcceptable::~NotAcceptable() noexcept = default;

const char* NotAcceptable::what() const noexcept { return problems_.front().message.c_str(); }

}  // namespace Kestro::Planner
