#include "Kestro/FFWrapper/MuxerRecord.h"

#include <algorithm>
#include <iterator>

#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::FFWrapper {
namespace {

constexpr MuxerRecord MovFamily(const char* name, bool hasCovers) {
    return {.name = name,
            .hasChapters = true,
            .hasLanguages = true,
            .hasCovers = hasCovers,
            .hasRotation = true,
            .namesTracks = true,
            .hasMovableIndex = true};
}

constexpr MuxerRecord kRecords[] = {
    {.name = "matroska", .hasChapters = true, .hasLanguages = true, .hasAttachments = true},
    {.name = "webm", .hasChapters = true, .hasLanguages = true},
    MovFamily("mp4", true),
    MovFamily("ipod", true),
    MovFamily("mov", false),
    MovFamily("3gp", false),
    MovFamily("3g2", false),
    {.name = "psp", .hasLanguages = true, .hasRotation = true, .namesTracks = true, .hasMovableIndex = true},
    {.name = "asf", .hasChapters = true, .hasLanguages = true},
    {.name = "mpegts", .hasLanguages = true},
    {.name = "ogg", .hasLanguages = true},
    {.name = "oga", .hasLanguages = true},
    {.name = "ogv", .hasLanguages = true},
    {.name = "mp3", .hasChapters = true, .hasCovers = true},
    {.name = "flac", .hasCovers = true},
    {.name = "avi", .hasTimestamps = false},
    {.name = "swf", .hasTimestamps = false},
    {.name = "mxf", .hasTimestamps = false},
};
constexpr MuxerRecord kOther{.name = ""};

struct FilterRow {
    const char* muxer;
    const std::string& codecId;
    const char* filter;
};
constexpr FilterRow kFilters[] = {
    {"avi", Conf::IFormatCodecVideo::CODEC_ID_H264, "h264_mp4toannexb"},
    {"avi", Conf::IFormatCodecVideo::CODEC_ID_H265, "hevc_mp4toannexb"},
    // AVI packs two frames into one where frames come before those that they refer to.
    {"mp4", Conf::IFormatCodecVideo::CODEC_ID_MPEG4, "mpeg4_unpack_bframes"},
    {"mov", Conf::IFormatCodecVideo::CODEC_ID_MPEG4, "mpeg4_unpack_bframes"},
    {"ipod", Conf::IFormatCodecVideo::CODEC_ID_MPEG4, "mpeg4_unpack_bframes"},
    {"matroska", Conf::IFormatCodecVideo::CODEC_ID_MPEG4, "mpeg4_unpack_bframes"},
};

}  // namespace

std::string BitstreamFilter(const std::string& muxer, const std::string& codecId) {
    const auto* row = std::ranges::find_if(
        kFilters, [&](const FilterRow& filter) { return muxer == filter.muxer && codecId == filter.codecId; });
    return row != std::end(kFilters) ? row->filter : std::string();
}

const MuxerRecord& MuxerRecord::Find(const std::string& muxer) {
    const auto* row = std::ranges::find_if(kRecords, [&](const MuxerRecord& record) { return muxer == record.name; });
    return row != std::end(kRecords) ? *row : kOther;
}

}  // namespace Kestro::FFWrapper
