#include <gmock/gmock.h>

extern "C" {
#include <libavformat/avformat.h>
}

#include <cstdio>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

#include "tests/Described.h"
#include "Truth.h"

// Whether CodecIsSupported says what FFmpeg's muxers and demuxers do.

namespace MuxerTest {
namespace {

using namespace Kestro::Conf;
using Kestro::Core::Property;

Property Node(const std::string& codecId) {
    Property node;
    node.SetChild(IFormatCodec::TAG_CODEC_ID, codecId);
    node.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    return node;
}

bool IsSupported(const std::string& container, const Property& codec) {
    Property format;
    format.SetChild(IFormatFile::TAG_CONTAINER, container);
    const std::string& id = codec[IFormatCodec::TAG_CODEC_ID].GetString();
    boost::intrusive_ptr<const IFormatCodec> description = IFormatCodecSubtitle::Create(codec);
    if (IsVideoCodec(id)) description = IFormatCodecVideo::Create(codec);
    if (IsAudioCodec(id) || id == "opus") description = IFormatCodecAudio::Create(codec);
    return CodecIsSupported(IFormatFile::Create(format), description);
}

bool IsSupported(const std::string& container, const std::string& codecId) {
    return IsSupported(container, Node(codecId));
}

/// How often an answer is right and wrong, of yes and of no.
struct Matrix {
    int yes = 0;
    int no = 0;
    int wrongYes = 0;
    int wrongNo = 0;

    void Count(bool answer, bool truth) { ++(answer == truth ? answer ? yes : no : answer ? wrongYes : wrongNo); }
    void Print(const char* name) const {
        const int all = yes + no + wrongYes + wrongNo;
        std::printf("%-24s %6d %6d %10d %9d %8.1f %%\n", name, yes, no, wrongYes, wrongNo, 100.0 * (yes + no) / all);
    }
};

TEST(CodecIsSupported, IsTrueOfEveryMuxerAndCodec) {
    // The answer, and what decides it against the muxer.
    const std::map<std::string, const char*> contradictions = {
        {"aiff png", "yes: a muxer's default codecs always are; its pictures want an option"},
        {"webm av1", "no: WebM is for five codecs"},
    };
    Truth truth;
    Matrix ours;
    Matrix query;
    std::vector<std::string> wrong;
    std::string synthetic;
    for (const std::string& codec : Codecs()) {
        if (truth.IsSynthetic(codec)) synthetic += " " + codec;
        for (const std::string& muxer : Muxers()) {
            const Fate fate = truth.Of(muxer, codec);
            EXPECT_NE(fate, Fate::Hung) << muxer << " " << codec;
            const bool isSupported = IsSupported(muxer, codec);
            if (isSupported != (fate == Fate::Read)) wrong.push_back(muxer + " " + codec);
            ours.Count(isSupported, fate == Fate::Read);
            query.Count(avformat_query_codec(av_guess_format(muxer.c_str(), nullptr, nullptr),
                                             Kestro::FFWrapper::CodecIDFromTextID(codec), FF_COMPLIANCE_NORMAL) == 1,
                        fate == Fate::Read);
        }
    }
    std::vector<std::string> expected;
    for (const auto& [pair, why] : contradictions) expected.push_back(pair);
    EXPECT_THAT(wrong, testing::UnorderedElementsAreArray(expected));
    std::printf("%-24s %6s %6s %10s %9s %10s\n", "", "yes", "no", "wrong yes", "wrong no", "right");
    ours.Print("CodecIsSupported");
    query.Print("avformat_query_codec");
    std::printf("Without an encoder, as a description with meaningless packets:%s\n", synthetic.c_str());
}

TEST(CodecIsSupported, KnowsTheSoundThatMuxersInsistOn) {
    // Their default codecs, which are never asked for rates.
    const std::set<std::string> contradictions = {"flv mp3", "swf mp3", "mxf pcm_s16le"};
    Truth truth;
    std::set<std::string> wrong;
    for (const std::string& codec : AudioCodecIds()) {
        if (truth.IsSynthetic(codec)) continue;
        for (const std::string& muxer : Muxers()) {
            if (truth.Of(muxer, codec) != Fate::Read) continue;
            for (const int rate : {8000, 11025, 16000, 22050, 32000, 44100, 48000, 96000}) {
                for (const int channels : {1, 2, 6}) {
                    const auto fate = truth.Of(muxer, codec, {.sampleRate = rate, .channels = channels});
                    if (!fate) continue;
                    Property node = Node(codec);
                    node.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, rate);
                    node.SetChild(IFormatCodecAudio::TAG_LAYOUT, LayoutRecord::Find(channels)->name);
                    const bool isSupported = IsSupported(muxer, node);
                    if (isSupported != (*fate == Fate::Read)) wrong.insert(muxer + " " + codec);
                }
            }
        }
    }
    EXPECT_EQ(wrong, contradictions);
}

/// The muxer that writes a container; null where FFmpeg has none of that name.
const AVOutputFormat* MuxerOf(const std::string& container) {
    return av_guess_format(Kestro::FFWrapper::MuxerNameFromFormatName(container).c_str(), nullptr, nullptr);
}

TEST(CodecIsSupported, OfWhatAContainerOffers) {
    // Offered by the container, and not written by its muxer.
    const std::set<std::string> contradictions = {
        "avi xsub",           // stored as video, and read back so
        "ipod mp3",           // for its players' files alone
        "ipod dvd_subtitle",  // likewise
        "m4v mp3",           "m4v dvd_subtitle",
        "matroska text",  // it goes in as SubRip
    };
    std::set<std::string> found;
    for (const auto& [name, helper] : GetAvailableDataHelpers(IPreset::KEY_FORMAT)) {
        if (MuxerOf(name) == nullptr) continue;
        ConstraintMap constraints;
        helper->FillConstraints(constraints);
        for (const auto& [path, constraint] : constraints) {
            if (!path.ends_with(IFormatCodec::TAG_CODEC_ID)) continue;
            const Property offered = Described(*constraint);
            for (const Property& codec : offered) {
                if (!IsSupported(name, codec.GetString())) found.insert(name + " " + codec.GetString());
            }
        }
    }
    EXPECT_EQ(found, contradictions);
}

TEST(GlobalHeader, OfContainersAndTheirMuxers) {
    // The container's own flag holds.
    const std::set<std::string> contradictions = {};
    std::set<std::string> found;
    std::printf("%-12s %-10s %-6s %s\n", "container", "muxer", "flag", "global header");
    for (const auto& [name, helper] : GetAvailableDataHelpers(IPreset::KEY_FORMAT)) {
        const AVOutputFormat* muxer = MuxerOf(name);
        if (muxer == nullptr) continue;
        const bool theirs = (muxer->flags & AVFMT_GLOBALHEADER) != 0;
        const bool ours = FormatHasGlobalHeader(name);
        std::printf("%-12s %-10s %-6s %s\n", name.c_str(), muxer->name, theirs ? "yes" : "no", ours ? "yes" : "no");
        if (ours != theirs) found.insert(name);
    }
    EXPECT_EQ(found, contradictions);
}

}  // namespace
}  // namespace MuxerTest
