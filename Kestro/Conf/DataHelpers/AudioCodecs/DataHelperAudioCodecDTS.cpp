#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecDTS.h"

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

// The lowest and the highest bitrate of the format's table (ETSI TS 102 114, 5.3.1). Within them the encoder takes any
// that fills a frame: how many bits that needs goes by sample rate and channels.
bool IsBitrate(const Core::Property& value) {
    constexpr int64_t kLowest = 32'000;
    constexpr int64_t kHighest = 3'840'000;
    return value.Type() == PropertyTypes::Int64 && kLowest <= value.GetInt64() && value.GetInt64() <= kHighest;
}

constexpr SettingRow kSettings[] = {
    kCbrMode,
    {.tag = IFormatCodec::TAG_BITRATE,
     .initial = 256'000,
     .allowed = Satisfying{IsBitrate, IPropertyConstraint::DESCRIPTION_ID_DTS_BITRATE}},
};
constexpr CodecSheet kSheet{
    .codecId = IFormatCodecAudio::CODEC_ID_DTS,
    .stream = StreamType::Audio,
    .settings = kSettings,
};
static_assert(IsSound(kSheet));

}  // namespace

DataHelperAudioCodecDTS::DataHelperAudioCodecDTS() : DataHelperCodecFFMPEG(kSheet) {}

}  // namespace Kestro::Conf
