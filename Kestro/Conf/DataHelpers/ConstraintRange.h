#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// A number between two bounds, both inclusive.
///
/// The value is read in the range's own form: an integer range reads a double towards zero. A correction gives the
/// nearer bound. The step is for those who show the range; it is neither checked nor applied.
class ConstraintRange final : public RefCounted<IPropertyConstraint> {
public:
    /// `lo` above `hi` is accepted: no value is then valid. `step` 0: none.
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(double lo, double hi, double step);
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(int64_t lo, int64_t hi,
                                                                                   int64_t step);

    /// Minimum, maximum and, when there is one, the step.
    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    bool IsValid(const Core::Property& value) const override;
    /// Of integers and doubles alone; a NaN becomes the upper bound.
    bool CorrectValue(Core::Property& value) const override;
    /// Empty.
    std::string GetDescription(const std::string& settingName) const override;

private:
    /// For the tests, which also make ranges of types that are no numbers: their IsValid and FillValueList throw.
    friend struct ConstraintRangeOfType;

    ConstraintRange(PropertyTypes type, int64_t lo, int64_t hi, int64_t step);
    ConstraintRange(PropertyTypes type, double lo, double hi, double step);

    PropertyTypes type_;
    Core::Property loBound_;
    Core::Property hiBound_;
    Core::Property step_;
};

}  // namespace Kestro::Conf
