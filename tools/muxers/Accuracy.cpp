#include "tools/muxers/Accuracy.h"

#include <cstdint>  // before FFmpeg's headers, which want its macros

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <iomanip>
#include <map>
#include <ostream>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"

namespace Measure {
namespace {

using namespace Kestro::Conf;
using Kestro::Core::Property;

/// How often an answer is right and wrong, of yes and of no.
struct Counts {
    int yes = 0;
    int no = 0;
    int wrongYes = 0;
    int wrongNo = 0;

    void Add(bool answer, bool truth) { ++(answer == truth ? answer ? yes : no : answer ? wrongYes : wrongNo); }
    void Print(std::ostream& out, const char* name) const {
        const double right = 100.0 * (yes + no) / (yes + no + wrongYes + wrongNo);
        out << std::left << std::setw(24) << name << std::right << std::setw(7) << yes << std::setw(7) << no
            << std::setw(11) << wrongYes << std::setw(10) << wrongNo << std::fixed << std::setprecision(1)
            << std::setw(9) << right << " %\n";
    }
};

}  // namespace

bool IsSupported(const std::string& container, const std::string& codec, const std::optional<Sound>& sound) {
    Property format;
    format.SetChild(IFormatFile::TAG_CONTAINER, container);
    Property node;
    node.SetChild(IFormatCodec::TAG_CODEC_ID, codec);
    node.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    if (sound) {
        node.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, sound->first);
        node.SetChild(IFormatCodecAudio::TAG_LAYOUT, LayoutRecord::Find(sound->second)->name);
    }
    boost::intrusive_ptr<const IFormatCodec> description = IFormatCodecSubtitle::Create(node);
    if (IsVideoCodec(codec)) description = IFormatCodecVideo::Create(node);
    if (sound || IsAudioCodec(codec)) description = IFormatCodecAudio::Create(node);
    return CodecIsSupported(IFormatFile::Create(format), description);
}

std::vector<Verdict> Compare(const MuxerData& data) {
    std::vector<Verdict> verdicts;
    for (const auto& [muxer, codecs] : data.stored) {
        const AVOutputFormat* format = av_guess_format(muxer.c_str(), nullptr, nullptr);
        for (const auto& [codec, sounds] : data.tried) {
            const CodecSounds* stored = Find(codecs, codec);
            const AVCodecID id = Kestro::FFWrapper::CodecIDFromTextID(codec);
            const bool isSupportedByFfmpeg =
                format != nullptr && avformat_query_codec(format, id, FF_COMPLIANCE_NORMAL) == 1;
            verdicts.push_back({.muxer = muxer,
                                .codec = codec,
                                .isStored = stored != nullptr,
                                .isSupported = IsSupported(muxer, codec),
                                .isSupportedByFfmpeg = isSupportedByFfmpeg});
            if (stored == nullptr || avcodec_get_type(id) != AVMEDIA_TYPE_AUDIO) continue;
            for (const Sound& sound : sounds) {
                verdicts.push_back({.muxer = muxer,
                                    .codec = codec,
                                    .sound = sound,
                                    .isStored = stored->sounds.contains(sound),
                                    .isSupported = IsSupported(muxer, codec, sound)});
            }
        }
    }
    return verdicts;
}

void Print(std::ostream& out, const std::vector<Verdict>& verdicts) {
    Counts ours;
    Counts ffmpegs;
    for (const Verdict& verdict : verdicts) {
        if (verdict.sound) continue;
        ours.Add(verdict.isSupported, verdict.isStored);
        ffmpegs.Add(verdict.isSupportedByFfmpeg, verdict.isStored);
    }
    out << std::string(24, ' ') << "    yes     no  wrong yes  wrong no      right\n";
    ours.Print(out, "CodecIsSupported");
    ffmpegs.Print(out, "avformat_query_codec");
    std::map<std::string, int> wrong;  // with the number of sounds
    for (const Verdict& verdict : verdicts) {
        if (verdict.isSupported == verdict.isStored) continue;
        wrong[verdict.muxer + " " + verdict.codec + (verdict.isSupported ? ": wrong yes" : ": wrong no")] +=
            verdict.sound ? 1 : 0;
    }
    for (const auto& [what, sounds] : wrong) {
        out << what << (sounds > 0 ? " in " + std::to_string(sounds) + " sounds\n" : "\n");
    }
}

}  // namespace Measure
