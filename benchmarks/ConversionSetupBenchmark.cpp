// Everything that an application asks of the library to set up one conversion: to MP4 with H.264 and AAC, from a stored
// preset.

#include <benchmark/benchmark.h>

#include <boost/rational.hpp>
#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

#include "Allocations.h"

namespace {

using namespace Kestro::Conf;
using namespace Kestro::Proc;
using Kestro::Core::Property;
using Helper = boost::intrusive_ptr<const IDataHelper>;

const boost::rational<int64_t> kNtscRate(30000, 1001);

/// A preset as it comes from a file: H.264 of a given quality in 720 lines, AAC at 128 kbit/s in stereo.
Property StoredPreset() {
    Property preset;
    preset.SetChild(IPreset::KEY_FORMAT).SetChild(IFormatFile::TAG_CONTAINER, IFormatFile::FORMAT_MP4);
    Property& streams = preset.SetChild(IPreset::KEY_STREAMS);

    Property& video = streams.SetChild("0");
    video.SetChild(IPreset::KEY_TYPE_ID, IPreset::STREAM_TYPE_VIDEO);
    Property& h264 = video.SetChild(IPreset::KEY_FILTER_VIDEO_CODEC);
    h264.SetChild(IFormatCodec::TAG_CODEC_ID, IFormatCodecVideo::CODEC_ID_H264);
    h264.SetChild(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_VBR);
    h264.SetChild(IFormatCodec::TAG_QUALITY, 60);
    h264.SetChild(IFormatCodec::TAG_MULTIPASS_ENCODING, IFormatCodec::TAG_ONE_PASS_MODE);
    h264.SetChild(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, 250);
    h264.SetChild(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, 2);
    Property& options = h264.SetChild(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE);
    options.SetChild(IFormatCodec::TAG_PRESET, IFormatCodecVideo::TAG_X264_PRESET_MEDIUM);
    options.SetChild(IFormatCodec::TAG_PROFILE, IFormatCodecVideo::TAG_X264_PROFILE_HIGH);
    SettingsResizer size;
    size.frameSizeMode = SettingsResizer::FrameSizeMode::Custom;
    size.width = 1280;
    size.height = 720;
    video.SetChild(IFilterResize::CLASS_ID, IFilterResize::Settings2Property(size));
    video.SetChild(IFilterFrameRate::CLASS_ID,
                   IFilterFrameRate::MakeSettings(SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE));

    Property& audio = streams.SetChild("1");
    audio.SetChild(IPreset::KEY_TYPE_ID, IPreset::STREAM_TYPE_AUDIO);
    Property& aac = audio.SetChild(IPreset::KEY_FILTER_AUDIO_CODEC);
    aac.SetChild(IFormatCodec::TAG_CODEC_ID, IFormatCodecAudio::CODEC_ID_AAC);
    aac.SetChild(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_CBR);
    aac.SetChild(IFormatCodec::TAG_BITRATE, 128'000);
    audio.SetChild(IFilterResample::CLASS_ID,
                   IFilterResample::MakeSettings(ChannelLayout::Stereo, 44'100, SampleFormats::None));
    return preset;
}

struct Encoder {
    Helper helper;
    FilterList filters;
    ConstraintMap constraints;
    Property defaults;
};

Encoder FindEncoder(const std::string& type, const std::string& codecId) {
    Encoder encoder;
    encoder.helper = CreateDataHelper(type, codecId);
    encoder.defaults = encoder.helper->GetDefaultSettings();
    encoder.helper->FillConstraints(encoder.constraints);
    encoder.helper->GetRequiredFilters(encoder.filters);
    return encoder;
}

/// Completes a codec node that holds the source's values: what the filters make of them, then what the encoder is told,
/// then the repairs of container and encoder.
void SetUpStream(const Property& stream, const std::string& codecKey, const Encoder& encoder, const IDataHelper& format,
                 Property& codec) {
    for (const auto& [filter, implementation] : encoder.filters) {
        const Helper helper = CreateDataHelper(filter, implementation);
        const Property settings = helper->GetDefaultSettings();
        helper->ApplyPresetSettings(stream.ChildExists(filter) ? stream[filter] : settings, codec);
    }
    encoder.helper->ApplyPresetSettings(stream[codecKey], codec);
    format.CorrectFormatCodec(codec);
    encoder.helper->CorrectFormatCodec(codec);
}

/// Whether the muxer takes both streams.
bool SetUpConversion(const Property& preset, Property& video, Property& audio) {
    const Helper format = CreateDataHelper(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MP4);
    const Property formatSettings = format->GetDefaultSettings();
    ConstraintMap formatConstraints;
    format->FillConstraints(formatConstraints);

    const Encoder h264 = FindEncoder(IPreset::KEY_FILTER_VIDEO_CODEC, IFormatCodecVideo::CODEC_ID_H264);
    const Encoder aac = FindEncoder(IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_AAC);

    video = Property(IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO);
    video.SetChild(IFormatCodecVideo::TAG_WIDTH, 1920);
    video.SetChild(IFormatCodecVideo::TAG_HEIGHT, 1080);
    video.SetChild(IFormatCodecVideo::TAG_FPS, kNtscRate);
    SetUpStream(preset[IPreset::KEY_STREAMS][0u], IPreset::KEY_FILTER_VIDEO_CODEC, h264, *format, video);

    audio = Property(IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO);
    audio.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, 48'000);
    audio.SetChild(IFormatCodecAudio::TAG_LAYOUT, IFormatCodecAudio::TAG_CH_LAYOUT_STEREO);
    audio.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, "fltp");
    SetUpStream(preset[IPreset::KEY_STREAMS][1u], IPreset::KEY_FILTER_AUDIO_CODEC, aac, *format, audio);

    if (FormatHasGlobalHeader(IFormatFile::FORMAT_MP4)) {
        video.SetChild(IFormatCodec::TAG_GLOBAL_HEADER, CodecHasGlobalHeader(IFormatCodecVideo::CODEC_ID_H264));
        audio.SetChild(IFormatCodec::TAG_GLOBAL_HEADER, CodecHasGlobalHeader(IFormatCodecAudio::CODEC_ID_AAC));
    }
    video.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    audio.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    const auto file = IFormatFile::Create(formatSettings);
    return CodecIsSupported(file, IFormatCodecVideo::Create(video)) &&
           CodecIsSupported(file, IFormatCodecAudio::Create(audio));
}

void SetUp(benchmark::State& state) {
    const Property preset = StoredPreset();
    Property video;
    Property audio;
    const bool isRight =
        SetUpConversion(preset, video, audio) && video[IFormatCodecVideo::TAG_WIDTH].GetInt64() == 1280 &&
        video[IFormatCodecVideo::TAG_FPS].GetRatio() == kNtscRate && video[IFormatCodec::TAG_GLOBAL_HEADER].GetBool() &&
        audio[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64() == 44'100 &&
        audio[IFormatCodec::TAG_BITRATE].GetInt64() == 128'000;
    if (!isRight) state.SkipWithError("this is not the conversion that the preset asks for");

    const int64_t allocations = AllocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(SetUpConversion(preset, video, audio));
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(AllocationCount() - allocations), benchmark::Counter::kAvgIterations);
}
BENCHMARK(SetUp)->Name("set up a conversion")->Unit(benchmark::kMicrosecond);

}  // namespace
