#pragma once

#include <cstdint>

/// Every `operator new` of the program and its libraries goes through here.
namespace Allocations {

/// How many there are that were not given back.
int64_t Alive();

/// Lets the n-th allocation from now on fail, counted from 1.
void FailAt(int64_t n);
/// No allocation fails any more. Whether one has.
bool StopFailing();

}  // namespace Allocations
