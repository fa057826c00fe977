#include "Kestro/Proc/IFilterFrameRate.h"

#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Proc {

Core::Property IFilterFrameRate::MakeSettings(const boost::rational<int64_t>& fps) {
    Core::Property settings(CLASS_ID);
    settings.SetChild(Conf::IFormatCodecVideo::TAG_FPS, fps);
    return settings;
}

}  // namespace Kestro::Proc
