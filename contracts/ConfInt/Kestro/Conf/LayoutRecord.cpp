#include "Kestro/Conf/LayoutRecord.h"

#include "Kestro/Conf/FindRecord.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Constant.h"

namespace Kestro::Conf {
namespace {

// In the order of FFmpeg's own table: the first row with a number of channels is FFmpeg's default for that number.
KESTRO_CONSTANT LayoutRecord kRecords[] = {
    {ChannelLayout::Mono, IFormatCodecAudio::TAG_CH_LAYOUT_MONO, 1, 0x4},
    {ChannelLayout::Stereo, IFormatCodecAudio::TAG_CH_LAYOUT_STEREO, 2, 0x3},
    {ChannelLayout::Layout2Point1, IFormatCodecAudio::TAG_CH_LAYOUT_2POINT1, 3, 0xB},
    {ChannelLayout::Surround, "3.0", 3, 0x7},
    {ChannelLayout::Layout2_1, IFormatCodecAudio::TAG_CH_LAYOUT_2_1, 3, 0x103},
    {ChannelLayout::Layout4Point0, "4.0", 4, 0x107},
    {ChannelLayout::Quad, IFormatCodecAudio::TAG_CH_LAYOUT_QUAD, 4, 0x33},
    {ChannelLayout::Layout2_2, IFormatCodecAudio::TAG_CH_LAYOUT_2_2, 4, 0x603},
    {ChannelLayout::Layout3Point1, "3.1", 4, 0xF},
    {ChannelLayout::Layout5Point0Back, IFormatCodecAudio::TAG_CH_LAYOUT_5POINT0_BACK, 5, 0x37},
    {ChannelLayout::Layout5Point0, IFormatCodecAudio::TAG_CH_LAYOUT_5POINT0, 5, 0x607},
    {ChannelLayout::Layout4Point1, "4.1", 5, 0x10F},
    {ChannelLayout::Layout5Point1Back, IFormatCodecAudio::TAG_CH_LAYOUT_5POINT1_BACK, 6, 0x3F},
    {ChannelLayout::Layout5Point1, IFormatCodecAudio::TAG_CH_LAYOUT_5POINT1, 6, 0x60F},
    {ChannelLayout::Layout6Point0, "6.0", 6, 0x707},
    {ChannelLayout::Layout6Point0Front, "6.0(front)", 6, 0x6C3},
    {ChannelLayout::Hexagonal, "hexagonal", 6, 0x137},
    {ChannelLayout::Layout6Point1, "6.1", 7, 0x70F},
    {ChannelLayout::Layout6Point1Back, "6.1(back)", 7, 0x13F},
    {ChannelLayout::Layout6Point1Front, "6.1(front)", 7, 0x6CB},
    {ChannelLayout::Layout7Point0, "7.0", 7, 0x637},
    {ChannelLayout::Layout7Point0Front, "7.0(front)", 7, 0x6C7},
    {ChannelLayout::Layout7Point1, IFormatCodecAudio::TAG_CH_LAYOUT_7POINT1, 8, 0x63F},
    {ChannelLayout::Layout7Point1WideBack, "7.1(wide)", 8, 0xFF},
    {ChannelLayout::Layout7Point1Wide, "7.1(wide-side)", 8, 0x6CF},
    {ChannelLayout::Octagonal, "octagonal", 8, 0x737},
    {ChannelLayout::Hexadecagonal, "hexadecagonal", 16, 0x1'8003'F737},
    {ChannelLayout::StereoDownmix, "downmix", 2, 0x6000'0000},
    {ChannelLayout::Layout22Point2, "22.2", 24, 0x1F8'0003'FFFF},
};

}  // namespace

const LayoutRecord* LayoutRecord::Find(ChannelLayout code) {
    return FindRecord(kRecords, [code](const LayoutRecord& record) { return record.code == code; });
}

const LayoutRecord* LayoutRecord::Find(const std::string& name) {
    return FindRecord(kRecords, [&name](const LayoutRecord& record) { return record.name == name; });
}

const LayoutRecord* LayoutRecord::Find(int channels) {
    return FindRecord(kRecords, [channels](const LayoutRecord& record) { return record.channels == channels; });
}

std::span<const LayoutRecord> LayoutRecord::All() { return kRecords; }

}  // namespace Kestro::Conf
