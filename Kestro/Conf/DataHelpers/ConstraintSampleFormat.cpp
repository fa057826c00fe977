#include "Kestro/Conf/DataHelpers/ConstraintSampleFormat.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"
#include "Kestro/Conf/SampleFmtRecord.h"

namespace Kestro::Conf {

namespace {

constexpr boost::source_location kInIsValid(
    "Kestro/Conf/DataHelpers/ConstraintSampleFormat", 28,
    "bool __cdecl Kestro::Conf::ConstraintSampleFormat::IsValid(const class Kestro::Core::Property &) const");

}  // namespace

ConstraintSampleFormat::ConstraintSampleFormat(Formats formats) : formats_(std::move(formats)) {}

void ConstraintSampleFormat::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    IConstraintConsumer& to = Consumer(consumer, "ConstraintSampleFormat");
    for (const auto& [format, name] : formats_) to.AddValue(name, Core::Property(name, name));
    to.EndValues();
}

bool ConstraintSampleFormat::IsListed(SampleFormats format) const {
    return std::any_of(formats_.begin(), formats_.end(), [format](const auto& entry) { return entry.first == format; });
}

bool ConstraintSampleFormat::IsValid(const Core::Property& value) const {
    if (value.Type() != PropertyTypes::String) {
        ThrowNotApplicable("ConstraintSampleFormat", PropertyTypes::String, kInIsValid);
    }
    const SampleFmtRecord* record = SampleFmtRecord::Find(value.GetString());
    return record != nullptr && IsListed(record->code);
}

bool ConstraintSampleFormat::CorrectValue(Core::Property& value) const {
    if (value.Type() != PropertyTypes::String || formats_.empty()) return false;
    const SampleFmtRecord* record = SampleFmtRecord::Find(value.GetString());
    if (record == nullptr) return false;
    if (IsListed(record->code)) return true;

    SampleFormats chosen = record->alternative;
    if (!IsListed(chosen)) {
        int least = std::numeric_limits<int>::max();
        for (const auto& [format, name] : formats_) {
            const SampleFmtRecord* entry = SampleFmtRecord::Find(format);
            if (entry == nullptr) continue;
            const int score =
                std::abs(record->bitsPerSample - entry->bitsPerSample) + (record->planar == entry->planar);
            if (score >= least) continue;
            least = score;
            chosen = format;
        }
    }
    const SampleFmtRecord* best = SampleFmtRecord::Find(chosen);
    if (best == nullptr || !IsListed(chosen)) return false;
    value = std::string(best->name);
    return true;
}

std::string ConstraintSampleFormat::GetDescription(const std::string& /*settingName*/) const { return {}; }

}  // namespace Kestro::Conf
