#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// Codec ids of subtitles, and the immutable description of one subtitle stream's codec.
class KESTRO_CONFINT_API IFormatCodecSubtitle : public IFormatCodec {
public:
    static KESTRO_CONSTANT std::string CODEC_ID_SRT = "srt";  ///< written as subrip
    static KESTRO_CONSTANT std::string CODEC_ID_SUBRIP = "subrip";
    static KESTRO_CONSTANT std::string CODEC_ID_SSA = "ssa";  ///< written as ass
    static KESTRO_CONSTANT std::string CODEC_ID_ASS = "ass";
    static KESTRO_CONSTANT std::string CODEC_ID_TEXT = "text";
    static KESTRO_CONSTANT std::string CODEC_ID_MOV_TEXT = "mov_text";
    static KESTRO_CONSTANT std::string CODEC_ID_XSUB = "xsub";
    static KESTRO_CONSTANT std::string CODEC_ID_DVB_TELETEXT = "dvb_teletext";
    static KESTRO_CONSTANT std::string CODEC_ID_DVB_SUBTITLE = "dvb_subtitle";
    static KESTRO_CONSTANT std::string CODEC_ID_DVD_SUBTITLE = "dvd_subtitle";
    /// "hdmv_pgs_subtitle", too long for KESTRO_CONSTANT: built before every other object of its library.
    static const std::string CODEC_ID_HDMV_PGS_SUBTITLE;

    ~IFormatCodecSubtitle() override;

    /// Describes the stream of that codec node, which is copied. Any content is taken: see IFormatCodec.
    static boost::intrusive_ptr<const IFormatCodecSubtitle> Create(const Core::Property& codec);
};

}  // namespace Kestro::Conf
