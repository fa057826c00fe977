#pragma once

#include <cstdint>
#include <string>

#include "Kestro/Core/Property.h"
#include "Kestro/IRefCountable.h"

namespace Kestro::Conf {

/// Receives the description of a constraint's domain (IPropertyConstraint::FillValueList): either the bounds of a
/// range, or a list of named values. A consumer belongs to one thread.
class KESTRO_CONFINT_API IConstraintConsumer : public virtual IRefCountable {
public:
    ~IConstraintConsumer() override;

    /// Forgets everything received so far.
    virtual void Clear() = 0;
    /// One entry of a value list: the name to show and the value.
    virtual void AddValue(const std::string& name, const Core::Property& value) = 0;
    /// The value list is complete.
    virtual void EndValues() = 0;
    /// Bounds (inclusive) and step of an integer or a real range.
    virtual void SetMax(int64_t value) = 0;
    virtual void SetMax(double value) = 0;
    virtual void SetMin(int64_t value) = 0;
    virtual void SetMin(double value) = 0;
    virtual void SetStep(int64_t value) = 0;
    virtual void SetStep(double value) = 0;
    /// What was gathered, in the form that the consumer documents.
    virtual Core::Property GetResult() const = 0;
};

}  // namespace Kestro::Conf
