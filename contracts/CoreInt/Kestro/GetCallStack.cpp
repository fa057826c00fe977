#include "Kestro/GetCallStack.h"

#include <boost/stacktrace.hpp>

namespace Kestro {

std::string GetCallStack() {
    constexpr std::size_t kOwnFrames = 1;
    constexpr std::size_t kMaxFrames = 64;
    return boost::stacktrace::to_string(boost::stacktrace::stacktrace(kOwnFrames, kMaxFrames));
}

}  // namespace Kestro
