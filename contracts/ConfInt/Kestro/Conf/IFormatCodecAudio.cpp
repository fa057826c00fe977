#include "Kestro/Conf/IFormatCodecAudio.h"

#include "Kestro/Conf/FormatCodecImpl.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"

namespace Kestro::Conf {
namespace {

class FormatCodecAudio final : public FormatCodecImpl<IFormatCodecAudio, StreamType::Audio> {
public:
    using FormatCodecImpl::FormatCodecImpl;

    bool ExistsSampleRate() const override { return Node().Exists(TAG_SAMPLE_RATE, PropertyTypes::Int64); }
    int64_t GetSampleRate() const override { return Node().Get(TAG_SAMPLE_RATE, PropertyTypes::Int64).GetInt64(); }

    bool ExistsChannelLayout() const override { return Node().Exists(TAG_LAYOUT, PropertyTypes::String); }
    ChannelLayout GetChannelLayout() const override {
        const LayoutRecord* record = LayoutRecord::Find(Node().Get(TAG_LAYOUT, PropertyTypes::String).GetString());
        return record != nullptr ? record->code : ChannelLayout::Unknown;
    }

    bool ExistsSampleFormat() const override { return Node().Exists(TAG_SAMPLE_FORMAT, PropertyTypes::String); }
    SampleFormats GetSampleFormat() const override {
        const SampleFmtRecord* record =
            SampleFmtRecord::Find(Node().Get(TAG_SAMPLE_FORMAT, PropertyTypes::String).GetString());
        return record != nullptr ? record->code : SampleFormats::None;
    }
};

}  // namespace

IFormatCodecAudio::~IFormatCodecAudio() = default;

boost::intrusive_ptr<const IFormatCodecAudio> IFormatCodecAudio::Create(const Core::Property& codec) {
    return new FormatCodecAudio(codec);
}

}  // namespace Kestro::Conf
