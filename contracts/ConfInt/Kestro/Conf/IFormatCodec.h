#pragma once

#include <cstdint>
#include <string>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Constant.h"
#include "Kestro/Export.h"
#include "Kestro/IRefCountable.h"

namespace Kestro::Conf {

/// Vocabulary of every codec node, and an immutable description of one stream's codec.
///
/// A description is made from a codec node by the Create of IFormatCodecAudio, IFormatCodecVideo or
/// IFormatCodecSubtitle. Exists... is false for a setting that the node lacks or holds in another type than the one
/// noted at its tag; Get... of such a setting throws FormatException, with the tag in TagDetails. Safe to use from any
/// number of threads.
class KESTRO_CONFINT_API IFormatCodec : public virtual IRefCountable {
public:
    /// Codec id, text: FFmpeg's codec descriptor name, a CODEC_ID_ constant of the derived classes.
    static KESTRO_CONSTANT std::string TAG_CODEC_ID = "CodecId";
    /// The application chooses the codec.
    static KESTRO_CONSTANT std::string CODEC_ID_AUTO = "auto";

    /// Bitrate in bit/s, integer.
    static KESTRO_CONSTANT std::string TAG_BITRATE = "BitRate";
    /// How the bitrate is ruled, text.
    static KESTRO_CONSTANT std::string TAG_BITRATE_MODE = "RateControl";
    static KESTRO_CONSTANT std::string TAG_BITRATE_MODE_CBR = "cbr";            ///< TAG_BITRATE holds
    static KESTRO_CONSTANT std::string TAG_BITRATE_MODE_CBR_AUTO = "cbr_auto";  ///< as cbr, the bitrate is chosen
    static KESTRO_CONSTANT std::string TAG_BITRATE_MODE_VBR = "vbr";            ///< TAG_QUALITY holds
    /// Quality of variable bitrate, integer in 1..MAX_QUALITY, the best.
    static KESTRO_CONSTANT std::string TAG_QUALITY = "Quality";
    static constexpr int64_t MAX_QUALITY = 100;

    /// Number of passes over the source, text: one of the two that follow.
    static KESTRO_CONSTANT std::string TAG_MULTIPASS_ENCODING = "Multipass";
    static KESTRO_CONSTANT std::string TAG_ONE_PASS_MODE = "one-pass";
    static KESTRO_CONSTANT std::string TAG_TWO_PASS_MODE = "two-pass";

    /// Number of encoder threads, integer.
    static KESTRO_CONSTANT std::string TAG_THREAD_NUMBER = "Threads";
    /// Whether the encoder takes every core, boolean.
    static KESTRO_CONSTANT std::string TAG_UTILIZE_ALL_RESOURCES = "UseAllCores";

    /// Node of the encoder's own options; the preset and profile below stand in it.
    static KESTRO_CONSTANT std::string TAG_CODEC_OPTIONS_ENCODE = "EncodeOptions";
    static KESTRO_CONSTANT std::string TAG_PRESET = "Preset";
    static KESTRO_CONSTANT std::string TAG_PROFILE = "Profile";

    /// Whether the codec's extradata goes into the container's header, boolean.
    static KESTRO_CONSTANT std::string TAG_GLOBAL_HEADER = "GlobalHeader";
    /// The fourcc under which the stream is stored, first character in the lowest byte, integer; 0: the muxer's.
    static KESTRO_CONSTANT std::string TAG_CODEC_TAG = "CodecTag";
    /// Whether the stream is copied or encoded without loss, boolean.
    static KESTRO_CONSTANT std::string TAG_LOSSLESS = "Lossless";
    /// Whether the stream is the main one of its kind in the file, boolean.
    static KESTRO_CONSTANT std::string TAG_MAIN_STREAM = "MainStream";

    ~IFormatCodec() override;

    virtual StreamType GetStreamType() const = 0;

    virtual bool ExistsCodecID() const = 0;
    virtual const std::string& GetCodecID() const = 0;
    virtual bool ExistsBitrate() const = 0;
    virtual int64_t GetBitrate() const = 0;
    virtual bool ExistsCodecTag() const = 0;
    virtual int64_t GetCodecTag() const = 0;
    virtual bool ExistsLossless() const = 0;
    virtual bool GetLossless() const = 0;
    /// False when it is not said.
    virtual bool GetMainStream() const = 0;
};

}  // namespace Kestro::Conf
