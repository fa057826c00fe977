#pragma once

#include <string>

#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// The settings node that a description of a file or stream answers from.
class DescribedNode {
public:
    explicit DescribedNode(const Core::Property& node) : node_(node) {}

    /// Whether the node has that setting in that type.
    bool Exists(const std::string& tag, PropertyTypes type) const;
    /// The setting; throws FormatException when it does not exist.
    const Core::Property& Get(const std::string& tag, PropertyTypes type) const;

private:
    Core::Property node_;
};

}  // namespace Kestro::Conf
