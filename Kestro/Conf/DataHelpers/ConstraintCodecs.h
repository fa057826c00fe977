#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// One of a list of codec ids; an unknown one is corrected to the default, if there is a default.
class ConstraintCodecs final : public RefCounted<IPropertyConstraint> {
public:
    /// (name to show, codec id)
    using Codecs = std::vector<std::pair<std::string, std::string>>;

    /// An empty default: no correction. Whether the default is in the list is not checked.
    ConstraintCodecs(Codecs codecs, std::string defaultCodec);

    /// The default codec id as a text without a name.
    Core::Property GetDefaultValue() const;

    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    /// Ids are compared byte by byte, names to show not at all. A value that is no text throws.
    bool IsValid(const Core::Property& value) const override;
    /// False for a value that is no text, and without a default.
    bool CorrectValue(Core::Property& value) const override;
    /// Empty.
    std::string GetDescription(const std::string& settingName) const override;

private:
    Codecs codecs_;
    std::string defaultCodec_;
};

}  // namespace Kestro::Conf
