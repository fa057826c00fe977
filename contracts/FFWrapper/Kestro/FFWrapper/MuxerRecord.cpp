#include "Kestro/FFWrapper/MuxerRecord.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::FFWrapper {
namespace {

constexpr const char* kQuickTime = "mov";

constexpr MuxerRecord MovFamily(const char* name, bool hasCovers, bool hasForcedMarks = false) {
    return {.name = name,
            .hasChapters = true,
            .hasLanguages = true,
            .hasCovers = hasCovers,
            .hasForcedMarks = hasForcedMarks,
            .hasRotation = true,
            .namesTracks = true,
            .hasMovableIndex = true};
}

constexpr MuxerRecord kRecords[] = {
    {.name = "matroska",
     .hasChapters = true,
     .hasLanguages = true,
     .hasAttachments = true,
     .attachesCovers = true,
     .hasForcedMarks = true,
     .namesCodecs = true},
    {.name = "webm", .hasChapters = true, .hasLanguages = true, .hasForcedMarks = true},
    MovFamily("mp4", true, true),
    MovFamily("ipod", true),
    MovFamily(kQuickTime, false),
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

constexpr const char* kAvi[] = {"avi"};
constexpr const char* kMxf[] = {"mxf"};
constexpr const char* kProgramStreams[] = {"mpeg", "vob", "dvd", "svcd", "vcd"};
constexpr const char* kMpegStreams[] = {"mpeg", "vob", "dvd", "svcd", "vcd", "mpegts"};
constexpr const char* kWithHeaders[] = {"mp4", "mov", "ipod", "matroska"};

struct FilterRow {
    std::span<const char* const> muxers;
    const std::string& codecId;
    const char* filter;
};
constexpr FilterRow kFilters[] = {
    {kAvi, Conf::IFormatCodecVideo::CODEC_ID_H264, "h264_mp4toannexb"},
    {kAvi, Conf::IFormatCodecVideo::CODEC_ID_H265, "hevc_mp4toannexb"},
    {kMxf, Conf::IFormatCodecVideo::CODEC_ID_H264, "h264_mp4toannexb"},
    {kProgramStreams, Conf::IFormatCodecVideo::CODEC_ID_H264, "h264_mp4toannexb"},
    {kProgramStreams, Conf::IFormatCodecVideo::CODEC_ID_H265, "hevc_mp4toannexb"},
    // AVI packs two frames into one where frames come before those that they refer to.
    {kWithHeaders, Conf::IFormatCodecVideo::CODEC_ID_MPEG4, "mpeg4_unpack_bframes"},
    // They have no header for what tells how to decode it.
    {kMpegStreams, Conf::IFormatCodecVideo::CODEC_ID_MPEG4, "mpeg4_unpack_bframes,dump_extra"},
};

// Where a language has a code by its English name and one by its own, QuickTime's list has the first or the second.
struct Languages {
    const char* other;
    const char* ofQuickTime;
};
constexpr Languages kLanguages[] = {
    {"bod", "tib"}, {"cym", "wel"}, {"cze", "ces"}, {"deu", "ger"}, {"ell", "gre"}, {"eus", "baq"}, {"fas", "per"},
    {"fre", "fra"}, {"hye", "arm"}, {"isl", "ice"}, {"kat", "geo"}, {"mkd", "mac"}, {"msa", "may"}, {"mya", "bur"},
    {"nld", "dut"}, {"rum", "ron"}, {"slo", "slk"}, {"sqi", "alb"}, {"zho", "chi"},
};

}  // namespace

std::string LanguageFor(const std::string& muxer, const std::string& language) {
    if (muxer != kQuickTime) return language;
    const auto* row = std::ranges::find_if(kLanguages, [&](const Languages& entry) { return language == entry.other; });
    return row != std::end(kLanguages) ? row->ofQuickTime : language;
}

std::string BitstreamFilter(const std::string& muxer, const std::string& codecId) {
    const auto* row = std::ranges::find_if(kFilters, [&](const FilterRow& filter) {
        return codecId == filter.codecId && std::ranges::find(filter.muxers, muxer) != filter.muxers.end();
    });
    return row != std::end(kFilters) ? row->filter : std::string();
}

const MuxerRecord& MuxerRecord::Find(const std::string& muxer) {
    const auto* row = std::ranges::find_if(kRecords, [&](const MuxerRecord& record) { return muxer == record.name; });
    return row != std::end(kRecords) ? *row : kOther;
}

}  // namespace Kestro::FFWrapper
