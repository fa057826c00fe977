#include "Kestro/Conf/DataHelpers/ConstraintSet.h"

#include <cmath>
#include <utility>

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"
#include "Kestro/Core/DomainLocalizationManager.h"
#include "Kestro/Core/PropertyException.h"

namespace Kestro::Conf {

namespace {

constexpr boost::source_location kInIsValid(
    "Kestro/Conf/DataHelpers/ConstraintSet", 69,
    "bool __cdecl Kestro::Conf::ConstraintSet::IsValid(const class Kestro::Core::Property &) const");

template <class T>
ConstraintSet::Entries Wrap(const ConstraintSet::Named<T>& values) {
    ConstraintSet::Entries entries;
    entries.reserve(values.size());
    for (const auto& [name, value] : values) entries.emplace_back(name, Core::Property(name, T(value)));
    return entries;
}

double ToDouble(const boost::rational<int64_t>& ratio) {
    return ratio.denominator() > 0 ? boost::rational_cast<double>(ratio) : 0.0;
}

void ReplaceFirst(std::string& text, std::string_view what, const std::string& with) {
    if (const size_t at = text.find(what); at != std::string::npos) text.replace(at, what.size(), with);
}

}  // namespace

boost::intrusive_ptr<IPropertyConstraint> ConstraintSet::Create(const Named<double>& values) {
    return new ConstraintSet(PropertyTypes::Double, Wrap(values));
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintSet::Create(const Named<std::string>& values) {
    return new ConstraintSet(PropertyTypes::String, Wrap(values));
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintSet::Create(const Named<boost::rational<int64_t>>& values) {
    return new ConstraintSet(PropertyTypes::Ratio, Wrap(values));
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintSet::Create(const Named<int64_t>& values) {
    return new ConstraintSet(PropertyTypes::Int64, Wrap(values));
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintSet::Create(const Named<bool>& values) {
    return new ConstraintSet(PropertyTypes::Bool, Wrap(values));
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintSet::Create(PropertyTypes type, const Entries& entries) {
    return new ConstraintSet(type, entries);
}

boost::intrusive_ptr<IPropertyConstraint> ConstraintSet::Create(PropertyTypes type, const Core::Property& list) {
    Entries entries;
    entries.reserve(list.Count());
    for (const Core::Property& child : list) entries.emplace_back(child.Name(), child);
    return new ConstraintSet(type, std::move(entries));
}

ConstraintSet::ConstraintSet(PropertyTypes type, Entries entries) : type_(type), entries_(std::move(entries)) {}

void ConstraintSet::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    IConstraintConsumer& to = Consumer(consumer, "ConstraintSet");
    for (const auto& [name, value] : entries_) to.AddValue(name, value);
    to.EndValues();
}

bool ConstraintSet::IsValid(const Core::Property& value) const {
    const auto isEntry = [this](const Core::Property& wanted) {
        for (const auto& [name, entry] : entries_) {
            if (entry == wanted) return true;
        }
        return false;
    };
    if (type_ == PropertyTypes::Ratio && value.Type() == PropertyTypes::String) {
        return isEntry(Core::Property(value.Name(), value.GetRatio()));
    }
    if (value.Type() != type_) ThrowNotApplicable("ConstraintSet", type_, kInIsValid);
    return isEntry(value);
}

bool ConstraintSet::CorrectValue(Core::Property& value) const {
    if (entries_.empty()) return false;
    if (value.Type() != type_) return IsValidText(value);
    if (IsValid(value)) return true;
    switch (type_) {
        case PropertyTypes::String:
            value.CopyDataFrom(entries_.front().second);
            return true;
        case PropertyTypes::Double:
        case PropertyTypes::Int64:
        case PropertyTypes::Ratio:
            break;
        default:
            return false;
    }
    const Core::Property* nearest = nullptr;
    double least = 0.0;
    for (const auto& [name, entry] : entries_) {
        const double distance = Distance(entry, value);
        if (nearest != nullptr && !(distance < least)) continue;
        nearest = &entry;
        least = distance;
    }
    value.CopyDataFrom(*nearest);
    return true;
}

bool ConstraintSet::IsValidText(const Core::Property& value) const {
    if (type_ != PropertyTypes::Ratio || value.Type() != PropertyTypes::String) return false;
    try {
        return IsValid(value);
    } catch (const Core::PropertyException&) {
        return false;  // A text that is no ratio cannot be corrected.
    }
}

double ConstraintSet::Distance(const Core::Property& entry, const Core::Property& value) const {
    if (type_ == PropertyTypes::Int64) {
        const int64_t a = entry.GetInt64();
        const int64_t b = value.GetInt64();
        // The distance of two int64 always fits in a uint64.
        const uint64_t distance = a > b ? static_cast<uint64_t>(a) - static_cast<uint64_t>(b)
                                        : static_cast<uint64_t>(b) - static_cast<uint64_t>(a);
        return static_cast<double>(distance);
    }
    if (type_ == PropertyTypes::Ratio) return std::abs(ToDouble(entry.GetRatio()) - ToDouble(value.GetRatio()));
    return std::abs(entry.GetDouble() - value.GetDouble());
}

std::string ConstraintSet::GetDescription(const std::string& settingName) const {
    std::string text =
        Core::GetLocalizationManagerForDomain("core").Translate("Parameter %1 must be one of the following values: %2");
    ReplaceFirst(text, "%1", settingName);
    if (!entries_.empty()) {
        std::string list;
        for (const auto& [name, value] : entries_) list += name + " ";
        ReplaceFirst(text, "%2", list);
    }
    return text;
}

}  // namespace Kestro::Conf
