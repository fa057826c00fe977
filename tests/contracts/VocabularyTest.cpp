#include <gtest/gtest.h>

#include <initializer_list>
#include <set>
#include <string>
#include <vector>

extern "C" {
#include <libavformat/avformat.h>
}

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Proc/IAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecSubtitle;
using Conf::IFormatCodecVideo;
using Conf::IFormatFile;
using Conf::IPreset;

// Rules look for a tag's text inside a path, so one text inside another would bind a rule to the wrong setting.
TEST(Vocabulary, NoTagIsPartOfAnotherTagOrFilterId) {
    // clang-format off
    const std::vector<std::string> tags = {
        IPreset::KEY_FORMAT, IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC,
        IPreset::KEY_FILTER_SUBTITLE_CODEC, IPreset::KEY_STREAMS, IPreset::KEY_TYPE_ID, IFormatCodec::TAG_CODEC_ID,
        IFormatCodec::TAG_BITRATE, IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_QUALITY,
        IFormatCodec::TAG_MULTIPASS_ENCODING, IFormatCodec::TAG_THREAD_NUMBER,
        IFormatCodec::TAG_UTILIZE_ALL_RESOURCES, IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, IFormatCodec::TAG_PRESET,
        IFormatCodec::TAG_PROFILE, IFormatCodec::TAG_GLOBAL_HEADER, IFormatCodec::TAG_CODEC_TAG,
        IFormatCodec::TAG_LOSSLESS, IFormatCodec::TAG_MAIN_STREAM, IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO,
        IFormatCodecAudio::TAG_SAMPLE_RATE, IFormatCodecAudio::TAG_LAYOUT, IFormatCodecAudio::TAG_SAMPLE_FORMAT,
        IFormatCodecAudio::TAG_BITS_PER_SAMPLE, IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO,
        IFormatCodecVideo::TAG_WIDTH, IFormatCodecVideo::TAG_HEIGHT, IFormatCodecVideo::TAG_ASPECTX,
        IFormatCodecVideo::TAG_ASPECTY, IFormatCodecVideo::TAG_FPS, IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE,
        IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, IFormatCodecVideo::TAG_BITS_PER_PIXEL,
        IFormatCodecVideo::TAG_PIXEL_FORMAT, IFormatCodecVideo::TAG_COVER_FLAG,
        IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY, IFormatCodecVideo::TAG_X264_TUNE, IFormatFile::TAG_CONTAINER,
        IFormatFile::TAG_LIMITS, IFormatFile::TAG_LIMITS_AUDIO, IFormatFile::TAG_LIMITS_VIDEO,
        IFormatFile::TAG_LIMITS_SUBTITLE, IFormatFile::TAG_LIMITS_OTHER, IFormatFile::TAG_PROGRESSIVE_READ,
        IFormatFile::TAG_PSP_MODE, IFormatFile::TAG_DISK_SIZE, IFormatFile::TAG_DVD_STANDARD,
        Proc::IFilterAudioVolume::VOLUME_VALUE, Proc::IFilterAudioFormatter::PACKET_DURATION,
        Proc::IResize::FRAME_SIZE_MODE, Proc::IResize::MODE, Proc::IResize::METHOD};
    const std::vector<std::string> filters = {
        Proc::IFilterResample::CLASS_ID, Proc::IResample::CLASS_ID, Proc::IFilterAudioVolume::CLASS_ID,
        Proc::IFilterAudioFormatter::CLASS_ID, Proc::IAudioFormatter::CLASS_ID, Proc::IFilterFrameRate::CLASS_ID,
        Proc::IFilterResize::CLASS_ID, Proc::IResize::CLASS_ID};
    // clang-format on
    const auto expectApart = [](const std::vector<std::string>& parts, const std::vector<std::string>& texts) {
        for (const std::string& part : parts) {
            EXPECT_NE(part, "");
            for (const std::string& text : texts) {
                EXPECT_TRUE(&part == &text || text.find(part) == std::string::npos) << part << " in " << text;
            }
        }
    };
    expectApart(tags, tags);
    expectApart(tags, filters);
    expectApart(filters, filters);
}

TEST(Vocabulary, CodecIdsAreUnique) {
    std::vector<std::string> ids(Conf::AudioCodecIds().begin(), Conf::AudioCodecIds().end());
    ids.insert(ids.end(), Conf::VideoCodecIds().begin(), Conf::VideoCodecIds().end());
    for (const std::string& id : {IFormatCodec::CODEC_ID_AUTO, IFormatCodecSubtitle::CODEC_ID_SRT,
                                  IFormatCodecSubtitle::CODEC_ID_SUBRIP, IFormatCodecSubtitle::CODEC_ID_SSA,
                                  IFormatCodecSubtitle::CODEC_ID_ASS, IFormatCodecSubtitle::CODEC_ID_TEXT}) {
        EXPECT_FALSE(Conf::IsAudioCodec(id) || Conf::IsVideoCodec(id)) << id;
        ids.push_back(id);
    }
    EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
}

TEST(Vocabulary, FormatNamesAreMuxersOfFfmpeg) {
    for (const std::string& name :
         {IFormatFile::FORMAT_MP4,    IFormatFile::FORMAT_IPOD, IFormatFile::FORMAT_MOV,  IFormatFile::FORMAT_MATROSKA,
          IFormatFile::FORMAT_WEBM,   IFormatFile::FORMAT_MPEG, IFormatFile::FORMAT_VOB,  IFormatFile::FORMAT_MPEGTS,
          IFormatFile::FORMAT_DVD,    IFormatFile::FORMAT_VCD,  IFormatFile::FORMAT_SVCD, IFormatFile::FORMAT_MXF,
          IFormatFile::FORMAT_AVI,    IFormatFile::FORMAT_FLV,  IFormatFile::FORMAT_SWF,  IFormatFile::FORMAT_3GP,
          IFormatFile::FORMAT_3G2,    IFormatFile::FORMAT_MP3,  IFormatFile::FORMAT_AAC,  IFormatFile::FORMAT_AC3,
          IFormatFile::FORMAT_AU,     IFormatFile::FORMAT_OGG,  IFormatFile::FORMAT_OGV,  IFormatFile::FORMAT_FLAC,
          IFormatFile::FORMAT_WAV,    IFormatFile::FORMAT_AIFF, IFormatFile::FORMAT_ASF,  IFormatFile::FORMAT_GIF,
          IFormatFile::FORMAT_IMAGE2, IFormatFile::FORMAT_APNG, IFormatFile::FORMAT_SRT,  IFormatFile::FORMAT_ASS}) {
        EXPECT_NE(av_guess_format(name.c_str(), nullptr, nullptr), nullptr) << name;
    }
}

TEST(Vocabulary, PathOfAStreamIsFoundByItsType) {
    Core::Property root("");
    Core::Property& streams = root.SetChild(IPreset::KEY_STREAMS);
    for (const auto& [name, type] : {std::pair("0", &IPreset::STREAM_TYPE_VIDEO), {"1", &IPreset::STREAM_TYPE_AUDIO}}) {
        streams.SetChild(name).SetChild(IPreset::KEY_TYPE_ID, *type);
    }
    EXPECT_EQ(root.ChildByPath(IPreset::KEY_STREAMS + IPreset::INDEX + IPreset::STREAM_TYPE_AUDIO).Name(), "1");
}

}  // namespace
}  // namespace Kestro
