#include "Kestro/Conf/DataHelpers/ConstraintRange.h"

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/ConstraintRange";
constexpr boost::source_location kInIsValid(
    kSource, 30, "bool __cdecl Kestro::Conf::ConstraintRange::IsValid(const class Kestro::Core::Property &) const");
constexpr boost::source_location kInFillValueList(
    kSource, 54,
    "void __cdecl Kestro::Conf::ConstraintRange::FillValueList(const class boost::intrusive_ptr<class "
    "Kestro::Conf::IConstraintConsumer> &) const");

}  // namespace

boost::intrusive_ptr<IPropertyConstraint> ConstraintRange::Create(double lo, double hi, double step) {
    return new ConstraintRange(PropertyTypes::Double, lo, hi, step);
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintRange::Create(int64_t lo, int64_t hi, int64_t step) {
    return new ConstraintRange(PropertyTypes::Int64, lo, hi, step);
}

ConstraintRange::ConstraintRange(PropertyTypes type, int64_t lo, int64_t hi, int64_t step)
    : type_(type), loBound_("loBound", lo), hiBound_("hiBound", hi), step_("step", step) {}

ConstraintRange::ConstraintRange(PropertyTypes type, double lo, double hi, double step)
    : type_(type), loBound_("loBound", lo), hiBound_("hiBound", hi), step_("step", step) {}

void ConstraintRange::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    IConstraintConsumer& to = Consumer(consumer, "ConstraintRange");
    if (type_ == PropertyTypes::Int64) {
        to.SetMin(loBound_.GetInt64());
        to.SetMax(hiBound_.GetInt64());
        if (step_.GetInt64() != 0) to.SetStep(step_.GetInt64());
    } else if (type_ == PropertyTypes::Double) {
        to.SetMin(loBound_.GetDouble());
        to.SetMax(hiBound_.GetDouble());
        if (step_.GetDouble() != 0.0) to.SetStep(step_.GetDouble());
    } else {
        ThrowNotApplicable("ConstraintRange", type_, kInFillValueList);
    }
}

bool ConstraintRange::IsValid(const Core::Property& value) const {
    if (type_ == PropertyTypes::Int64) {
        const int64_t number = value.GetInt64();
        return loBound_.GetInt64() <= number && number <= hiBound_.GetInt64();
    }
    if (type_ == PropertyTypes::Double) {
        const double number = value.GetDouble();
        return loBound_.GetDouble() <= number && number <= hiBound_.GetDouble();
    }
    ThrowNotApplicable("ConstraintRange", type_, kInIsValid);
}

bool ConstraintRange::CorrectValue(Core::Property& value) const {
    if (value.Type() != PropertyTypes::Double && value.Type() != PropertyTypes::Int64) return false;
    if (type_ == PropertyTypes::Int64) {
        // A double that no int64 holds cannot be read as one, but it lies below or above the range all the same.
        const double real = value.GetDouble();
        const bool readable = value.Type() == PropertyTypes::Int64 || (real >= -0x1p63 && real < 0x1p63);
        if (readable && IsValid(value)) return true;
        const bool below = readable ? value.GetInt64() < loBound_.GetInt64() : real < 0;
        value.CopyDataFrom(below ? loBound_ : hiBound_);
        return true;
    }
    if (type_ == PropertyTypes::Double) {
        if (IsValid(value)) return true;
        value.CopyDataFrom(loBound_.GetDouble() > value.GetDouble() ? loBound_ : hiBound_);
        return true;
    }
    return false;
}

std::string ConstraintRange::GetDescription(const std::string& /*settingName*/) const { return {}; }

}  // namespace Kestro::Conf
