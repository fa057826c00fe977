#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

extern "C" {
#include <libavformat/avformat.h>
}

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/HelperErrors.h"
#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/GlobalHeaderFunctions";

bool HasGlobalHeader(const IDataHelper& helper) {
    const Core::Property defaults = helper.GetDefaultSettings();
    return defaults.ChildExists(IFormatCodec::TAG_GLOBAL_HEADER) && defaults[IFormatCodec::TAG_GLOBAL_HEADER].GetBool();
}

/// Container names under which FFmpeg has no muxer of its own, and the muxer that writes them.
struct MuxerName {
    Text container;
    Text muxer;
};
constexpr MuxerName kMuxerNames[] = {
    {IFormatFile::FORMAT_MPEG2TS, IFormatFile::FORMAT_MPEGTS},
    {IFormatFile::FORMAT_MPEG1VIDEO, IFormatFile::FORMAT_MPEG},
    {IFormatFile::FORMAT_MPEG2VIDEO, IFormatFile::FORMAT_VOB},
    {IFormatFile::FORMAT_WMV, IFormatFile::FORMAT_ASF},
    {IFormatFile::FORMAT_WMA, IFormatFile::FORMAT_ASF},
    {IFormatFile::FORMAT_M4A, IFormatFile::FORMAT_IPOD},
    {IFormatFile::FORMAT_M4V, IFormatFile::FORMAT_IPOD},
};

const AVOutputFormat* FindMuxer(const std::string& container) {
    const std::string* name = &container;
    for (const MuxerName& row : kMuxerNames) {
        if (row.container.get() == container) name = &row.muxer.get();
    }
    return av_guess_format(name->c_str(), nullptr, nullptr);
}

bool IsDefaultCodec(const AVOutputFormat& muxer, AVCodecID id) {
    return id != AV_CODEC_ID_NONE && (id == muxer.audio_codec || id == muxer.video_codec || id == muxer.subtitle_codec);
}

/// WebM is Matroska for these alone (WebM Container Guidelines).
constexpr AVCodecID kWebmCodecs[] = {AV_CODEC_ID_VP8, AV_CODEC_ID_VP9, AV_CODEC_ID_OPUS, AV_CODEC_ID_VORBIS,
                                     AV_CODEC_ID_WEBVTT};

/// Whether the muxer has a tag for the codec, or reads the given tag as that codec.
bool IsInTagTables(const AVOutputFormat& muxer, AVCodecID id, int64_t tag) {
    if (muxer.codec_tag == nullptr || id == AV_CODEC_ID_NONE) return false;
    if (tag == 0) {
        unsigned int found = 0;
        return av_codec_get_tag2(muxer.codec_tag, id, &found) != 0;
    }
    if (tag < 0 || tag > int64_t{UINT32_MAX}) return false;
    return av_codec_get_id(muxer.codec_tag, static_cast<unsigned int>(tag)) == id;
}

}  // namespace

bool FormatHasGlobalHeader(const std::string& formatName) {
    if (formatName.empty()) {
        ThrowHelper("Empty name while getting global header flag.", {},
                    boost::source_location(kSource, 32, BOOST_CURRENT_FUNCTION));
    }
    const auto helper = CreateDataHelper(IPreset::KEY_FORMAT, formatName);
    if (!helper) {
        ThrowHelper("Can't get helper for format.", formatName,
                    boost::source_location(kSource, 35, BOOST_CURRENT_FUNCTION));
    }
    return HasGlobalHeader(*helper);
}

bool CodecHasGlobalHeader(const std::string& codecId) {
    const bool isVideo = IsVideoCodec(codecId);
    if (!isVideo && !IsAudioCodec(codecId)) return false;
    const auto helper =
        CreateDataHelper(isVideo ? IPreset::KEY_FILTER_VIDEO_CODEC : IPreset::KEY_FILTER_AUDIO_CODEC, codecId);
    return helper && HasGlobalHeader(*helper);
}

bool CodecIsSupported(const boost::intrusive_ptr<const IFormatFile>& file,
                      const boost::intrusive_ptr<const IFormatCodec>& codec) {
    if (!file || !codec || !file->ExistsFormatName()) return false;
    const AVOutputFormat* muxer = FindMuxer(file->GetFormatName());
    if (muxer == nullptr || !codec->ExistsCodecID() || !codec->ExistsCodecTag()) return false;

    const bool isLossless = codec->ExistsLossless() && codec->GetLossless();
    const bool isMain = codec->ExistsMainStream() && codec->GetMainStream();
    if (isLossless && codec->GetStreamType() == StreamType::Video && !isMain) return false;

    const AVCodecID id = FFWrapper::CodecIDFromTextID(codec->GetCodecID());
    if (IsDefaultCodec(*muxer, id)) return true;
    if (file->GetFormatName() == IFormatFile::FORMAT_WEBM) {
        return std::find(std::begin(kWebmCodecs), std::end(kWebmCodecs), id) != std::end(kWebmCodecs);
    }
    return IsInTagTables(*muxer, id, codec->GetCodecTag());
}

}  // namespace Kestro::Conf
