#include "Kestro/Proc/IFilterResize.h"

#include <algorithm>
#include <boost/assert/source_location.hpp>
#include <cstddef>
#include <iterator>

#include "Kestro/Conf/ConfException.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Proc/ImplNames.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Proc {
namespace {

using Conf::IFormatCodecVideo;

template <class Mode>
struct ModeText {
    Mode mode;
    const std::string& text;
};

constexpr ModeText<SettingsResizer::FrameSizeMode> kFrameSizeModes[] = {
    {SettingsResizer::FrameSizeMode::Original, IResize::FRAME_SIZE_ORIGINAL},
    {SettingsResizer::FrameSizeMode::HalfOriginal, IResize::FRAME_SIZE_HALF_ORIGINAL},
    {SettingsResizer::FrameSizeMode::QuarterOriginal, IResize::FRAME_SIZE_QUARTER_ORIGINAL},
    {SettingsResizer::FrameSizeMode::Custom, IResize::FRAME_SIZE_CUSTOM},
    {SettingsResizer::FrameSizeMode::CustomScale, IResize::FRAME_SIZE_CUSTOM_SCALE},
};

constexpr ModeText<SettingsResizer::Fit> kFits[] = {
    {SettingsResizer::Fit::Auto, IResize::MODE_AUTO},
    {SettingsResizer::Fit::Stretch, IResize::MODE_STRETCH},
    {SettingsResizer::Fit::Crop, IResize::MODE_CROP},
    {SettingsResizer::Fit::Letterbox, IResize::MODE_LETTERBOX},
    {SettingsResizer::Fit::SmartFit, IResize::MODE_SMART_FIT},
    {SettingsResizer::Fit::UpTo, IResize::MODE_UP_TO},
};

constexpr ModeText<SettingsResizer::Method> kMethods[] = {
    {SettingsResizer::Method::Point, IResize::METHOD_POINT},
    {SettingsResizer::Method::FastBilinear, IResize::METHOD_FAST_BILINEAR},
    {SettingsResizer::Method::Bilinear, IResize::METHOD_BILINEAR},
    {SettingsResizer::Method::Bicubic, IResize::METHOD_BICUBIC},
};

template <class Mode, std::size_t kCount>
const std::string& TextOf(const ModeText<Mode> (&modes)[kCount], Mode mode) {
    const auto row = std::ranges::find(modes, mode, &ModeText<Mode>::mode);
    if (row == std::end(modes)) {
        Throw(Conf::ConfException() << TagDescription("A resizer setting is outside its enumeration.")
                                    << TagDetails(std::to_string(static_cast<int>(mode))),
              BOOST_CURRENT_LOCATION);
    }
    return row->text;
}

template <class Mode, std::size_t kCount>
void ReadMode(const Core::Property& resizer, const std::string& tag, const ModeText<Mode> (&modes)[kCount],
              Mode& mode) {
    if (!resizer.ChildExists(tag)) return;
    const std::string& text = resizer[tag].GetString();
    const auto row =
        std::ranges::find_if(modes, [&](const ModeText<Mode>& candidate) { return candidate.text == text; });
    if (row == std::end(modes)) {
        Throw(
            Conf::ConfException() << TagDescription("The resizer does not know this value of the setting " + tag + ".")
                                  << TagDetails(text),
            BOOST_CURRENT_LOCATION);
    }
    mode = row->mode;
}

void ReadSide(const Core::Property& resizer, const std::string& tag, int64_t& side) {
    if (resizer.ChildExists(tag)) side = resizer[tag].GetInt64();
}

}  // namespace

Core::Property IFilterResize::Settings2Property(const SettingsResizer& settings) {
    Core::Property tree(CLASS_ID);
    Core::Property& resizer = tree.SetChild(IResize::CLASS_ID);
    resizer.SetChild(Conf::IPreset::KEY_TYPE_ID, ImplNames::DEFAULT);
    resizer.SetChild(IResize::FRAME_SIZE_MODE, TextOf(kFrameSizeModes, settings.frameSizeMode));
    resizer.SetChild(IFormatCodecVideo::TAG_WIDTH, settings.width);
    resizer.SetChild(IFormatCodecVideo::TAG_HEIGHT, settings.height);
    resizer.SetChild(IResize::MODE, TextOf(kFits, settings.fit));
    resizer.SetChild(IResize::METHOD, TextOf(kMethods, settings.method));
    return tree;
}

SettingsResizer IFilterResize::Property2Settings(const Core::Property& tree) {
    SettingsResizer settings;
    if (!tree.ChildExists(IResize::CLASS_ID)) return settings;
    const Core::Property& resizer = tree[IResize::CLASS_ID];
    ReadMode(resizer, IResize::FRAME_SIZE_MODE, kFrameSizeModes, settings.frameSizeMode);
    ReadSide(resizer, IFormatCodecVideo::TAG_WIDTH, settings.width);
    ReadSide(resizer, IFormatCodecVideo::TAG_HEIGHT, settings.height);
    ReadMode(resizer, IResize::MODE, kFits, settings.fit);
    ReadMode(resizer, IResize::METHOD, kMethods, settings.method);
    return settings;
}

}  // namespace Kestro::Proc
