#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Planner {
namespace {

using Conf::ConstraintSet;
using Conf::IFormatCodecVideo;
using Core::Property;
using Proc::IResize;

/// The sizes of a disc, as a constraint on the resizer's frame-size mode.
class DiscSizes final : public RefCounted<Conf::IPropertyConstraint> {
public:
    explicit DiscSizes(std::span<const Conf::FrameSize> sizes) : sizes_(sizes) {}

    void FillValueList(const boost::intrusive_ptr<Conf::IConstraintConsumer>& consumer) const override {
        for (const Conf::FrameSize& size : sizes_) {
            Property node(IResize::FRAME_SIZE_MODE);
            node.SetChild(IFormatCodecVideo::TAG_WIDTH, size.width);
            node.SetChild(IFormatCodecVideo::TAG_HEIGHT, size.height);
            consumer->AddValue(std::to_string(size.width) + " x " + std::to_string(size.height), node);
        }
        consumer->EndValues();
    }
    bool IsValid(const Property& value) const override { return value == Property({}, IResize::FRAME_SIZE_CUSTOM); }
    bool CorrectValue(Property& value) const override { return IsValid(value); }
    std::string GetDescription(const std::string& /*settingName*/) const override { return {}; }

private:
    std::span<const Conf::FrameSize> sizes_;
};

}  // namespace

void AddDiscRequirements(const Property& format, Requirements& requirements) {
    const Conf::DiscRecord* disc = Conf::DiscRecord::Find(format);
    if (disc == nullptr) return;
    const std::string who = disc->container + " " + disc->standard;
    const std::string resizer = Below(Proc::IFilterResize::CLASS_ID, IResize::CLASS_ID);
    requirements.push_back({who, Below(resizer, IResize::FRAME_SIZE_MODE), new DiscSizes(disc->sizes)});
    requirements.push_back(
        {who, Below(Proc::IFilterFrameRate::CLASS_ID, IFormatCodecVideo::TAG_FPS),
         ConstraintSet::Create(ConstraintSet::Named<Property::Ratio>{{RatioText(disc->fps), disc->fps}})});
}

}  // namespace Kestro::Planner
