#include "Kestro/Conf/DataHelpers/Filters/DataHelperVideoResize.h"

#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Conf {

namespace {

using Proc::IResize;

constexpr Text kSizeModes[] = {IResize::FRAME_SIZE_ORIGINAL, IResize::FRAME_SIZE_HALF_ORIGINAL,
                               IResize::FRAME_SIZE_QUARTER_ORIGINAL, IResize::FRAME_SIZE_CUSTOM,
                               IResize::FRAME_SIZE_CUSTOM_SCALE};
constexpr Text kCustomOnly[] = {IResize::FRAME_SIZE_CUSTOM};
constexpr Text kFits[] = {IResize::MODE_AUTO,      IResize::MODE_STRETCH,   IResize::MODE_CROP,
                          IResize::MODE_LETTERBOX, IResize::MODE_SMART_FIT, IResize::MODE_UP_TO};
constexpr Text kMethods[] = {IResize::METHOD_POINT, IResize::METHOD_FAST_BILINEAR, IResize::METHOD_BILINEAR,
                             IResize::METHOD_BICUBIC};
constexpr Range kSide{.lo = 0, .hi = Proc::SettingsResizer::MAX_SIDE};

std::string Path(const std::string& tag) { return IResize::CLASS_ID + Core::Property::SEPARATOR + tag; }

int64_t Integer(const Core::Property& node, const std::string& tag, int64_t otherwise) {
    return node.ChildExists(tag) ? node[tag].GetInt64() : otherwise;
}

}  // namespace

DataHelperVideoResize::DataHelperVideoResize() {
    Constrain(Path(IResize::FRAME_SIZE_MODE), MakeConstraint(Texts{kSizeModes}));
    Constrain(Path(IFormatCodecVideo::TAG_WIDTH), MakeConstraint(kSide));
    Constrain(Path(IFormatCodecVideo::TAG_HEIGHT), MakeConstraint(kSide));
    Constrain(Path(IResize::MODE), MakeConstraint(Texts{kFits}));
    Constrain(Path(IResize::METHOD), MakeConstraint(Texts{kMethods}));

    const auto isCustom = MakeConstraint(Texts{kCustomOnly});
    for (const std::string& side :
         {std::cref(IFormatCodecVideo::TAG_WIDTH), std::cref(IFormatCodecVideo::TAG_HEIGHT)}) {
        rules_.emplace_back(Path(side),
                            PairValidationRule::Create(SettingKey(Node::Resizer, IResize::FRAME_SIZE_MODE), isCustom,
                                                       SettingKey(Node::Resizer, side), MakeConstraint(EvenSize())));
    }
}

Core::Property DataHelperVideoResize::GetDefaultSettings() const {
    return Proc::IFilterResize::Settings2Property(Proc::SettingsResizer());
}

void DataHelperVideoResize::FillValidationRules(ValidationRuleList& rules) const {
    rules.insert(rules.end(), rules_.begin(), rules_.end());
}

void DataHelperVideoResize::ApplyPresetSettings(const Core::Property& source, Core::Property& target) const {
    Proc::FrameInfo frame;
    frame.width = target[IFormatCodecVideo::TAG_WIDTH].GetInt64();
    frame.height = target[IFormatCodecVideo::TAG_HEIGHT].GetInt64();
    const int64_t aspectX = Integer(target, IFormatCodecVideo::TAG_ASPECTX, 0);
    const int64_t aspectY = Integer(target, IFormatCodecVideo::TAG_ASPECTY, 0);
    const bool hasAspect = aspectX > 0 && aspectY > 0;
    if (hasAspect) frame.sampleAspectRatio = boost::rational<int64_t>(aspectX, aspectY);

    const Proc::FrameInfo output = Proc::IFilterResize::Property2Settings(source).GetOutputFrameSize(frame);
    target.SetChild(IFormatCodecVideo::TAG_WIDTH, output.width);
    target.SetChild(IFormatCodecVideo::TAG_HEIGHT, output.height);
    if (!hasAspect) return;
    target.SetChild(IFormatCodecVideo::TAG_ASPECTX, output.sampleAspectRatio.numerator());
    target.SetChild(IFormatCodecVideo::TAG_ASPECTY, output.sampleAspectRatio.denominator());
}

}  // namespace Kestro::Conf
