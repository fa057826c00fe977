#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <functional>
#include <string>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// A value that a predicate accepts. It cannot be listed nor corrected; its description is an identifier, for
/// which the user interface has a text.
class ConstraintMethod final : public RefCounted<IPropertyConstraint> {
public:
    using Predicate = std::function<bool(const Core::Property&)>;

    /// Accepts every value.
    static boost::intrusive_ptr<IPropertyConstraint> CreateAny(const std::string& descriptionId);
    /// Accepts even 64-bit integers; any other kind of value is invalid.
    static boost::intrusive_ptr<IPropertyConstraint> CreateEven(const std::string& descriptionId);

    /// An empty predicate accepts nothing.
    ConstraintMethod(Predicate predicate, std::string descriptionId);

    /// Tells the consumer nothing.
    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    bool IsValid(const Core::Property& value) const override;
    /// Never changes the value.
    bool CorrectValue(Core::Property& value) const override;
    /// The identifier given at construction.
    std::string GetDescription(const std::string& settingName) const override;

private:
    Predicate predicate_;
    std::string descriptionId_;
};

}  // namespace Kestro::Conf
