#include "Kestro/Conf/DataHelpers/ConstraintCodecs.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"

namespace Kestro::Conf {

namespace {

constexpr boost::source_location kInIsValid(
    "Kestro/Conf/DataHelpers/ConstraintCodecs", 25,
    "bool __cdecl Kestro::Conf::ConstraintCodecs::IsValid(const class Kestro::Core::Property &) const");

}  // namespace

ConstraintCodecs::ConstraintCodecs(Codecs codecs, std::string defaultCodec)
    : codecs_(std::move(codecs)), defaultCodec_(std::move(defaultCodec)) {}

Core::Property ConstraintCodecs::GetDefaultValue() const { return {std::string(), defaultCodec_}; }

void ConstraintCodecs::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    IConstraintConsumer& to = Consumer(consumer, "ConstraintCodecs");
    for (const auto& [name, id] : codecs_) to.AddValue(name, Core::Property(std::string(), id));
    to.EndValues();
}

bool ConstraintCodecs::IsValid(const Core::Property& value) const {
    if (value.Type() != PropertyTypes::String)
        ThrowNotApplicable("ConstraintCodecs", PropertyTypes::String, kInIsValid);
    const std::string& id = value.GetString();
    return std::any_of(codecs_.begin(), codecs_.end(), [&id](const auto& codec) { return codec.second == id; });
}

bool ConstraintCodecs::CorrectValue(Core::Property& value) const {
    if (value.Type() != PropertyTypes::String) return false;
    if (IsValid(value)) return true;
    if (defaultCodec_.empty()) return false;
    value = defaultCodec_;
    return true;
}

std::string ConstraintCodecs::GetDescription(const std::string& /*settingName*/) const { return {}; }

}  // namespace Kestro::Conf
