#include <cstdint>  // before FFmpeg's headers, which want its macros

extern "C" {
#include <libavutil/avutil.h>
}

#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/muxers/Accuracy.h"
#include "tools/muxers/Measure.h"

// measure-muxers: what the muxers of the installed FFmpeg store so that its demuxers read it back. Without arguments
// prints the file (MuxerData); with --accuracy FILE how often CodecIsSupported, and FFmpeg's own query, say what the
// file does; with --name the file's name for this FFmpeg.

namespace {

int PrintMeasurement() {
    const auto [data, synthetic, hung] = Measure::MeasureMuxers();
    std::cout << "# What the muxers of FFmpeg " << av_version_info()
              << " store and its demuxers read back, as measure-muxers"
              << " found it.\n# tools/muxers/MuxerData.h explains the lines. Without an encoder, as a description with "
              << "meaningless packets:\n#";
    for (const std::string& codec : synthetic) std::cout << " " << codec;
    std::cout << "\n";
    data.Write(std::cout);
    for (const std::string& pair : hung) std::cerr << "hung: " << pair << "\n";
    return hung.empty() ? 0 : 1;
}

int PrintAccuracy(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    Measure::Print(std::cout, Measure::Compare(Measure::MuxerData::Read(file)));
    return 0;
}

}  // namespace

int main(int count, char** values) {
    try {
        const std::vector<std::string> arguments(values + 1, values + count);
        if (arguments.empty()) return PrintMeasurement();
        if (arguments.size() == 2 && arguments[0] == "--accuracy") return PrintAccuracy(arguments[1]);
        if (arguments != std::vector<std::string>{"--name"}) {
            std::cerr << "usage: measure-muxers [--accuracy FILE | --name]\n";
            return 2;
        }
        std::cout << Measure::FileName() << "\n";
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "measure-muxers: " << error.what() << "\n";
        return 1;
    }
}
