#pragma once

#include <cstdint>

/// Number of allocations that this thread has made by operator new since it started.
int64_t AllocationCount();
