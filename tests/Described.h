#pragma once

#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// What a constraint tells a consumer, as children: the values of a list; of a range its ends and its middle.
inline Core::Property Described(const IPropertyConstraint& constraint) {
    const auto consumer = FakeConstraintConsumer::Create();
    constraint.FillValueList(consumer);
    return consumer->GetResult();
}

}  // namespace Kestro::Conf
