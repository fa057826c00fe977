#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "Kestro/Conf/FormatException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Conf {
namespace {

using Core::Property;
using Ratio = Property::Ratio;

// One value of every kind that a node can hold.
std::vector<Property> ValuesOfEveryKind() {
    Property node("");
    node.SetChild("child", 1);
    return {Property(""),
            Property("", true),
            Property("", 2.5),
            Property("", 7),
            Property("", "7"),
            Property("", Ratio(30000, 1001)),
            node};
}

template <class Description>
struct Setting {
    std::string tag;
    Property value;
    std::function<bool(const Description&)> exists;
    /// The setting as it is read, back in a Property.
    std::function<Property(const Description&)> get;
};

template <class Description>
void CheckSettings(const std::vector<Setting<Description>>& settings) {
    for (const Setting<Description>& setting : settings) {
        SCOPED_TRACE(setting.tag);
        const auto expectMissing = [&](const Property& node) {
            const auto description = Description::Create(node);
            EXPECT_FALSE(setting.exists(*description));
            try {
                setting.get(*description);
                FAIL() << "no exception";
            } catch (const FormatException& e) {
                const std::string* details = boost::get_error_info<TagDetails>(e);
                ASSERT_NE(details, nullptr);
                EXPECT_EQ(*details, setting.tag);
                EXPECT_NE(boost::get_error_info<TagCallStack>(e), nullptr);
            }
        };
        expectMissing(Property("codec"));
        for (const Property& value : ValuesOfEveryKind()) {
            Property node("codec");
            node.SetChild(setting.tag, value);
            if (value.Type() != setting.value.Type()) expectMissing(node);
            Description::Create(value);
        }

        Property node("codec");
        node.SetChild(setting.tag, setting.value);
        const auto description = Description::Create(node);
        node.RemoveAll();  // the description has its own copy
        EXPECT_TRUE(setting.exists(*description));
        EXPECT_EQ(setting.get(*description), setting.value);
    }
}

template <class Codec>
std::vector<Setting<Codec>> CommonSettings() {
    return {
        {IFormatCodec::TAG_CODEC_ID, Property("", "h264"), &Codec::ExistsCodecID,
         [](const Codec& c) { return Property("", c.GetCodecID()); }},
        {IFormatCodec::TAG_BITRATE, Property("", 128000), &Codec::ExistsBitrate,
         [](const Codec& c) { return Property("", c.GetBitrate()); }},
        {IFormatCodec::TAG_CODEC_TAG, Property("", int64_t{0xFFFFFFFF}), &Codec::ExistsCodecTag,
         [](const Codec& c) { return Property("", c.GetCodecTag()); }},
        {IFormatCodec::TAG_LOSSLESS, Property("", false), &Codec::ExistsLossless,
         [](const Codec& c) { return Property("", c.GetLossless()); }},
    };
}

TEST(Descriptions, GiveWhatTheNodeHoldsAndNothingElse) {
    CheckSettings(CommonSettings<IFormatCodecSubtitle>());

    auto video = CommonSettings<IFormatCodecVideo>();
    video.push_back({IFormatCodecVideo::TAG_WIDTH, Property("", 1920), &IFormatCodecVideo::ExistsWidth,
                     [](const IFormatCodecVideo& c) { return Property("", c.GetWidth()); }});
    video.push_back({IFormatCodecVideo::TAG_HEIGHT, Property("", 1080), &IFormatCodecVideo::ExistsHeight,
                     [](const IFormatCodecVideo& c) { return Property("", c.GetHeight()); }});
    video.push_back({IFormatCodecVideo::TAG_FPS, Property("", Ratio(24000, 1001)), &IFormatCodecVideo::ExistsFps,
                     [](const IFormatCodecVideo& c) { return Property("", c.GetFps()); }});
    video.push_back({IFormatCodecVideo::TAG_PIXEL_FORMAT, Property("", "yuv420p"),
                     &IFormatCodecVideo::ExistsPixelFormat,
                     [](const IFormatCodecVideo& c) { return Property("", c.GetPixelFormat()); }});
    CheckSettings(video);

    auto audio = CommonSettings<IFormatCodecAudio>();
    audio.push_back({IFormatCodecAudio::TAG_SAMPLE_RATE, Property("", 44100), &IFormatCodecAudio::ExistsSampleRate,
                     [](const IFormatCodecAudio& c) { return Property("", c.GetSampleRate()); }});
    // The two that are read as enumerators stand here with the text that belongs to the one expected enumerator.
    audio.push_back({IFormatCodecAudio::TAG_LAYOUT, Property("", "5.1(side)"), &IFormatCodecAudio::ExistsChannelLayout,
                     [](const IFormatCodecAudio& c) {
                         return Property("", c.GetChannelLayout() == ChannelLayout::Layout5Point1 ? "5.1(side)" : "?");
                     }});
    audio.push_back({IFormatCodecAudio::TAG_SAMPLE_FORMAT, Property("", "fltp"), &IFormatCodecAudio::ExistsSampleFormat,
                     [](const IFormatCodecAudio& c) {
                         return Property("", c.GetSampleFormat() == SampleFormats::Fltp ? "fltp" : "?");
                     }});
    CheckSettings(audio);

    CheckSettings<IFormatFile>({{IFormatFile::TAG_CONTAINER, Property("", "mp4"), &IFormatFile::ExistsFormatName,
                                 [](const IFormatFile& f) { return Property("", f.GetFormatName()); }}});
}

TEST(Descriptions, LayoutsAndFormatsThatNoTableKnows) {
    for (const char* text : {"", "unknown", "none", "stereophonic", "5.1 "}) {
        Property node("codec");
        node.SetChild(IFormatCodecAudio::TAG_LAYOUT, text);
        node.SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, text);
        const auto audio = IFormatCodecAudio::Create(node);
        EXPECT_EQ(audio->GetChannelLayout(), ChannelLayout::Unknown) << text;
        EXPECT_EQ(audio->GetSampleFormat(), SampleFormats::None) << text;
    }
}

TEST(Descriptions, AreSharedByTheirHandles) {
    boost::intrusive_ptr<const IFormatCodec> codec = IFormatCodecVideo::Create(Property("codec"));
    EXPECT_EQ(codec->GetRefCount(), 1);
    EXPECT_EQ(codec->GetStreamType(), StreamType::Video);
    {
        const boost::intrusive_ptr<const IRefCountable> other = codec;
        EXPECT_EQ(codec->GetRefCount(), 2);
    }
    EXPECT_EQ(codec->GetRefCount(), 1);
    EXPECT_EQ(IFormatCodecAudio::Create(Property("codec"))->GetStreamType(), StreamType::Audio);
    EXPECT_EQ(IFormatCodecSubtitle::Create(Property("codec"))->GetStreamType(), StreamType::Subtitle);
}

}  // namespace
}  // namespace Kestro::Conf
