#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecEmpty.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"

namespace Kestro::Conf {

namespace {

constexpr Text kModes[] = {IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO};

constexpr CodecSheet kSheet{
    .codecId = IFormatCodec::CODEC_ID_AUTO,
    .stream = StreamType::Audio,
    .settings = {{.tag = IFormatCodec::TAG_BITRATE_MODE,
                  .initial = IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO,
                  .allowed = Texts{kModes}},
                 {.tag = IFormatCodec::TAG_BITRATE, .initial = 256'000}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecEmpty::DataHelperAudioCodecEmpty() : DataHelperCodecFFMPEG(kSheet) {}

void DataHelperAudioCodecEmpty::ApplyPresetSettings(const Core::Property& /*preset*/,
                                                    Core::Property& /*settings*/) const {}

void DataHelperAudioCodecEmpty::CorrectFormatCodec(Core::Property& /*settings*/) const {}

}  // namespace Kestro::Conf
