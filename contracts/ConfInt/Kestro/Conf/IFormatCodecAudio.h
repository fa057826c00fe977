#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// Vocabulary of an audio codec node, and the immutable description of one audio stream's codec.
class KESTRO_CONFINT_API IFormatCodecAudio : public IFormatCodec {
public:
    /// Class name of audio codec descriptions; the registry takes it for IPreset::KEY_FILTER_AUDIO_CODEC.
    static KESTRO_CONSTANT std::string TAG_FORMAT_CODEC_AUDIO = "CodecAudio";

    /// Sample rate in Hz, integer; -1 in a resampler's settings keeps the source's.
    static KESTRO_CONSTANT std::string TAG_SAMPLE_RATE = "SampleRate";
    /// Channel layout, text: a LayoutRecord's name, or TAG_CH_LAYOUT_UNKNOWN to keep the source's.
    static KESTRO_CONSTANT std::string TAG_LAYOUT = "Layout";
    /// Sample format, text: a SampleFmtRecord's name, or TAG_SAMPLE_FORMAT_NONE to keep the source's.
    static KESTRO_CONSTANT std::string TAG_SAMPLE_FORMAT = "SampleFmt";
    static KESTRO_CONSTANT std::string TAG_SAMPLE_FORMAT_NONE = "none";
    /// Size of one sample of one channel, integer.
    static KESTRO_CONSTANT std::string TAG_BITS_PER_SAMPLE = "BitsPerSample";

    /// The bitrates of DTS end here, bit/s (ETSI TS 102 114, 5.3.1).
    static constexpr int64_t MIN_DTS_BITRATE = 32'000;
    static constexpr int64_t MAX_DTS_BITRATE = 3'840'000;

    /// Channel layouts: the constants are named as FFmpeg's AV_CH_LAYOUT_ masks, the texts are FFmpeg's names of them.
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_UNKNOWN = "unknown";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_MONO = "mono";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_STEREO = "stereo";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_2POINT1 = "2.1";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_2_1 = "3.0(back)";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_2_2 = "quad(side)";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_QUAD = "quad";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_5POINT0 = "5.0(side)";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_5POINT1 = "5.1(side)";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_5POINT0_BACK = "5.0";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_5POINT1_BACK = "5.1";
    static KESTRO_CONSTANT std::string TAG_CH_LAYOUT_7POINT1 = "7.1";

    /// AAC profiles (IFormatCodec::TAG_PROFILE): FFmpeg's names.
    static KESTRO_CONSTANT std::string TAG_AAC_PROFILE_LOW = "aac_low";
    static KESTRO_CONSTANT std::string TAG_AAC_PROFILE_SSR = "aac_ssr";
    static KESTRO_CONSTANT std::string TAG_AAC_PROFILE_LTP = "aac_ltp";
    static KESTRO_CONSTANT std::string TAG_AAC_PROFILE_HE = "aac_he";
    static KESTRO_CONSTANT std::string TAG_AAC_PROFILE_HE_V2 = "aac_he_v2";
    static KESTRO_CONSTANT std::string TAG_AAC_PROFILE_LD = "aac_ld";
    static KESTRO_CONSTANT std::string TAG_AAC_PROFILE_ELD = "aac_eld";

    /// Codec ids; AudioCodecIds() lists them.
    static KESTRO_CONSTANT std::string CODEC_ID_AAC = "aac";
    static KESTRO_CONSTANT std::string CODEC_ID_AC3 = "ac3";
    static KESTRO_CONSTANT std::string CODEC_ID_DTS = "dts";
    static KESTRO_CONSTANT std::string CODEC_ID_MP3 = "mp3";
    static KESTRO_CONSTANT std::string CODEC_ID_MP2 = "mp2";
    static KESTRO_CONSTANT std::string CODEC_ID_FLAC = "flac";
    static KESTRO_CONSTANT std::string CODEC_ID_ALAC = "alac";
    static KESTRO_CONSTANT std::string CODEC_ID_AMR_NB = "amr_nb";
    static KESTRO_CONSTANT std::string CODEC_ID_WMAV2 = "wmav2";
    static KESTRO_CONSTANT std::string CODEC_ID_VORBIS = "vorbis";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_S8 = "pcm_s8";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_U8 = "pcm_u8";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_S16LE = "pcm_s16le";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_S16BE = "pcm_s16be";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_U16LE = "pcm_u16le";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_U16BE = "pcm_u16be";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_S24LE = "pcm_s24le";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_S24BE = "pcm_s24be";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_U24LE = "pcm_u24le";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_U24BE = "pcm_u24be";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_S32LE = "pcm_s32le";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_S32BE = "pcm_s32be";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_U32LE = "pcm_u32le";
    static KESTRO_CONSTANT std::string CODEC_ID_PCM_U32BE = "pcm_u32be";

    ~IFormatCodecAudio() override;

    /// Describes the stream of that codec node, which is copied. Any content is taken: see IFormatCodec.
    static boost::intrusive_ptr<const IFormatCodecAudio> Create(const Core::Property& codec);

    virtual bool ExistsSampleRate() const = 0;
    virtual int64_t GetSampleRate() const = 0;
    virtual bool ExistsChannelLayout() const = 0;
    /// ChannelLayout::Unknown when no LayoutRecord has the node's text.
    virtual ChannelLayout GetChannelLayout() const = 0;
    virtual bool ExistsSampleFormat() const = 0;
    /// SampleFormats::None when no SampleFmtRecord has the node's text.
    virtual SampleFormats GetSampleFormat() const = 0;
};

}  // namespace Kestro::Conf
