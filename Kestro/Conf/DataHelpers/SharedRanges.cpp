#include "Kestro/Conf/DataHelpers/SharedRanges.h"

#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/UntilUnload.h"

namespace Kestro::Conf {

const boost::intrusive_ptr<IPropertyConstraint>& QualityRange() {
    static const auto& range = UntilUnload(ConstraintRange::Create(int64_t{1}, IFormatCodec::MAX_QUALITY, int64_t{0}));
    return range;
}

const boost::intrusive_ptr<IPropertyConstraint>& VideoBitrateRange() {
    static const auto& range = UntilUnload(ConstraintRange::Create(IFormatCodecVideo::MIN_VIDEO_BITRATE,
                                                                   IFormatCodecVideo::MAX_VIDEO_BITRATE, int64_t{0}));
    return range;
}

}  // namespace Kestro::Conf
