#include "tools/muxers/Measure.h"

#include <sys/wait.h>
#include <unistd.h>

extern "C" {
#include <libavutil/log.h>
}

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

#include "tools/muxers/Trial.h"

namespace Measure {
namespace {

constexpr unsigned kPatience = 5;  // seconds

/// What the containers' names lead to, and its kin that CodecIsSupported knows.
std::set<std::string> Muxers() {
    std::set<std::string> muxers = {"oga", "opus", "psp", "spx", "wtv"};
    for (const auto& [name, helper] : GetAvailableDataHelpers(Kestro::Conf::IPreset::KEY_FORMAT)) {
        const std::string& muxerName = Kestro::FFWrapper::MuxerNameFromFormatName(name);
        if (const AVOutputFormat* muxer = av_guess_format(muxerName.c_str(), nullptr, nullptr)) {
            muxers.insert(muxer->name);
        }
    }
    std::erase_if(muxers, [](const auto& name) { return av_guess_format(name.c_str(), nullptr, nullptr) == nullptr; });
    return muxers;
}

/// Every codec of the vocabulary, and two more of WebM.
std::vector<std::string> Codecs() {
    using Kestro::Conf::IFormatCodecSubtitle;
    std::vector<std::string> codecs;
    for (const std::string& id : Kestro::Conf::VideoCodecIds()) codecs.push_back(id);
    for (const std::string& id : Kestro::Conf::AudioCodecIds()) codecs.push_back(id);
    for (const std::string* id :
         {&IFormatCodecSubtitle::CODEC_ID_SUBRIP, &IFormatCodecSubtitle::CODEC_ID_SRT,
          &IFormatCodecSubtitle::CODEC_ID_SSA, &IFormatCodecSubtitle::CODEC_ID_ASS,
          &IFormatCodecSubtitle::CODEC_ID_TEXT, &IFormatCodecSubtitle::CODEC_ID_MOV_TEXT,
          &IFormatCodecSubtitle::CODEC_ID_XSUB, &IFormatCodecSubtitle::CODEC_ID_DVB_TELETEXT,
          &IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE, &IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE,
          &IFormatCodecSubtitle::CODEC_ID_HDMV_PGS_SUBTITLE}) {
        codecs.push_back(*id);
    }
    codecs.insert(codecs.end(), {"opus", "webvtt"});
    return codecs;
}

/// The samples of one codec and kind.
struct Trial {
    std::string codec;
    std::optional<Sound> sound;  ///< of audio that was encoded
    std::vector<Sample> samples;
};

std::vector<Trial> MakeTrials(bool globalHeader) {
    std::vector<Trial> trials;
    for (const std::string& codec : Codecs()) {
        const std::size_t before = trials.size();
        const AVMediaType type = avcodec_get_type(Kestro::FFWrapper::CodecIDFromTextID(codec));
        for (const Sound& sound : type == AVMEDIA_TYPE_AUDIO ? AllSounds() : Sounds()) {
            const auto& [rate, channels] = sound;
            const SampleKind kind{.globalHeader = globalHeader, .sampleRate = rate, .channels = channels};
            Trial trial{.codec = codec, .sound = sound, .samples = MakeSamples(codec, kind)};
            if (trial.samples.empty()) continue;
            if (trial.samples.front().isSynthetic) break;
            trials.push_back(std::move(trial));
        }
        if (trials.size() > before) continue;
        trials.push_back({.codec = codec, .samples = MakeSamples(codec, {.globalHeader = globalHeader})});
    }
    return trials;
}

/// Whether the muxer stores one of the samples, alone or beside the stream that the container insists on.
bool IsStored(const AVOutputFormat& muxer, const Trial& trial, const std::vector<Trial>& all,
              const std::string& folder) {
    return std::ranges::any_of(trial.samples, [&](const Sample& sample) {
        std::vector<Way> ways = {{&sample}};
        const auto with = [&](AVCodecID companion) {
            const auto other = std::ranges::find_if(all, [&](const Trial& row) {
                return row.codec == avcodec_get_name(companion) && (!row.sound || row.sound == Sound(44100, 2));
            });
            if (other == all.end()) return;
            ways.push_back({&other->samples.front(), &sample});
            ways.push_back({&sample, &other->samples.front()});
        };
        const AVMediaType type = sample.parameters->codec_type;
        if (type != AVMEDIA_TYPE_VIDEO) with(muxer.video_codec);
        if (type != AVMEDIA_TYPE_AUDIO) with(muxer.audio_codec);
        return IsStored(muxer.name, ways, sample, folder);
    });
}

/// An answer for each trial: stored, not stored, or hung. They are found in a process of its own: a muxer or demuxer
/// that crashes or hangs takes nothing along, and the next process goes on behind it.
enum class Answer : char { Stored, NotStored, Hung };

std::vector<Answer> Answers(const AVOutputFormat& muxer, const std::vector<Trial>& trials, const std::string& folder) {
    std::vector<Answer> answers;
    while (answers.size() < trials.size()) {
        int ends[2];
        if (pipe(ends) != 0) throw std::runtime_error("no pipe");
        const pid_t child = fork();
        if (child < 0) throw std::runtime_error("no process");
        if (child == 0) {
            for (std::size_t i = answers.size(); i < trials.size(); ++i) {
                alarm(kPatience);
                const Answer answer = IsStored(muxer, trials[i], trials, folder) ? Answer::Stored : Answer::NotStored;
                if (write(ends[1], &answer, 1) != 1) break;
            }
            _exit(0);
        }
        close(ends[1]);
        for (Answer answer{}; read(ends[0], &answer, 1) == 1;) answers.push_back(answer);
        close(ends[0]);
        int status = 0;
        waitpid(child, &status, 0);
        if (answers.size() == trials.size()) break;
        answers.push_back(WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM ? Answer::Hung : Answer::NotStored);
    }
    return answers;
}

/// The entry of that codec, which is the last one if there is one.
CodecSounds& Last(CodecList& codecs, const std::string& codec) {
    if (codecs.empty() || codecs.back().codec != codec) codecs.push_back({codec, {}});
    return codecs.back();
}

void Add(CodecList& codecs, const Trial& trial) {
    CodecSounds& entry = Last(codecs, trial.codec);
    if (trial.sound) entry.sounds.insert(*trial.sound);
}

struct Folder {
    Folder() {
        std::string pattern = std::filesystem::temp_directory_path() / "measure-muxers-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for temporary files");
        path = pattern;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string path;
};

}  // namespace

Measurement MeasureMuxers() {
    av_log_set_level(AV_LOG_QUIET);
    const Folder folder;
    const std::vector<Trial> plain = MakeTrials(false);
    const std::vector<Trial> withHeader = MakeTrials(true);
    Measurement result;
    for (const Trial& trial : plain) {
        Add(result.data.tried, trial);
        const bool isSynthetic = !trial.samples.empty() && trial.samples.front().isSynthetic;
        if (isSynthetic) result.synthetic.push_back(trial.codec);
    }
    for (const std::string& muxer : Muxers()) {
        const AVOutputFormat& format = *av_guess_format(muxer.c_str(), nullptr, nullptr);
        const auto& trials = (format.flags & AVFMT_GLOBALHEADER) != 0 ? withHeader : plain;
        const std::vector<Answer> answers = Answers(format, trials, folder.path);
        CodecList& stored = result.data.stored[muxer];
        for (std::size_t i = 0; i < trials.size(); ++i) {
            if (answers[i] == Answer::Stored) Add(stored, trials[i]);
            if (answers[i] == Answer::Hung) result.hung.push_back(muxer + " " + trials[i].codec);
        }
    }
    return result;
}

}  // namespace Measure
