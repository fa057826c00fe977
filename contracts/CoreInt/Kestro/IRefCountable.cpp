#include "Kestro/IRefCountable.h"

namespace Kestro {

IRefCountable::~IRefCountable() = default;

}  // namespace Kestro
