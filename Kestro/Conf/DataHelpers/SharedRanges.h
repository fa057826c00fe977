#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "Kestro/Conf/IPropertyConstraint.h"

/// Constraints of which all helpers share one object.
namespace Kestro::Conf {

/// 1..IFormatCodec::MAX_QUALITY
const boost::intrusive_ptr<IPropertyConstraint>& QualityRange();
/// IFormatCodecVideo::MIN_VIDEO_BITRATE..MAX_VIDEO_BITRATE, bit/s
const boost::intrusive_ptr<IPropertyConstraint>& VideoBitrateRange();

}  // namespace Kestro::Conf
