#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/IValidationRule.h"

namespace Kestro::Conf {

IConstraintConsumer::~IConstraintConsumer() = default;
IPropertyConstraint::~IPropertyConstraint() = default;
IValidationRule::~IValidationRule() = default;
IDataHelper::~IDataHelper() = default;

}  // namespace Kestro::Conf
