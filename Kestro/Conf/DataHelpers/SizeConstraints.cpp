#include "Kestro/Conf/DataHelpers/SizeConstraints.h"

#include "Kestro/Conf/DataHelpers/ConstraintErrors.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Conf {

boost::intrusive_ptr<IPropertyConstraint> SizeConstraints::Create(std::span<const FrameSize> sizes) {
    return new SizeConstraints(sizes);
}

SizeConstraints::SizeConstraints(std::span<const FrameSize> sizes) : sizes_(sizes.begin(), sizes.end()) {}

void SizeConstraints::FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const {
    IConstraintConsumer& to = Consumer(consumer, "SizeConstraints");
    for (const FrameSize& entry : sizes_) {
        Core::Property size(Proc::IResize::FRAME_SIZE_MODE);
        size.SetChild(IFormatCodecVideo::TAG_WIDTH, entry.width);
        size.SetChild(IFormatCodecVideo::TAG_HEIGHT, entry.height);
        to.AddValue(std::to_string(entry.width) + " x " + std::to_string(entry.height), size);
    }
    to.EndValues();
}

bool SizeConstraints::IsValid(const Core::Property& value) const {
    return value.Type() == PropertyTypes::String && value.GetString() == Proc::IResize::FRAME_SIZE_CUSTOM;
}

bool SizeConstraints::CorrectValue(Core::Property& value) const { return IsValid(value); }

std::string SizeConstraints::GetDescription(const std::string& /*settingName*/) const { return {}; }

}  // namespace Kestro::Conf
