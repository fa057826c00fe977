// Stands in for libFuzzer where there is none: the fuzzer gets every file that is named or lies in a named folder.

#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>

#include "Fuzzing.h"

namespace {

void Replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::filesystem::filesystem_error("cannot be read", file, std::make_error_code(std::errc::io_error));
    }
    std::string input{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int argc, char** argv) {
    try {
        std::size_t replayed = 0;
        for (const std::filesystem::path path : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
            if (!std::filesystem::is_directory(path)) {
                Replay(path);
                ++replayed;
                continue;
            }
            for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
                if (entry.is_regular_file()) {
                    Replay(entry.path());
                    ++replayed;
                }
            }
        }
        std::cout << replayed << " inputs replayed\n";
        return replayed == 0 ? 1 : 0;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 1;
    }
}
