#include <gtest/gtest.h>

#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"

#include "tests/Described.h"
#include "tests/Trees.h"

// Where containers that share a class or a list differ, and what single ones correct.

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::Property;
using Core::TreeOf;

boost::intrusive_ptr<const IDataHelper> Container(const std::string& name) {
    return CreateDataHelper(IPreset::KEY_FORMAT, name);
}

/// The codecs of one kind of stream as they are offered, the default in brackets.
std::string Offered(const std::string& container, const std::string& type, const std::string& codecKey) {
    ConstraintMap constraints;
    Container(container)->FillConstraints(constraints);
    const auto codecs = constraints.at("Streams/TypeId=" + type + "/" + codecKey + "/CodecId");
    Property unknown("", "nope");
    codecs->CorrectValue(unknown);
    std::string text;
    const Property values = Described(*codecs);
    for (const Property& value : values) {
        const std::string& id = value.GetString();
        text += (text.empty() ? "" : " ") + (value == unknown ? "[" + id + "]" : id);
    }
    return text;
}

TEST(Containers, OfOneClassDiffer) {
    const auto audio = [](const char* name) { return Offered(name, "audio", "AudioCodec"); };
    const auto video = [](const char* name) { return Offered(name, "video", "VideoCodec"); };
    EXPECT_EQ(audio("dvd"), "[mp2] ac3");
    EXPECT_EQ(audio("vcd") + audio("svcd"), "[mp2][mp2]");
    EXPECT_EQ(audio("mp4"), "[aac] ac3 dts mp3");
    EXPECT_EQ(audio("m4v"), "[aac] ac3 mp3");
    EXPECT_EQ(video("mp4"), "[h264] mpeg4 hevc");
    EXPECT_EQ(video("ipod"), "[h264] mpeg4");
    EXPECT_EQ(audio("mpegts"), "[mp2] mp3 aac ac3");
    EXPECT_EQ(audio("mpeg2ts"), "mp2 mp3 [aac] ac3");
    EXPECT_EQ(audio("f4a"), audio("m4a"));
    for (const char* picture : {"bmp", "pcx", "apng", "xwd", "jpeg2000"})
        EXPECT_EQ(video(picture), "[" + std::string(picture) + "]");
    EXPECT_EQ(video("image2"), "[mjpeg]");
    EXPECT_EQ(Offered("ssa", "subtitle", "SubtitleCodec") + Offered("ass", "subtitle", "SubtitleCodec"), "[ssa][ass]");
}

TEST(Containers, CorrectWhatTheirRulesConcern) {
    const struct {
        const char* container;
        const char* codec;
        const char* corrected;
    } rows[] = {
        {"mp4", "CodecAudio{CodecId=mp3,SampleRate=96000}", "CodecAudio{CodecId=mp3,SampleRate=48000}"},
        {"mp4", "CodecAudio{CodecId=aac,SampleRate=96000}", "CodecAudio{CodecId=aac,SampleRate=96000}"},
        {"avi", "CodecAudio{CodecId=aac,Layout='5.0'}", "CodecAudio{CodecId=aac,Layout=mono}"},
        {"avi", "CodecAudio{CodecId=aac,Layout=unknown}", "CodecAudio{CodecId=aac,Layout=mono}"},
        {"mpeg", "CodecVideo{CodecId=mpeg1video,Fps=fast}", "CodecVideo{CodecId=mpeg1video,Fps=fast}"},
        {"avi", "CodecAudio{CodecId=mp3,Layout='5.0'}", "CodecAudio{CodecId=mp3,Layout='5.0'}"},
        {"au", "CodecAudio{CodecId=pcm_s16be,SampleRate=44100}", "CodecAudio{CodecId=pcm_s16be,SampleRate=8192}"},
        {"vob", "CodecVideo{CodecId=mpeg2video,Fps=20/1}", "CodecVideo{CodecId=mpeg2video,Fps=20/1}"},
        {"mpeg", "CodecVideo{CodecId=mpeg1video,Fps=20/1}", "CodecVideo{CodecId=mpeg1video,Fps=24000/1001}"},
        {"gif", "CodecVideo{CodecId=gif,Fps=0/1}", "CodecVideo{CodecId=gif,Fps=0/1}"},
        {"mxf", "CodecVideo{CodecId=h264,EncodeOptions{Profile=high}}",
         "CodecVideo{CodecId=h264,EncodeOptions{Profile=baseline}}"},
    };
    for (const auto& row : rows) {
        Property codec = TreeOf(row.codec);
        Container(row.container)->CorrectFormatCodec(codec);
        EXPECT_EQ(Dump(codec), Dump(TreeOf(row.corrected))) << row.container;
    }
    for (const char* container : {"flac", "m4a", "mp3"}) {
        Property codec = TreeOf("CodecVideo{CodecId=png,Cover=true}");
        codec = TreeOf("CodecVideo{CodecId=png,Cover=false}");
        Container(container)->CorrectFormatCodec(codec);
        EXPECT_EQ(Dump(codec), "CodecVideo{CodecId=png,Cover=true}") << "a picture is the cover";
    }
}

}  // namespace
}  // namespace Kestro::Conf
