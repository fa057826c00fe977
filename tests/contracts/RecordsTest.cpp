#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/samplefmt.h>
#include <libavutil/version.h>
}

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"

namespace Kestro::Conf {
namespace {

// Newer releases of FFmpeg have more layouts; the table has those of 5.1.
constexpr bool kSameLayoutsAsFfmpeg = LIBAVUTIL_VERSION_MAJOR == 57;

std::string Describe(const AVChannelLayout& layout) {
    char name[64] = {};
    return av_channel_layout_describe(&layout, name, sizeof name) > 0 ? name : "";
}

TEST(LayoutRecords, AgreeWithFfmpeg) {
    int code = 0;
    for (const LayoutRecord& record : LayoutRecord::All()) {
        SCOPED_TRACE(record.name);
        EXPECT_EQ(static_cast<int>(record.code), ++code);
        EXPECT_EQ(LayoutRecord::Find(record.code), &record);
        EXPECT_EQ(LayoutRecord::Find(record.name), &record);

        AVChannelLayout layout{};
        ASSERT_EQ(av_channel_layout_from_mask(&layout, record.ffmpegMask), 0);
        EXPECT_EQ(Describe(layout), record.name);
        EXPECT_EQ(layout.nb_channels, record.channels);
    }
    if (kSameLayoutsAsFfmpeg) {
        std::size_t count = 0;
        for (void* place = nullptr; av_channel_layout_standard(&place) != nullptr;) ++count;
        EXPECT_EQ(LayoutRecord::All().size(), count);
    }
}

TEST(LayoutRecords, ACountOfChannelsGivesFfmpegsDefault) {
    for (int channels = 1; channels <= 64; ++channels) {
        SCOPED_TRACE(channels);
        const LayoutRecord* record = LayoutRecord::Find(channels);
        AVChannelLayout layout{};
        av_channel_layout_default(&layout, channels);
        if (record != nullptr) {
            EXPECT_EQ(record->ffmpegMask, layout.u.mask);
        } else if (kSameLayoutsAsFfmpeg) {
            EXPECT_EQ(layout.order, AV_CHANNEL_ORDER_UNSPEC);
        }
    }
    for (const int channels : {0, -1, INT_MIN, INT_MAX}) EXPECT_EQ(LayoutRecord::Find(channels), nullptr) << channels;
}

TEST(LayoutRecords, ConstantsAndEnumeratorsNameTheMaskOfTheSameName) {
    const struct {
        const std::string& name;
        ChannelLayout code;
        uint64_t mask;
    } cases[] = {
        {IFormatCodecAudio::TAG_CH_LAYOUT_MONO, ChannelLayout::Mono, AV_CH_LAYOUT_MONO},
        {IFormatCodecAudio::TAG_CH_LAYOUT_STEREO, ChannelLayout::Stereo, AV_CH_LAYOUT_STEREO},
        {IFormatCodecAudio::TAG_CH_LAYOUT_2POINT1, ChannelLayout::Layout2Point1, AV_CH_LAYOUT_2POINT1},
        {IFormatCodecAudio::TAG_CH_LAYOUT_2_1, ChannelLayout::Layout2_1, AV_CH_LAYOUT_2_1},
        {IFormatCodecAudio::TAG_CH_LAYOUT_2_2, ChannelLayout::Layout2_2, AV_CH_LAYOUT_2_2},
        {IFormatCodecAudio::TAG_CH_LAYOUT_QUAD, ChannelLayout::Quad, AV_CH_LAYOUT_QUAD},
        {IFormatCodecAudio::TAG_CH_LAYOUT_5POINT0, ChannelLayout::Layout5Point0, AV_CH_LAYOUT_5POINT0},
        {IFormatCodecAudio::TAG_CH_LAYOUT_5POINT1, ChannelLayout::Layout5Point1, AV_CH_LAYOUT_5POINT1},
        {IFormatCodecAudio::TAG_CH_LAYOUT_5POINT0_BACK, ChannelLayout::Layout5Point0Back, AV_CH_LAYOUT_5POINT0_BACK},
        {IFormatCodecAudio::TAG_CH_LAYOUT_5POINT1_BACK, ChannelLayout::Layout5Point1Back, AV_CH_LAYOUT_5POINT1_BACK},
        {IFormatCodecAudio::TAG_CH_LAYOUT_7POINT1, ChannelLayout::Layout7Point1, AV_CH_LAYOUT_7POINT1},
        {"7.1(wide)", ChannelLayout::Layout7Point1WideBack, AV_CH_LAYOUT_7POINT1_WIDE_BACK},
        {"6.1(back)", ChannelLayout::Layout6Point1Back, AV_CH_LAYOUT_6POINT1_BACK},
        {"downmix", ChannelLayout::StereoDownmix, AV_CH_LAYOUT_STEREO_DOWNMIX},
        {"22.2", ChannelLayout::Layout22Point2, AV_CH_LAYOUT_22POINT2},
    };
    for (const auto& [name, code, mask] : cases) {
        const LayoutRecord* record = LayoutRecord::Find(name);
        ASSERT_NE(record, nullptr) << name;
        EXPECT_EQ(record->code, code) << name;
        EXPECT_EQ(record->ffmpegMask, mask) << name;
    }
    EXPECT_EQ(static_cast<int>(ChannelLayout::Stereo), 2);
}

TEST(SampleFmtRecords, AgreeWithFfmpeg) {
    int code = 0;
    for (const SampleFmtRecord& record : SampleFmtRecord::All()) {
        SCOPED_TRACE(record.name);
        EXPECT_EQ(SampleFmtRecord::Find(record.code), &record);
        EXPECT_EQ(SampleFmtRecord::Find(record.name), &record);

        const auto format = static_cast<AVSampleFormat>(code++);
        EXPECT_EQ(static_cast<int>(record.code), format);
        EXPECT_EQ(record.name, av_get_sample_fmt_name(format));
        EXPECT_EQ(record.bitsPerSample, 8 * av_get_bytes_per_sample(format));
        EXPECT_EQ(record.planar, av_sample_fmt_is_planar(format) != 0);
        EXPECT_EQ(static_cast<int>(record.alternative), av_get_alt_sample_fmt(format, record.planar ? 0 : 1));
    }
    EXPECT_EQ(code, AV_SAMPLE_FMT_NB);
}

TEST(Records, WhatNoTableKnowsIsNull) {
    for (const char* name : {"", "unknown", "none", "Stereo", "stereo ", "s17", "5.1 (side)"}) {
        EXPECT_EQ(LayoutRecord::Find(name), nullptr) << name;
        EXPECT_EQ(SampleFmtRecord::Find(name), nullptr) << name;
    }
    for (const int code : {-1, 30, INT_MIN, INT_MAX}) {
        EXPECT_EQ(LayoutRecord::Find(static_cast<ChannelLayout>(code)), nullptr) << code;
        EXPECT_EQ(SampleFmtRecord::Find(static_cast<SampleFormats>(code)), nullptr) << code;
    }
    EXPECT_EQ(LayoutRecord::Find(ChannelLayout::Unknown), nullptr);
}

}  // namespace
}  // namespace Kestro::Conf
