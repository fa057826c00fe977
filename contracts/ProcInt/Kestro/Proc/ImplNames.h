#pragma once

#include <string>

#include "Kestro/Constant.h"

namespace Kestro::Proc {

/// Names of filter implementations (Conf::IPreset::KEY_TYPE_ID of the implementation's node).
class ImplNames {
public:
    static KESTRO_CONSTANT std::string DEFAULT = "default";

    ImplNames() = delete;
};

}  // namespace Kestro::Proc
