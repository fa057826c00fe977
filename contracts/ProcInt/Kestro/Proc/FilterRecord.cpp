#include "Kestro/Proc/FilterRecord.h"

#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"

namespace Kestro::Proc {
namespace {

constexpr FilterRecord kRecords[] = {
    {IFilterResample::CLASS_ID, Conf::StreamType::Audio},       {IFilterAudioVolume::CLASS_ID, Conf::StreamType::Audio},
    {IFilterAudioFormatter::CLASS_ID, Conf::StreamType::Audio}, {IFilterFrameRate::CLASS_ID, Conf::StreamType::Video},
    {IFilterResize::CLASS_ID, Conf::StreamType::Video},
};

}  // namespace

const FilterRecord* FilterRecord::Find(const std::string& classId) {
    for (const FilterRecord& record : kRecords) {
        if (record.classId == classId) return &record;
    }
    return nullptr;
}

std::span<const FilterRecord> FilterRecord::All() { return kRecords; }

}  // namespace Kestro::Proc
