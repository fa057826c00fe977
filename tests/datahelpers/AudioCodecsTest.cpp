#include <gtest/gtest.h>

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"

#include "tests/Failure.h"
#include "tests/Trees.h"

// What single encoders correct beyond their lists; which values FFmpeg's encoders take is seen by opening them.

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::Property;
using Core::TreeOf;

boost::intrusive_ptr<const IDataHelper> Audio(const std::string& codecId) {
    return CreateDataHelper(IPreset::KEY_FILTER_AUDIO_CODEC, codecId);
}

std::string Corrected(const std::string& codecId, const std::string& settings) {
    Property node = TreeOf(settings);
    Audio(codecId)->CorrectFormatCodec(node);
    return Dump(node);
}

TEST(AudioCodecs, BitratesAreCorrected) {
    const struct {
        const char* codec;
        const char* settings;
        const char* corrected;
    } rows[] = {
        {"wmav2", "s{RateControl=vbr,SampleRate=48000}", "s{RateControl=vbr,SampleRate=48000}"},
        {"amr_nb", "s{BitRate=12000}", "s{BitRate=12200}"},
        {"amr_nb", "s{BitRate=4750}", "s{BitRate=4750}"},
        {"vorbis", "s{SampleRate=44100,Layout=stereo,BitRate=16000}",
         "s{SampleRate=44100,Layout=stereo,BitRate=48000}"},
        {"vorbis", "s{SampleRate=44100,Layout=mono,BitRate=320000}", "s{SampleRate=44100,Layout=mono,BitRate=224000}"},
        {"vorbis", "s{SampleRate=8000,Layout=mono,BitRate=100}", "s{SampleRate=8000,Layout=mono,BitRate=32000}"},
        {"vorbis", "s{SampleRate=48000,Layout='5.1',BitRate=64000}", "s{SampleRate=48000,Layout=5.1,BitRate=96000}"},
        {"vorbis", "s{SampleRate=48000,BitRate=16000}", "s{SampleRate=48000,BitRate=16000}"},
        {"flac", "s{RateControl=cbr,SampleRate=48000,Layout=stereo}",
         "s{RateControl=vbr,SampleRate=48000,Layout=stereo}"},
        {"pcm_u8", "s{BitRate=1}", "s{BitRate=1,RateControl=cbr}"},
        {"auto", "s{RateControl=vbr,BitRate=7,SampleRate=1}", "s{RateControl=vbr,BitRate=7,SampleRate=1}"},
    };
    for (const auto& row : rows) EXPECT_EQ(Corrected(row.codec, row.settings), row.corrected) << row.codec;
}

TEST(AudioCodecs, TheBitrateOfPcmIsExact) {
    const struct {
        const char* codec;
        const char* format;
        int64_t bits;
    } rows[] = {{"pcm_s8", "u8", 8},      {"pcm_u8", "u8", 8},      {"pcm_s16le", "s16", 16}, {"pcm_u16be", "s16", 16},
                {"pcm_s24be", "s32", 32}, {"pcm_u24le", "s32", 32}, {"pcm_s32le", "s32", 32}, {"pcm_u32be", "s32", 32}};
    for (const auto& row : rows) {
        for (int channels = 1; channels <= 8; ++channels) {
            for (const int64_t rate : {8000, 44100, 192000}) {
                Property settings("s");
                settings.SetChild("SampleRate", rate);
                settings.SetChild("Layout", LayoutRecord::Find(channels)->name);
                settings.SetChild("SampleFmt", row.format);
                Audio(row.codec)->CorrectFormatCodec(settings);
                EXPECT_EQ(settings["BitRate"].GetInt64(), rate * channels * row.bits) << row.codec << " " << channels;
            }
        }
    }
}

TEST(AudioCodecs, NameWhatTheyDoNotTake) {
    const struct {
        const char* codec;
        const char* settings;
        const char* tag;
        const char* value;
    } rows[] = {
        {"pcm_s16le", "s{Layout='7.9'}", "Layout", "7.9"},
        {"pcm_s16le", "s{SampleFmt=s32}", "SampleFmt", "s32"},
        {"pcm_u24be", "s{SampleFmt=s17}", "SampleFmt", "s17"},
        {"pcm_s8", "s{SampleRate=0}", "SampleRate", "0"},
        {"flac", "s{Layout=unknown}", "Layout", "unknown"},
        {"flac", "s{SampleFmt=none}", "SampleFmt", "none"},
        {"alac", "s{Layout='2.1'}", "Layout", "2.1"},
        {"alac", "s{SampleFmt=fltp}", "SampleFmt", "fltp"},
        {"wmav2", "s{SampleRate=96000}", "SampleRate", "96000"},
        {"wmav2", "s{Layout='5.1'}", "Layout", "5.1"},
        {"mp2", "s{Layout='3.0'}", "Layout", "3.0"},
        {"ac3", "s{Layout='7.1'}", "Layout", "7.1"},
        {"amr_nb", "s{Layout=stereo}", "Layout", "stereo"},
        {"vorbis", "s{Layout='5.1(side)'}", "Layout", "5.1(side)"},
    };
    for (const auto& row : rows) {
        ExpectMessage<HelperException>(
            [&] { Corrected(row.codec, row.settings); },
            std::string("Can't fix value [") + row.tag + "] = " + row.value + " for encoder [" + row.codec + "]");
    }
}

TEST(AudioCodecs, PresetsMayLeaveOutWhatTheEncoderDoesWithout) {
    for (const std::string codec : {"alac", "flac", "pcm_s16le", "vorbis"}) {
        for (const std::string mode : {"cbr", "vbr"}) {
            Property settings("s");
            Audio(codec)->ApplyPresetSettings(TreeOf("p{CodecId=" + codec + ",RateControl=" + mode + "}"), settings);
            EXPECT_EQ(Dump(settings), "s{CodecId=" + codec + ",RateControl=" + mode + ",EncodeOptions}");
        }
    }
    Property settings("s");
    EXPECT_THROW(Audio("mp3")->ApplyPresetSettings(TreeOf("p{CodecId=mp3,RateControl=cbr}"), settings), Exception);
}

}  // namespace
}  // namespace Kestro::Conf
