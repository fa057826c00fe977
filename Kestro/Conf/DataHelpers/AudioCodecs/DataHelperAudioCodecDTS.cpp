#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecDTS.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

// The encoder refuses some of these: a frame has a least size, by sample rate and number of channels.
bool IsBitrate(const Core::Property& value) {
    return value.Type() == PropertyTypes::Int64 && IFormatCodecAudio::MIN_DTS_BITRATE <= value.GetInt64() &&
           value.GetInt64() <= IFormatCodecAudio::MAX_DTS_BITRATE;
}

constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_DTS,
    .stream = StreamType::Audio,
    .settings = {kCbrMode,
                 {.tag = IFormatCodec::TAG_BITRATE,
                  .initial = 256'000,
                  .allowed = Satisfying{IsBitrate, IPropertyConstraint::DESCRIPTION_ID_DTS_BITRATE}}},
};
static_assert(IsConsistent(kSheet));

}  // namespace

DataHelperAudioCodecDTS::DataHelperAudioCodecDTS() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
