#pragma once

#include <nlohmann/json.hpp>

namespace App {

using Json = nlohmann::ordered_json;

}  // namespace App
