#include "Kestro/Planner/Automatic.h"

#include <algorithm>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/KeepSource.h"
#include "Kestro/UntilUnload.h"

namespace Kestro::Planner {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::StreamRecord;
using Kestro::Core::Property;

const std::vector<AutomaticSetting>& AutomaticSettings() {
    static const auto& settings = Kestro::UntilUnload([] {
        std::vector<AutomaticSetting> all;
        const auto keep = [&all](const std::string& node, const std::string& tag) {
            all.push_back({Below(node, tag), *Proc::SourceValue(tag)});
        };
        const std::string resampler = Below(Kestro::Proc::IFilterResample::CLASS_ID, Kestro::Proc::IResample::CLASS_ID);
        keep(resampler, IFormatCodecAudio::TAG_SAMPLE_RATE);
        keep(resampler, IFormatCodecAudio::TAG_LAYOUT);
        keep(Kestro::Proc::IFilterFrameRate::CLASS_ID, IFormatCodecVideo::TAG_FPS);
        for (const StreamRecord& kind : StreamRecord::WithHelpers()) {
            all.push_back({Below(kind.codecKey, IFormatCodec::TAG_BITRATE_MODE),
                           Property({}, IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO)});
        }
        return all;
    }());
    return settings;
}

const AutomaticSetting* FindAutomaticSetting(const std::string& path) {
    const auto& settings = AutomaticSettings();
    const auto found = std::ranges::find(settings, path, &AutomaticSetting::path);
    return found != settings.end() ? &*found : nullptr;
}

void ReadAutomatic(Property& stream) {
    for (const AutomaticSetting& setting : AutomaticSettings()) {
        if (TextAt(stream, setting.path) != IFormatCodec::CODEC_ID_AUTO) continue;
        stream.ChildByPath(setting.path).CopyDataFrom(setting.value);
    }
}

}  // namespace Kestro::Planner
