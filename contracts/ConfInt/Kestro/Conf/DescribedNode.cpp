#include "Kestro/Conf/DescribedNode.h"

#include <boost/assert/source_location.hpp>

#include "Kestro/Conf/FormatException.h"

namespace Kestro::Conf {

DescribedNode::DescribedNode(const Core::Property& node) {
    for (const Core::Property& setting : node) {
        if (setting.Type() != PropertyTypes::Node) node_.SetChild(setting.Name(), setting);
    }
}

bool DescribedNode::Exists(const std::string& tag, PropertyTypes type) const {
    const Core::Property* setting = node_.FindByPath(tag);
    return setting != nullptr && setting->Type() == type;
}

const Core::Property& DescribedNode::Get(const std::string& tag, PropertyTypes type) const {
    const Core::Property* setting = node_.FindByPath(tag);
    if (setting == nullptr || setting->Type() != type) {
        Throw(FormatException() << TagDescription("The description lacks a setting or has it in another type.")
                                << TagDetails(tag),
              BOOST_CURRENT_LOCATION);
    }
    return *setting;
}

}  // namespace Kestro::Conf
