#include "Kestro/Conf/DataHelpers/MuxerRules.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

namespace Kestro::Conf {

namespace {

// The cover pictures of audio files.
constexpr AVCodecID kId3Pictures[] = {AV_CODEC_ID_MJPEG, AV_CODEC_ID_BMP, AV_CODEC_ID_GIF, AV_CODEC_ID_PNG,
                                      AV_CODEC_ID_TIFF};
constexpr AVCodecID kFlacPictures[] = {AV_CODEC_ID_MJPEG, AV_CODEC_ID_BMP, AV_CODEC_ID_PNG, AV_CODEC_ID_TIFF};
constexpr AVCodecID kIpodPictures[] = {AV_CODEC_ID_MJPEG, AV_CODEC_ID_BMP, AV_CODEC_ID_PNG};

// The program streams of MPEG have numbers for these. Others are taken, and read back as something else.
constexpr AVCodecID kProgramStream[] = {
    AV_CODEC_ID_H264, AV_CODEC_ID_HEVC, AV_CODEC_ID_MPEG4, AV_CODEC_ID_MPEG1VIDEO, AV_CODEC_ID_MPEG2VIDEO,
    AV_CODEC_ID_AC3,  AV_CODEC_ID_DTS,  AV_CODEC_ID_MP3,   AV_CODEC_ID_MP2,        AV_CODEC_ID_DVD_SUBTITLE,
};
// Likewise; the rest becomes private data.
constexpr AVCodecID kTransportStream[] = {
    AV_CODEC_ID_H264,       AV_CODEC_ID_HEVC,         AV_CODEC_ID_MPEG4,        AV_CODEC_ID_MPEG1VIDEO,
    AV_CODEC_ID_AAC,        AV_CODEC_ID_AC3,          AV_CODEC_ID_DTS,          AV_CODEC_ID_MP3,
    AV_CODEC_ID_MP2,        AV_CODEC_ID_DVB_TELETEXT, AV_CODEC_ID_DVB_SUBTITLE, AV_CODEC_ID_OPUS,
    AV_CODEC_ID_MPEG2VIDEO,
};

constexpr AVCodecID kOgg[] = {AV_CODEC_ID_THEORA, AV_CODEC_ID_VP8, AV_CODEC_ID_FLAC, AV_CODEC_ID_VORBIS,
                              AV_CODEC_ID_OPUS};
// WebM is Matroska for these alone (WebM Container Guidelines).
constexpr AVCodecID kWebm[] = {AV_CODEC_ID_VP8, AV_CODEC_ID_VP9, AV_CODEC_ID_OPUS, AV_CODEC_ID_VORBIS,
                               AV_CODEC_ID_WEBVTT};
constexpr AVCodecID kMatroskaMore[] = {AV_CODEC_ID_HEVC,   AV_CODEC_ID_PRORES, AV_CODEC_ID_QTRLE,
                                       AV_CODEC_ID_GIF,    AV_CODEC_ID_TIFF,   AV_CODEC_ID_SGI,
                                       AV_CODEC_ID_SUBRIP, AV_CODEC_ID_ASS,    AV_CODEC_ID_WEBVTT};
// QuickTime stores under their tags in AVI and WAV what has none of its own.
constexpr AVCodecID kMovMore[] = {AV_CODEC_ID_THEORA,  AV_CODEC_ID_WMV2,   AV_CODEC_ID_WMV3,  AV_CODEC_ID_FLV1,
                                  AV_CODEC_ID_UTVIDEO, AV_CODEC_ID_JPEGLS, AV_CODEC_ID_WMAV2, AV_CODEC_ID_VORBIS};
constexpr AVCodecID kMovLess[] = {AV_CODEC_ID_VP8, AV_CODEC_ID_VP9, AV_CODEC_ID_AV1, AV_CODEC_ID_FLAC,
                                  AV_CODEC_ID_OPUS};
constexpr AVCodecID kMp4More[] = {AV_CODEC_ID_BMP};
// MP2 shares its number with MP3.
#if LIBAVFORMAT_VERSION_MAJOR >= 60  // since FFmpeg 6.0 FLAC is no longer experimental
constexpr AVCodecID kMp4Less[] = {AV_CODEC_ID_MP2};
#else
constexpr AVCodecID kMp4Less[] = {AV_CODEC_ID_MP2, AV_CODEC_ID_FLAC};
#endif
constexpr int64_t kMp4Mp3Rates[] = {16'000, 22'050, 24'000, 32'000, 44'100, 48'000};
constexpr SoundRule kMp4Sounds[] = {{AV_CODEC_ID_MP3, kMp4Mp3Rates}};

constexpr AVCodecID kMxf[] = {AV_CODEC_ID_H264, AV_CODEC_ID_DVVIDEO, AV_CODEC_ID_JPEG2000, AV_CODEC_ID_PCM_S24LE};
constexpr int64_t kMxfRates[] = {48'000};
constexpr SoundRule kMxfSounds[] = {{AV_CODEC_ID_PCM_S24LE, kMxfRates}};

// Flash has a code for few rates; other PCM is read back as that of little endian.
constexpr AVCodecID kFlvMore[] = {AV_CODEC_ID_TEXT};
constexpr AVCodecID kFlvLess[] = {AV_CODEC_ID_MPEG4, AV_CODEC_ID_H263, AV_CODEC_ID_PCM_S16BE};
constexpr int64_t kFlashRates[] = {11'025, 22'050, 44'100};
constexpr SoundRule kFlvSounds[] = {{AV_CODEC_ID_PCM_U8, kFlashRates, 2}, {AV_CODEC_ID_PCM_S16LE, kFlashRates, 2}};
constexpr AVCodecID kSwf[] = {AV_CODEC_ID_MJPEG};

constexpr AVCodecID kPictures[] = {
    AV_CODEC_ID_BMP,   AV_CODEC_ID_PNG, AV_CODEC_ID_TIFF, AV_CODEC_ID_DPX, AV_CODEC_ID_JPEG2000, AV_CODEC_ID_JPEGLS,
    AV_CODEC_ID_PBM,   AV_CODEC_ID_PCX, AV_CODEC_ID_PGM,  AV_CODEC_ID_PPM, AV_CODEC_ID_PGMYUV,   AV_CODEC_ID_PAM,
    AV_CODEC_ID_TARGA, AV_CODEC_ID_XBM, AV_CODEC_ID_SGI,  AV_CODEC_ID_XWD, AV_CODEC_ID_MJPEG,
};

constexpr MuxerRule kRules[] = {
    // Their tag tables tell the truth.
    {.muxer = "3g2", .byTags = true},
    {.muxer = "3gp", .byTags = true},
    {.muxer = "aiff", .byTags = true},
    {.muxer = "asf", .byTags = true},
    {.muxer = "au", .byTags = true},
    {.muxer = "avi", .byTags = true},
    {.muxer = "wav", .byTags = true},
    // Nearly.
    {.muxer = "flv", .byTags = true, .more = kFlvMore, .less = kFlvLess, .sounds = kFlvSounds},
    {.muxer = "ipod", .byTags = true, .more = kIpodPictures},
    {.muxer = "matroska", .byTags = true, .more = kMatroskaMore},
    {.muxer = "mov", .byTags = true, .more = kMovMore, .less = kMovLess},
    {.muxer = "mp4", .byTags = true, .more = kMp4More, .less = kMp4Less, .sounds = kMp4Sounds},
    // They have none.
    {.muxer = "ac3"},
    {.muxer = "adts"},
    {.muxer = "apng"},
    {.muxer = "ass"},
    {.muxer = "dvd", .more = kProgramStream},
    {.muxer = "flac", .more = kFlacPictures},
    {.muxer = "gif"},
    {.muxer = "image2", .more = kPictures},
    {.muxer = "mp3", .more = kId3Pictures},
    {.muxer = "mpeg", .more = kProgramStream},
    {.muxer = "mpegts", .more = kTransportStream},
    {.muxer = "mxf", .more = kMxf, .sounds = kMxfSounds},
    {.muxer = "ogg", .more = kOgg},
    {.muxer = "ogv", .more = kOgg},
    {.muxer = "srt"},
    {.muxer = "svcd", .more = kProgramStream},
    {.muxer = "swf", .more = kSwf},
    {.muxer = "vcd", .more = kProgramStream},
    {.muxer = "vob", .more = kProgramStream},
    {.muxer = "webm", .more = kWebm},
};

using Muxers = std::unordered_map<std::string_view, Muxer>;

/// FFmpeg itself looks through all of its muxers for a name.
Muxers MakeMuxers() {
    Muxers muxers;
    void* position = nullptr;
    while (const AVOutputFormat* format = av_muxer_iterate(&position)) {
        for (std::string_view names = format->name; !names.empty();) {  // "one,another"
            const std::string_view name = names.substr(0, names.find(','));
            names.remove_prefix(std::min(names.size(), name.size() + 1));
            muxers.try_emplace(name, Muxer{format});
        }
    }
    for (const MuxerRule& rule : kRules) {
        const auto muxer = muxers.find(rule.muxer);
        if (muxer != muxers.end()) muxer->second.rule = &rule;
    }
    return muxers;
}

/// By name.
const Muxers kMuxers = MakeMuxers();

}  // namespace

Muxer FindMuxer(const std::string& container) {
    const auto known = kMuxers.find(FFWrapper::MuxerNameFromFormatName(container));
    return known != kMuxers.end() ? known->second : Muxer();
}

}  // namespace Kestro::Conf
