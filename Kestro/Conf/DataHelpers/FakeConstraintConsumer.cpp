#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"

#include <limits>

namespace Kestro::Conf {

namespace {

/// `value % step` without the overflow of the lowest integer by -1.
int64_t Remainder(int64_t value, int64_t step) { return step == -1 ? 0 : value % step; }

/// The middle of two integers, moved to a whole number of steps from the lower one. Sums wrap around.
int64_t Middle(int64_t lo, int64_t hi, int64_t step) {
    const auto wrap = [](int64_t value) { return static_cast<uint64_t>(value); };
    const int64_t middle = static_cast<int64_t>(wrap(lo) + wrap(hi)) / 2;
    if (step == 0) return middle;
    return static_cast<int64_t>(wrap(middle) + wrap(Remainder(lo, step)) - wrap(Remainder(middle, step)));
}

}  // namespace

boost::intrusive_ptr<IConstraintConsumer> FakeConstraintConsumer::Create() { return new FakeConstraintConsumer(); }

FakeConstraintConsumer::FakeConstraintConsumer() : minimum_(int32_t{0}), maximum_(int32_t{0}) {}

void FakeConstraintConsumer::Clear() {
    values_.RemoveAll();
    minimum_ = int32_t{0};
    maximum_ = int32_t{0};
}

void FakeConstraintConsumer::AddValue(const std::string& name, const Core::Property& value) {
    values_.SetChild(name, value);
}

void FakeConstraintConsumer::EndValues() {}

void FakeConstraintConsumer::SetMax(int64_t value) {
    maximum_ = value;
    type_ = PropertyTypes::Int64;
}

void FakeConstraintConsumer::SetMax(double value) {
    maximum_ = value;
    type_ = PropertyTypes::Double;
}

void FakeConstraintConsumer::SetMin(int64_t value) {
    minimum_ = value;
    type_ = PropertyTypes::Int64;
}

void FakeConstraintConsumer::SetMin(double value) {
    minimum_ = value;
    type_ = PropertyTypes::Double;
}

void FakeConstraintConsumer::SetStep(int64_t value) { step_ = value; }

void FakeConstraintConsumer::SetStep(double /*value*/) {}

Core::Property FakeConstraintConsumer::GetResult() const {
    if (values_.Count() != 0) return values_;
    Core::Property result;
    const auto fill = [&result](auto lo, auto mid, auto hi) {
        result.SetChild("minValue", lo);
        result.SetChild("midValue", mid);
        result.SetChild("maxValue", hi);
    };
    if (type_ == PropertyTypes::Double) {
        const auto lo = boost::any_cast<double>(minimum_);
        const auto hi = boost::any_cast<double>(maximum_);
        fill(lo, (hi + lo) * 0.5, hi);
    } else if (type_ == PropertyTypes::Int64) {
        const auto lo = boost::any_cast<int64_t>(minimum_);
        const auto hi = boost::any_cast<int64_t>(maximum_);
        fill(lo, Middle(lo, hi, step_), hi);
    }
    return result;
}

}  // namespace Kestro::Conf
