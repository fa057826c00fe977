#include "Kestro/Conf/StreamRecord.h"

#include "Kestro/Conf/FindRecord.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Conf {
namespace {

constexpr StreamRecord kRecords[] = {
    {StreamType::Video, IPreset::STREAM_TYPE_VIDEO, IPreset::KEY_FILTER_VIDEO_CODEC,
     IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO},
    {StreamType::Audio, IPreset::STREAM_TYPE_AUDIO, IPreset::KEY_FILTER_AUDIO_CODEC,
     IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO},
    {StreamType::Subtitle, IPreset::STREAM_TYPE_SUBTITLES_TEXT, IPreset::KEY_FILTER_SUBTITLE_CODEC,
     IPreset::KEY_FILTER_SUBTITLE_CODEC},
};

}  // namespace

std::string StreamRecord::CodecIdPath() const {
    const std::string& separator = Core::Property::SEPARATOR;
    return IPreset::KEY_STREAMS + IPreset::INDEX + typeId + separator + codecKey + separator +
           IFormatCodec::TAG_CODEC_ID;
}

const StreamRecord& StreamRecord::Find(StreamType type) {
    return *FindRecord(kRecords, [type](const StreamRecord& record) { return record.type == type; });
}

const StreamRecord* StreamRecord::Find(const std::string& typeId) {
    return FindRecord(kRecords, [&typeId](const StreamRecord& record) { return record.typeId == typeId; });
}

std::span<const StreamRecord> StreamRecord::All() { return kRecords; }

std::span<const StreamRecord> StreamRecord::WithHelpers() { return All().first(2); }

}  // namespace Kestro::Conf
