#include "Kestro/Core/PropertyException.h"

namespace Kestro::Core {

PropertyException::PropertyException() = default;
PropertyException::PropertyException(const PropertyException&) = default;
PropertyException& PropertyException::operator=(const PropertyException&) = default;
PropertyException::~PropertyException() noexcept = default;

}  // namespace Kestro::Core
