#include "Kestro/Conf/DataHelpers/ConstraintChannelLayout.h"

#include <algorithm>
#include <utility>

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"
#include "Kestro/Conf/LayoutRecord.h"

namespace Kestro::Conf {

namespace {

// The class is reported as ConstraintSet, and callers tell it from a ConstraintSet by the place (see ThrowHelper).
constexpr const char* kReportedClass = "ConstraintSet";
constexpr boost::source_location kInIsValid(
    "Kestro/Conf/DataHelpers/ConstraintChannelLayout", 25,
    "bool __cdecl Kestro::Conf::ConstraintChannelLayout::IsValid(const class Kestro::Core::Property &) const");

/// 0 for a layout that no record knows.
int ChannelCount(const std::string& layout) {
    const LayoutRecord* record = LayoutRecord::Find(layout);
    return record != nullptr ? record->channels : 0;
}

}  // namespace

ConstraintChannelLayout::ConstraintChannelLayout(std::vector<std::string> layouts) : layouts_(std::move(layouts)) {}

void ConstraintChannelLayout::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    IConstraintConsumer& to = Consumer(consumer, "ConstraintChannelLayout");
    for (const std::string& layout : layouts_) to.AddValue(layout, Core::Property(layout, layout));
    to.EndValues();
}

bool ConstraintChannelLayout::IsValid(const Core::Property& value) const {
    if (value.Type() != PropertyTypes::String) ThrowNotApplicable(kReportedClass, PropertyTypes::String, kInIsValid);
    return std::find(layouts_.begin(), layouts_.end(), value.GetString()) != layouts_.end();
}

bool ConstraintChannelLayout::CorrectValue(Core::Property& value) const {
    if (value.Type() != PropertyTypes::String || layouts_.empty()) return false;
    if (IsValid(value)) return true;
    const int target = ChannelCount(value.GetString());
    if (target == 0) return false;
    const std::string* best = &layouts_.front();
    int bestCount = ChannelCount(*best);
    for (const std::string& layout : layouts_) {
        const int count = ChannelCount(layout);
        if ((bestCount < count && count <= target) || (count < bestCount && target <= count)) {
            best = &layout;
            bestCount = count;
        }
    }
    value = *best;
    return true;
}

std::string ConstraintChannelLayout::GetDescription(const std::string& /*settingName*/) const { return {}; }

}  // namespace Kestro::Conf
