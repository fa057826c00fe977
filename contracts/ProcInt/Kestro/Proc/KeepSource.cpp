#include "Kestro/Proc/KeepSource.h"

#include <vector>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"
#include "Kestro/UntilUnload.h"

namespace Kestro::Proc {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Core::Property;

}  // namespace

const Property* SourceValue(const std::string& tag) {
    static const auto& values = UntilUnload(std::vector<Property>{
        {IFormatCodecAudio::TAG_SAMPLE_RATE, -1},
        {IFormatCodecAudio::TAG_LAYOUT, IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN},
        {IFormatCodecAudio::TAG_SAMPLE_FORMAT, IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE},
        {IFormatCodecVideo::TAG_FPS, SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE},
        {IResize::FRAME_SIZE_MODE, IResize::FRAME_SIZE_ORIGINAL},
        {IFormatCodecVideo::TAG_WIDTH, 0},
        {IFormatCodecVideo::TAG_HEIGHT, 0},
    });
    for (const Property& value : values) {
        if (value.Name() == tag) return &value;
    }
    return nullptr;
}

bool IsSourceValue(const std::string& tag, const Property& value) {
    const Property* source = SourceValue(tag);
    return source != nullptr && *source == value;
}

void KeepSource(Property& settings) {
    for (std::size_t i = 0; i < settings.Count(); ++i) {
        Property& child = settings[settings[i].Name()];
        if (child.Count() > 0) {
            KeepSource(child);
        } else if (const Property* source = SourceValue(child.Name())) {
            child.CopyDataFrom(*source);
        }
    }
}

}  // namespace Kestro::Proc
