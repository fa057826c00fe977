#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

#include "tests/Described.h"
#include "tools/muxers/Accuracy.h"

extern "C" {
#include <libavformat/avformat.h>
}

// What is said of containers beside what FFmpeg's muxers do.

namespace Kestro::Conf {
namespace {

/// From the file that scripts/codec-support wrote for this FFmpeg. Where there is none it takes half a minute.
Measure::MuxerData Measured() {
    std::ifstream file(KESTRO_TEST_DATA "/" + Measure::FileName());
    if (file) return Measure::MuxerData::Read(file);
    std::stringstream measured;
    FILE* tool = popen(KESTRO_MEASURE " 2>/dev/null", "r");  // NOLINT(cert-env33-c): a path of this build
    char part[4096];
    while (const std::size_t size = fread(part, 1, sizeof part, tool)) {
        measured.write(part, static_cast<std::streamsize>(size));
    }
    EXPECT_EQ(pclose(tool), 0);
    return Measure::MuxerData::Read(measured);
}

TEST(Muxers, StoreWhatCodecIsSupportedSays) {
    const auto verdicts = Measure::Compare(Measured());
    std::set<std::string> wrong;
    for (const Measure::Verdict& verdict : verdicts) {
        if (verdict.isSupported != verdict.isStored) wrong.insert(verdict.muxer + " " + verdict.codec);
    }
    EXPECT_EQ(wrong, (std::set<std::string>{
                         "aiff png",       // yes: a muxer's default codecs always are; its pictures want an option
                         "flv mp3",        // yes: default codecs are not asked for sample rates
                         "mxf pcm_s16le",  // likewise
                         "swf mp3",        // likewise
                         "webm av1",       // no: WebM is for five codecs
                     }));
    EXPECT_GT(std::ranges::count_if(verdicts, &Measure::Verdict::isStored), 1000);
    EXPECT_GT(std::ranges::count_if(verdicts, std::not_fn(&Measure::Verdict::isStored)), 2000);
}

TEST(Muxers, StoreWhatContainersOffer) {
    std::set<std::string> notStored;
    std::set<std::string> otherHeader;
    for (const auto& [name, helper] : GetAvailableDataHelpers(IPreset::KEY_FORMAT)) {
        const AVOutputFormat* muxer =
            av_guess_format(FFWrapper::MuxerNameFromFormatName(name).c_str(), nullptr, nullptr);
        if (muxer == nullptr) continue;
        if (FormatHasGlobalHeader(name) != ((muxer->flags & AVFMT_GLOBALHEADER) != 0)) otherHeader.insert(name);
        ConstraintMap constraints;
        helper->FillConstraints(constraints);
        for (const auto& [path, constraint] : constraints) {
            if (!path.ends_with(IFormatCodec::TAG_CODEC_ID)) continue;
            const Core::Property offered = Described(*constraint);
            for (const Core::Property& codec : offered) {
                if (!Measure::IsSupported(name, codec.GetString())) notStored.insert(name + " " + codec.GetString());
            }
        }
    }
    // XSUB is stored as video and read back so; the next are for their players' files alone; text goes in as SubRip.
    EXPECT_THAT(notStored, testing::UnorderedElementsAre("avi xsub", "ipod mp3", "ipod dvd_subtitle", "m4v mp3",
                                                         "m4v dvd_subtitle", "matroska text"));
    EXPECT_THAT(otherHeader, testing::IsEmpty());
}

}  // namespace
}  // namespace Kestro::Conf
