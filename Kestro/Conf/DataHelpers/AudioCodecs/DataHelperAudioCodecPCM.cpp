#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecPCM.h"

#include <algorithm>
#include <iterator>

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

using Audio = IFormatCodecAudio;

constexpr Text k8Bit[] = {Audio::CODEC_ID_PCM_S8, Audio::CODEC_ID_PCM_U8};
constexpr Text k16Bit[] = {Audio::CODEC_ID_PCM_S16LE, Audio::CODEC_ID_PCM_S16BE, Audio::CODEC_ID_PCM_U16LE,
                           Audio::CODEC_ID_PCM_U16BE};
constexpr Text k24Bit[] = {Audio::CODEC_ID_PCM_S24LE, Audio::CODEC_ID_PCM_S24BE, Audio::CODEC_ID_PCM_U24LE,
                           Audio::CODEC_ID_PCM_U24BE};
constexpr Text k32Bit[] = {Audio::CODEC_ID_PCM_S32LE, Audio::CODEC_ID_PCM_S32BE, Audio::CODEC_ID_PCM_U32LE,
                           Audio::CODEC_ID_PCM_U32BE};

constexpr SampleFormats kU8[] = {SampleFormats::U8};
constexpr SampleFormats kS16[] = {SampleFormats::S16};
constexpr SampleFormats kS32[] = {SampleFormats::S32};

constexpr SettingRow kSettings[] = {
    kCbrMode,
};

constexpr CodecSheet Sheet(std::span<const SampleFormats> formats) {
    return {
        .codecId = Audio::CODEC_ID_PCM_S16LE,
        .stream = StreamType::Audio,
        .settings = kSettings,
        .sampleRates = kAnySampleRate,
        .layouts = AnyLayout(),
        .sampleFormats = SamplesOf{formats},
        .bitrateIsOptional = true,
    };
}

/// The encoders of one sample size. The bitrate is that of the samples as they are given: 24 bits come in 32.
struct Depth {
    std::span<const Text> codecs;
    CodecSheet sheet;
    EncodedShare share;
};
constexpr Depth kDepths[] = {
    {k8Bit, Sheet(kU8), {SampleFormats::U8, 1.0}},
    {k16Bit, Sheet(kS16), {SampleFormats::S16, 1.0}},
    {k24Bit, Sheet(kS32), {SampleFormats::S32, 1.0}},
    {k32Bit, Sheet(kS32), {SampleFormats::S32, 1.0}},
};
static_assert(IsSound(kDepths[0].sheet) && IsSound(kDepths[1].sheet) && IsSound(kDepths[2].sheet));

const Depth& DepthOf(const std::string& codecId) {
    const auto holds = [&codecId](const Depth& depth) {
        return std::any_of(depth.codecs.begin(), depth.codecs.end(),
                           [&codecId](const std::string& id) { return id == codecId; });
    };
    return *std::find_if(std::begin(kDepths), std::prev(std::end(kDepths)), holds);
}

}  // namespace

DataHelperAudioCodecPCM::DataHelperAudioCodecPCM(const std::string& codecId)
    : DataHelperAudioCodecLossless(DepthOf(codecId).sheet, codecId, {&DepthOf(codecId).share, 1}) {}

}  // namespace Kestro::Conf
