#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/HelperErrors.h"
#include "Kestro/Conf/DataHelpers/MuxerRules.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/EncoderTakesPixelFormat.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/GlobalHeaderFunctions";

bool HasGlobalHeader(const IDataHelper& helper) {
    const Core::Property defaults = helper.GetDefaultSettings();
    return defaults.ChildExists(IFormatCodec::TAG_GLOBAL_HEADER) && defaults[IFormatCodec::TAG_GLOBAL_HEADER].GetBool();
}

bool IsIn(std::span<const AVCodecID> ids, AVCodecID id) { return std::find(ids.begin(), ids.end(), id) != ids.end(); }

bool IsDefaultCodec(const AVOutputFormat& muxer, AVCodecID id) {
    return id == muxer.audio_codec || id == muxer.video_codec || id == muxer.subtitle_codec;
}

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
constexpr int64_t kHdmv = 0x564D'4448;

bool IsMatroskaOrAvi(const AVOutputFormat& muxer) {
    const std::string_view name = muxer.name;
    return name == "matroska" || name == "avi";
}

/// What the muxer insists on of a sound that it takes.
bool IsSoundTaken(const MuxerRule& rule, AVCodecID id, const IFormatCodec& codec) {
    const SoundRule* sound = nullptr;
    for (const SoundRule& row : rule.sounds) {
        if (row.codec == id) sound = &row;
    }
    const auto* audio = dynamic_cast<const IFormatCodecAudio*>(&codec);
    if (sound == nullptr || audio == nullptr) return true;
    if (audio->ExistsSampleRate() && !sound->sampleRates.empty() &&
        std::find(sound->sampleRates.begin(), sound->sampleRates.end(), audio->GetSampleRate()) ==
            sound->sampleRates.end()) {
        return false;
    }
    if (!audio->ExistsChannelLayout() || sound->mostChannels == 0) return true;
    const LayoutRecord* layout = LayoutRecord::Find(audio->GetChannelLayout());
    return layout == nullptr || layout->channels <= sound->mostChannels;
}

/// Whether a picture of that pixel format can be of the codec.
bool IsPictureTaken(const AVOutputFormat& muxer, const IFormatCodec& codec) {
    const auto* video = dynamic_cast<const IFormatCodecVideo*>(&codec);
    if (video == nullptr || !video->ExistsPixelFormat() || std::string_view(muxer.name) != "image2") return true;
    return FFWrapper::EncoderTakesPixelFormat(video->GetCodecID(), video->GetPixelFormat());
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
    const auto [muxer, rule] = FindMuxer(file->GetFormatName());
    if (muxer == nullptr || !codec->ExistsCodecID() || !codec->ExistsCodecTag()) return false;

    const bool isLossless = codec->ExistsLossless() && codec->GetLossless();
    const bool isMain = codec->GetMainStream();
    if (isLossless && codec->GetStreamType() == StreamType::Video && !isMain) return false;

    const AVCodecID id = FFWrapper::CodecIDFromTextID(codec->GetCodecID());
    if (id == AV_CODEC_ID_NONE) return false;
    if (IsDefaultCodec(*muxer, id)) return true;
    const int64_t tag = codec->GetCodecTag();
    // A stream that is copied goes by the muxer's tags alone.
    if (isLossless && muxer->codec_tag != nullptr) {
        if (id == AV_CODEC_ID_MPEG2VIDEO && tag == kHdmv) return IsMatroskaOrAvi(*muxer);
        return HasTag(*muxer, id) && TakesTag(*muxer, id, tag);
    }
    if (rule == nullptr) return HasTag(*muxer, id) && TakesTag(*muxer, id, tag);
    const bool isTaken = IsIn(rule->more, id) || (rule->byTags && !IsIn(rule->less, id) && HasTag(*muxer, id));
    return isTaken && TakesTag(*muxer, id, tag) && IsSoundTaken(*rule, id, *codec) && IsPictureTaken(*muxer, *codec);
}

}  // namespace Kestro::Conf
