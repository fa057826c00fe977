#include "KeepMarks.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

#include "Tree.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Core::Property;
using Kestro::Proc::IResize;

struct Mark {
    const std::string& tag;
    Property value;
};

const std::vector<Mark>& Marks() {
    static const std::vector<Mark> marks{
        {IFormatCodecAudio::TAG_SAMPLE_RATE, {{}, -1}},
        {IFormatCodecAudio::TAG_LAYOUT, {{}, IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN}},
        {IFormatCodecAudio::TAG_SAMPLE_FORMAT, {{}, IFormatCodecAudio::TAG_SAMPLE_FORMAT_NONE}},
        {IFormatCodecVideo::TAG_FPS, {{}, Kestro::Proc::SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE}},
        {IResize::FRAME_SIZE_MODE, {{}, IResize::FRAME_SIZE_ORIGINAL}},
        {IFormatCodecVideo::TAG_WIDTH, {{}, 0}},
        {IFormatCodecVideo::TAG_HEIGHT, {{}, 0}},
    };
    return marks;
}

}  // namespace

const Property& KeepMark(const std::string& tag) {
    const auto mark = std::ranges::find(Marks(), tag, [](const Mark& row) { return row.tag; });
    if (mark == Marks().end()) throw std::out_of_range(tag);
    return mark->value;
}

bool IsKeepMark(const std::string& tag, const Property& value) {
    return std::ranges::any_of(Marks(), [&](const Mark& mark) { return mark.tag == tag && mark.value == value; });
}

void KeepSource(Property& settings) {
    for (const Mark& mark : Marks()) {
        if (settings.ChildExists(mark.tag)) settings[mark.tag].CopyDataFrom(mark.value);
    }
    for (std::size_t i = 0; i < settings.Count(); ++i) {
        Property& child = settings[settings[i].Name()];
        if (IsNode(child)) KeepSource(child);
    }
}

}  // namespace App
