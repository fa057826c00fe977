#include "Kestro/Conf/DataHelpers/MuxerRules.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "Kestro/Conf/DataHelpers/FormatFacts.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/FFWrapper/EncoderTakesPixelFormat.h"
#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"
#include "Kestro/UntilUnload.h"

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
constexpr AVCodecID kMatroskaAlso[] = {AV_CODEC_ID_HEVC,   AV_CODEC_ID_PRORES, AV_CODEC_ID_QTRLE,
                                       AV_CODEC_ID_GIF,    AV_CODEC_ID_TIFF,   AV_CODEC_ID_SGI,
                                       AV_CODEC_ID_SUBRIP, AV_CODEC_ID_ASS,    AV_CODEC_ID_WEBVTT};
// QuickTime stores under their tags in AVI and WAV what has none of its own.
constexpr AVCodecID kMovAlso[] = {AV_CODEC_ID_THEORA,  AV_CODEC_ID_WMV2,   AV_CODEC_ID_WMV3,   AV_CODEC_ID_FLV1,
                                  AV_CODEC_ID_UTVIDEO, AV_CODEC_ID_JPEGLS, AV_CODEC_ID_VORBIS, AV_CODEC_ID_WMAV2};
// FFmpeg 7 (libavformat 61) reads back no WMA.
constexpr std::span<const AVCodecID> kMovAlsoSince61 = std::span(kMovAlso).first(7);
constexpr AVCodecID kMovNot[] = {AV_CODEC_ID_VP8, AV_CODEC_ID_VP9, AV_CODEC_ID_AV1, AV_CODEC_ID_FLAC, AV_CODEC_ID_OPUS};
constexpr AVCodecID kMp4Also[] = {AV_CODEC_ID_BMP};
// MP2 shares its number with MP3; FLAC was experimental before FFmpeg 6 (libavformat 60).
constexpr AVCodecID kMp4Not[] = {AV_CODEC_ID_MP2};
constexpr AVCodecID kMp4NotBefore60[] = {AV_CODEC_ID_MP2, AV_CODEC_ID_FLAC};
// MP4 of one video and one audio stream for a player of before these.
constexpr AVCodecID kPspNot[] = {AV_CODEC_ID_VP9,  AV_CODEC_ID_AV1,      AV_CODEC_ID_OPUS,        AV_CODEC_ID_MP2,
                                 AV_CODEC_ID_FLAC, AV_CODEC_ID_MOV_TEXT, AV_CODEC_ID_DVD_SUBTITLE};
constexpr AudioLimits kMp4Limits[] = {{AV_CODEC_ID_MP3, kMp4Mp3SampleRates}};

// ProRes as copied from a camera's file; FFmpeg's encoder prores_ks does not say all that MXF wants to know.
constexpr AVCodecID kMxf[] = {AV_CODEC_ID_H264, AV_CODEC_ID_DVVIDEO, AV_CODEC_ID_JPEG2000, AV_CODEC_ID_PRORES,
                              AV_CODEC_ID_PCM_S24LE};
constexpr AudioLimits kMxfLimits[] = {{AV_CODEC_ID_PCM_S24LE, k48kHz}};

// Flash has a code for few rates; other PCM is read back as that of little endian.
constexpr AVCodecID kFlvAlso[] = {AV_CODEC_ID_TEXT};
constexpr AVCodecID kFlvNot[] = {AV_CODEC_ID_MPEG4, AV_CODEC_ID_H263, AV_CODEC_ID_PCM_S16BE};
constexpr AudioLimits kFlvLimits[] = {{AV_CODEC_ID_PCM_U8, kFlashSampleRates, 2},
                                      {AV_CODEC_ID_PCM_S16LE, kFlashSampleRates, 2}};
constexpr AVCodecID kSwf[] = {AV_CODEC_ID_MJPEG};

constexpr AVCodecID kPictures[] = {
    AV_CODEC_ID_BMP,   AV_CODEC_ID_PNG, AV_CODEC_ID_TIFF, AV_CODEC_ID_DPX, AV_CODEC_ID_JPEG2000, AV_CODEC_ID_JPEGLS,
    AV_CODEC_ID_PBM,   AV_CODEC_ID_PCX, AV_CODEC_ID_PGM,  AV_CODEC_ID_PPM, AV_CODEC_ID_PGMYUV,   AV_CODEC_ID_PAM,
    AV_CODEC_ID_TARGA, AV_CODEC_ID_XBM, AV_CODEC_ID_SGI,  AV_CODEC_ID_XWD, AV_CODEC_ID_MJPEG,
};

constexpr MuxerRule kRules[] = {
    // Their tag tables tell the truth.
    {.muxer = "3g2", .fromTagTable = true},
    {.muxer = "3gp", .fromTagTable = true},
    {.muxer = "aiff", .fromTagTable = true},
    {.muxer = "asf", .fromTagTable = true},
    {.muxer = "au", .fromTagTable = true},
    {.muxer = "avi", .fromTagTable = true, .copiesHdmv = true},
    {.muxer = "wav", .fromTagTable = true},
    // Nearly.
    {.muxer = "flv", .fromTagTable = true, .alsoStores = kFlvAlso, .exceptFor = kFlvNot, .audioLimits = kFlvLimits},
    {.muxer = "ipod", .fromTagTable = true, .alsoStores = kIpodPictures},
    {.muxer = "matroska", .fromTagTable = true, .alsoStores = kMatroskaAlso, .copiesHdmv = true},
    {.muxer = "mov", .fromTagTable = true, .alsoStores = kMovAlso, .exceptFor = kMovNot},
    {.muxer = "mov", .since = 61, .fromTagTable = true, .alsoStores = kMovAlsoSince61, .exceptFor = kMovNot},
    {.muxer = "mp4",
     .fromTagTable = true,
     .alsoStores = kMp4Also,
     .exceptFor = kMp4NotBefore60,
     .audioLimits = kMp4Limits},
    {.muxer = "mp4",
     .since = 60,
     .fromTagTable = true,
     .alsoStores = kMp4Also,
     .exceptFor = kMp4Not,
     .audioLimits = kMp4Limits},
    {.muxer = "psp", .fromTagTable = true, .exceptFor = kPspNot, .audioLimits = kMp4Limits},
    // They have none.
    {.muxer = "ac3"},
    {.muxer = "adts"},
    {.muxer = "apng"},
    {.muxer = "ass"},
    {.muxer = "dvd", .alsoStores = kProgramStream},
    {.muxer = "flac", .alsoStores = kFlacPictures},
    {.muxer = "gif"},
    {.muxer = "image2", .alsoStores = kPictures, .pixelsOfEncoder = true},
    {.muxer = "mp3", .alsoStores = kId3Pictures},
    {.muxer = "mpeg", .alsoStores = kProgramStream},
    {.muxer = "mpegts", .alsoStores = kTransportStream},
    {.muxer = "mxf", .alsoStores = kMxf, .audioLimits = kMxfLimits},
    {.muxer = "oga", .alsoStores = kOgg},
    {.muxer = "ogg", .alsoStores = kOgg},
    {.muxer = "ogv", .alsoStores = kOgg},
    {.muxer = "opus", .alsoStores = kOgg},
    {.muxer = "spx", .alsoStores = kOgg},
    {.muxer = "srt"},
    {.muxer = "svcd", .alsoStores = kProgramStream},
    {.muxer = "swf", .alsoStores = kSwf},
    {.muxer = "vcd", .alsoStores = kProgramStream},
    {.muxer = "vob", .alsoStores = kProgramStream},
    {.muxer = "webm", .alsoStores = kWebm},
};

using Muxers = std::unordered_map<std::string_view, Muxer>;

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
        if (muxer != muxers.end() && AV_VERSION_MAJOR(avformat_version()) >= rule.since) muxer->second.rule = &rule;
    }
    return muxers;
}

/// By name.
const Muxers& TheMuxers() {
    static const Muxers& muxers = UntilUnload(MakeMuxers());
    return muxers;
}

bool IsIn(std::span<const AVCodecID> ids, AVCodecID id) { return std::ranges::find(ids, id) != ids.end(); }

bool HasTag(const AVOutputFormat& muxer, AVCodecID id) {
    unsigned int tag = 0;
    return muxer.codec_tag != nullptr && av_codec_get_tag2(muxer.codec_tag, id, &tag) != 0;
}

/// Whether the muxer stores the codec under that tag; one without tag tables does not mind.
bool TakesTag(const AVOutputFormat& muxer, AVCodecID id, int64_t tag) {
    if (tag == 0 || muxer.codec_tag == nullptr) return true;
    if (tag < 0 || tag > int64_t{UINT32_MAX}) return false;
    const AVCodecID known = av_codec_get_id(muxer.codec_tag, static_cast<unsigned int>(tag));
    // An unknown tag is written as it is, unless the codec has another one.
    return known == id || (known == AV_CODEC_ID_NONE && !HasTag(muxer, id));
}

/// MPEG-2 of a Blu-ray disc.
constexpr int64_t kHdmv = MKTAG('H', 'D', 'M', 'V');

/// Whether a source may have the tag where the muxer has another: it says no more than the codec, and the muxer
/// chooses.
bool IsSourcesTag(AVCodecID id, int64_t tag) {
    return (id == AV_CODEC_ID_AC3 && tag == MKTAG('A', 'C', '-', '3')) ||
           (id == AV_CODEC_ID_MPEG4 && (tag == MKTAG('m', 'p', '4', 'v') || tag == MKTAG('X', 'V', 'I', 'D')));
}

bool IsWithin(const AudioLimits& limits, const IFormatCodecAudio& codec) {
    const auto rates = limits.sampleRates;
    if (codec.ExistsSampleRate() && !rates.empty() && std::ranges::find(rates, codec.GetSampleRate()) == rates.end()) {
        return false;
    }
    if (!codec.ExistsChannelLayout() || limits.mostChannels == 0) return true;
    const LayoutRecord* layout = LayoutRecord::Find(codec.GetChannelLayout());
    return layout == nullptr || layout->channels <= limits.mostChannels;
}

bool IsWithinLimits(const MuxerRule& rule, AVCodecID id, const IFormatCodec& codec) {
    const auto limits = std::ranges::find(rule.audioLimits, id, &AudioLimits::codec);
    if (limits != rule.audioLimits.end()) {
        const auto* audio = dynamic_cast<const IFormatCodecAudio*>(&codec);
        return audio == nullptr || IsWithin(*limits, *audio);
    }
    if (!rule.pixelsOfEncoder) return true;
    const auto* video = dynamic_cast<const IFormatCodecVideo*>(&codec);
    return video == nullptr || !video->ExistsPixelFormat() ||
           FFWrapper::EncoderTakesPixelFormat(video->GetCodecID(), video->GetPixelFormat());
}

}  // namespace

Muxer FindMuxer(const std::string& container) {
    const std::string& name = FFWrapper::MuxerNameFromFormatName(container);
    const Muxers& muxers = TheMuxers();
    if (const auto known = muxers.find(name); known != muxers.end()) return known->second;
    // FFmpeg finds a muxer whatever the case of its letters, and none has great ones.
    std::string lowered = name;
    std::ranges::transform(lowered, lowered.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
    const auto known = muxers.find(lowered);
    return known != muxers.end() ? known->second : Muxer{};
}

bool Stores(const Muxer& muxer, AVCodecID id, const IFormatCodec& codec) {
    const auto& [format, rule] = muxer;
    const int64_t tag = IsSourcesTag(id, codec.GetCodecTag()) ? 0 : codec.GetCodecTag();
    const bool isCopied = codec.ExistsLossless() && codec.GetLossless();
    if (isCopied && format->codec_tag != nullptr && id == AV_CODEC_ID_MPEG2VIDEO && tag == kHdmv) {
        return rule != nullptr && rule->copiesHdmv;
    }
    if (!TakesTag(*format, id, tag)) return false;
    // A stream that is copied goes by the muxer's tags alone.
    if (rule == nullptr || (isCopied && format->codec_tag != nullptr)) return HasTag(*format, id);
    const bool isStored =
        IsIn(rule->alsoStores, id) || (rule->fromTagTable && !IsIn(rule->exceptFor, id) && HasTag(*format, id));
    return isStored && IsWithinLimits(*rule, id, codec);
}

}  // namespace Kestro::Conf
