#pragma once

#include <boost/any.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>

#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// Records what one constraint tells it, for callers who do not want to write a consumer of their own.
/// It is filled and read by one thread.
class FakeConstraintConsumer final : public RefCounted<IConstraintConsumer> {
public:
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IConstraintConsumer> Create();

    /// Forgets values and bounds; the step, and whether bounds are integers or real, are kept until others are told.
    void Clear() override;
    /// A later value of the same name takes the earlier one's place.
    void AddValue(const std::string& name, const Core::Property& value) override;
    void EndValues() override;
    void SetMax(int64_t value) override;
    void SetMax(double value) override;
    void SetMin(int64_t value) override;
    void SetMin(double value) override;
    void SetStep(int64_t value) override;
    /// A real step is not recorded.
    void SetStep(double value) override;
    /// Of a list: a node without a name, whose children are the values under the names to show. Of a range: a node with
    /// "minValue", "midValue" (of integers on the grid that the step makes from the minimum) and "maxValue". Before
    /// anything was reported: an empty node. Throws boost::bad_any_cast when only one bound was reported since Clear.
    Core::Property GetResult() const override;

private:
    FakeConstraintConsumer();

    boost::any minimum_;
    boost::any maximum_;
    int64_t step_ = 0;
    Core::Property values_;
    PropertyTypes type_ = PropertyTypes::Empty;
};

}  // namespace Kestro::Conf
