#pragma once

#include "Kestro/Export.h"

#define KESTRO_PLANNER_API KESTRO_API
