#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecPCM.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/CodecFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"

namespace Kestro::Conf {

namespace {

using Audio = IFormatCodecAudio;

constexpr Text k8Bit[] = {Audio::CODEC_ID_PCM_S8, Audio::CODEC_ID_PCM_U8};
constexpr Text k16Bit[] = {Audio::CODEC_ID_PCM_S16LE, Audio::CODEC_ID_PCM_S16BE, Audio::CODEC_ID_PCM_U16LE,
                           Audio::CODEC_ID_PCM_U16BE};

constexpr SampleFormats kU8[] = {SampleFormats::U8};
constexpr SampleFormats kS16[] = {SampleFormats::S16};
constexpr SampleFormats kS32[] = {SampleFormats::S32};

constexpr CodecSheet Sheet(std::span<const SampleFormats> format) {
    return {
        .codecId = Audio::CODEC_ID_PCM_S16LE,
        .stream = StreamType::Audio,
        .settings = {kCbrMode},
        .sampleRates = kAnySampleRate,
        .layouts = AnyLayout(),
        .sampleFormats = SamplesOf{format},
        .bitrateIsOptional = true,
        .encodedShares = {{format[0], 1.0}},
    };
}
constexpr CodecSheet k8BitSheet = Sheet(kU8);
constexpr CodecSheet k16BitSheet = Sheet(kS16);
constexpr CodecSheet k24Or32BitSheet = Sheet(kS32);
static_assert(IsConsistent(k8BitSheet) && IsConsistent(k16BitSheet) && IsConsistent(k24Or32BitSheet));

const CodecSheet& SheetOf(const std::string& codecId) {
    const auto isOneOf = [&codecId](std::span<const Text> ids) {
        return std::any_of(ids.begin(), ids.end(), [&codecId](const std::string& id) { return id == codecId; });
    };
    if (isOneOf(k8Bit)) return k8BitSheet;
    return isOneOf(k16Bit) ? k16BitSheet : k24Or32BitSheet;
}

}  // namespace

DataHelperAudioCodecPCM::DataHelperAudioCodecPCM(const std::string& codecId)
    : DataHelperCodecFFMPEG(SheetOf(codecId), codecId) {}

}  // namespace Kestro::Conf
