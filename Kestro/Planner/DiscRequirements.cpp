#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/SizeConstraints.h"
#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Planner {

using Conf::ConstraintSet;
using Conf::IFormatCodecVideo;
using Core::Property;
using Proc::IResize;

void AddDiscRequirements(const Property& format, Requirements& requirements) {
    const Conf::DiscRecord* disc = Conf::DiscRecord::Find(format);
    if (disc == nullptr) return;
    const std::string who = disc->container + " " + disc->standard;
    const std::string resizer = Below(Proc::IFilterResize::CLASS_ID, IResize::CLASS_ID);
    requirements.push_back({who, Below(resizer, IResize::FRAME_SIZE_MODE), Conf::SizeConstraints::Create(disc->sizes)});
    requirements.push_back(
        {who, Below(Proc::IFilterFrameRate::CLASS_ID, IFormatCodecVideo::TAG_FPS),
         ConstraintSet::Create(ConstraintSet::Named<Property::Ratio>{{RatioText(disc->fps), disc->fps}})});
}

}  // namespace Kestro::Planner
