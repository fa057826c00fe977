#include "Kestro/Planner/RuleTree.h"

#include "Kestro/Conf/IPreset.h"

namespace Kestro::Planner {

using Conf::IPreset;
using Core::Property;

Property RuleTree(const Property& format, const Property& stream) {
    Property tree;
    tree.SetChild(IPreset::KEY_STREAMS).SetChild("0", stream);
    for (const Property& node : stream) {
        if (node.Name() != IPreset::KEY_TYPE_ID) tree.SetChild(node.Name(), node);
    }
    tree.SetChild(IPreset::KEY_FORMAT, format).SetChild(IPreset::KEY_STREAMS).SetChild("0", stream);
    return tree;
}

}  // namespace Kestro::Planner
