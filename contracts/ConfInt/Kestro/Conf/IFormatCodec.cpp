#include "Kestro/Conf/IFormatCodec.h"

namespace Kestro::Conf {

IFormatCodec::~IFormatCodec() = default;

}  // namespace Kestro::Conf
