#include <iostream>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"

using namespace Kestro::Conf;
namespace Planner = Kestro::Planner;

int main(int count, char** words) {
    const auto aac = CreateDataHelper(IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_AAC);
    Kestro::Core::Property codec = aac->GetDefaultSettings();
    codec.SetChild(IFormatCodec::TAG_BITRATE, 100'000);
    aac->CorrectFormatCodec(codec);
    std::cout << "AAC: " << codec[IFormatCodec::TAG_BITRATE].GetInt64() << " bit/s\n";
    if (count != 3) return 0;

    Planner::Preset preset = Planner::Preset::OfContainer("mp4");
    preset.Set("Streams/TypeId=video/VideoCodec/BitRate", "3000000");
    try {
        const Planner::Plan plan = Planner::MakePlan(Planner::Probe(words[1]), preset);
        for (const Planner::Choice& one : plan.choices) std::cout << one.path << " = " << one.value << "\n";
        for (const Planner::Correction& one : plan.corrections) std::cout << one.path << ": " << one.reason << "\n";
        for (const Planner::Command& run : Planner::FfmpegCommands(plan, words[2])) {
            std::cout << "ffmpeg";
            for (const std::string& word : run) std::cout << " " << word;
            std::cout << "\n";
        }
    } catch (const Planner::NotAcceptable& refused) {
        for (const Planner::Problem& problem : refused.Problems()) std::cerr << problem.message << "\n";
        return 1;
    }
}
