#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"
#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/HelperErrors.h"
#include "Kestro/Conf/DataHelpers/MuxerRules.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/GlobalHeaderFunctions";

/// Asked of the helper's base, which need not copy its settings for it.
template <class Base>
bool HasGlobalHeader(const IDataHelper& helper) {
    const auto* base = dynamic_cast<const Base*>(&helper);
    return base != nullptr && base->HasGlobalHeader();
}

bool IsDefaultCodec(const AVOutputFormat& muxer, AVCodecID id) {
    return id == muxer.audio_codec || id == muxer.video_codec || id == muxer.subtitle_codec;
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
    return HasGlobalHeader<DataHelperFormatBase>(*helper);
}

bool CodecHasGlobalHeader(const std::string& codecId) {
    const bool isVideo = IsVideoCodec(codecId);
    if (!isVideo && !IsAudioCodec(codecId)) return false;
    const auto helper =
        CreateDataHelper(isVideo ? IPreset::KEY_FILTER_VIDEO_CODEC : IPreset::KEY_FILTER_AUDIO_CODEC, codecId);
    return helper && HasGlobalHeader<DataHelperCodecFFMPEG>(*helper);
}

bool CodecIsSupported(const boost::intrusive_ptr<const IFormatFile>& file,
                      const boost::intrusive_ptr<const IFormatCodec>& codec) {
    if (!file || !codec || !file->ExistsFormatName()) return false;
    const Muxer muxer = FindMuxer(file->GetFormatName());
    if (muxer.format == nullptr || !codec->ExistsCodecID() || !codec->ExistsCodecTag()) return false;

    const bool isLossless = codec->ExistsLossless() && codec->GetLossless();
    const bool isMain = codec->GetMainStream();
    if (isLossless && codec->GetStreamType() == StreamType::Video && !isMain) return false;

    const AVCodecID id = FFWrapper::CodecIDFromTextID(codec->GetCodecID());
    if (id == AV_CODEC_ID_NONE) return false;
    return IsDefaultCodec(*muxer.format, id) || Stores(muxer, id, *codec);
}

}  // namespace Kestro::Conf
