// lifetime CLIENT exit|unload: loads a library that uses ours from its static constructor, and ends with it or without
// it.

#include <dlfcn.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

extern "C" {
#include <libavformat/avformat.h>
}

namespace {

/// Made before the library is loaded, and so ended after everything that the library made then.
struct Oldest {
    bool (*use)() = nullptr;
    ~Oldest() {
        if (use != nullptr && !use()) __builtin_trap();
    }
} oldest;

bool IsMapped(const std::string& name) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(name) == std::string::npos) continue;
        std::fprintf(stderr, "still loaded: %s\n", line.c_str());
        return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    // FFmpeg stays: what the libraries below it lose when they are unloaded is not the question.
    if (argc != 3 || avformat_version() == 0) return 2;
    void* const client = dlopen(argv[1], RTLD_NOW);
    if (client == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    const auto use = reinterpret_cast<bool (*)()>(dlsym(client, "UseTheLibrary"));
    if (use == nullptr || !use()) return 1;
    if (std::strcmp(argv[2], "exit") == 0) {
        oldest.use = use;
        return 0;
    }
    return dlclose(client) == 0 && !IsMapped("libKestro") ? 0 : 1;
}
