#pragma once

#include <string>

#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// The settings that a description of a file or stream answers from: the values of a node, without the nodes below it.
class DescribedNode {
public:
    explicit DescribedNode(const Core::Property& node);

    /// Whether the node has that setting in that type.
    bool Exists(const std::string& tag, PropertyTypes type) const;
    /// The setting; throws FormatException when it does not exist.
    const Core::Property& Get(const std::string& tag, PropertyTypes type) const;

private:
    Core::Property node_;
};

}  // namespace Kestro::Conf
