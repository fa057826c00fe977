#include "Kestro/FFWrapper/MuxerOverhead.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace Kestro::FFWrapper {
namespace {

constexpr int64_t kHeader = 4'000;

// Measured on a minute of 0.4 Mbit/s pictures and 128 kbit/s sound. The streams of MPEG are cut into packs of their
// own.
constexpr struct {
    std::string_view muxer;
    int64_t perPacket;
} kPackets[] = {
    {"mp4", 13}, {"mov", 13},  {"ipod", 13}, {"3gp", 13}, {"3g2", 13},  {"matroska", 8}, {"webm", 8},     {"ogg", 8},
    {"flv", 18}, {"mpeg", 19}, {"vob", 25},  {"avi", 36}, {"svcd", 25}, {"vcd", 29},     {"dvd", 126},    {"asf", 46},
    {"adts", 7}, {"mp3", 0},   {"wav", 0},   {"ac3", 0},  {"flac", 0},  {"ogv", 8},      {"mpegts", 150},
};
constexpr int64_t kOther = 60;

}  // namespace

MuxerOverhead MuxerOverhead::Of(const std::string& muxer) {
    const auto* found = std::ranges::find_if(kPackets, [&](const auto& row) { return row.muxer == muxer; });
    return {kHeader, found != std::end(kPackets) ? found->perPacket : kOther};
}

}  // namespace Kestro::FFWrapper
