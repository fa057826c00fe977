#include "Kestro/Conf/IFormatCodecSubtitle.h"

#include "Kestro/Conf/FormatCodecImpl.h"

namespace Kestro::Conf {
namespace {

class FormatCodecSubtitle final : public FormatCodecImpl<IFormatCodecSubtitle, StreamType::Subtitle> {
public:
    using FormatCodecImpl::FormatCodecImpl;
};

}  // namespace

// The earliest priority that programs may use: the text is there when any other static object of a client is built.
__attribute__((init_priority(101))) const std::string IFormatCodecSubtitle::CODEC_ID_HDMV_PGS_SUBTITLE =
    "hdmv_pgs_subtitle";

IFormatCodecSubtitle::~IFormatCodecSubtitle() = default;

boost::intrusive_ptr<const IFormatCodecSubtitle> IFormatCodecSubtitle::Create(const Core::Property& codec) {
    return new FormatCodecSubtitle(codec);
}

}  // namespace Kestro::Conf
