#include "prove/Clips.h"

#include <filesystem>
#include <fstream>

#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/FFWrapper/SubtitleKinds.h"
#include "Kestro/Planner/Execution.h"
#include "Kestro/Planner/Fits.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Probe.h"

#include "cli/Failure.h"
#include "convert/ChildProcess.h"
#include "convert/Converter.h"
#include "convert/Messages.h"
#include "prove/BitmapSubtitle.h"
#include "prove/Offers.h"

namespace App {
namespace {

using Kestro::Conf::StreamRecord;

constexpr int kWidth = 176;
constexpr int kHeight = 144;

// Two voices with some noise, a channel each.
constexpr const char* kSound =
    "aevalsrc=exprs='0.3*sin(2*PI*440*t)+0.1*sin(2*PI*660*t)+0.02*(random(0)*2-1)|"
    "0.3*sin(2*PI*554.37*t)+0.02*(random(1)*2-1)':sample_rate=48000:channel_layout=stereo:d=1";

/// The clip's own codecs are lossless, and no container of the library takes them as they are.
const std::vector<std::string> kClip = {"-f", "lavfi", "-i", "testsrc2=s=176x144:r=25:d=1",
                                        "-f", "lavfi", "-i", kSound};
constexpr const char* kPicture =
    "noise=alls=8:allf=t,setparams=color_primaries=bt709:color_trc=bt709:colorspace=bt709:range=tv,format=yuv420p";
const std::vector<std::string> kClipCodecs = {"-map", "0:v",    "-map",          "1:a",  "-map", "2:s",
                                              "-vf",  kPicture, "-c:v",          "ffv1", "-c:a", "wavpack",
                                              "-c:s", "subrip", "-map_metadata", "-1"};
constexpr const char* kTexts = "1\n00:00:00,200 --> 00:00:00,700\nProof\n";

void RunFfmpeg(std::vector<std::string> arguments, const std::string& output) {
    std::vector<std::string> all{"-hide_banner", "-nostdin", "-y", "-loglevel", "level+error"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    all.push_back(Planner::FileUrl(output));
    Messages messages(output, output);
    SignalGuard signals;
    const ChildEnd end = RunChild({.program = FindProgram("ffmpeg"),
                                   .arguments = std::move(all),
                                   .run = {},
                                   .onOutput = [](std::string_view) {},
                                   .onError = [&messages](std::string_view line) { messages.Read(line); },
                                   .onEnd = {}},
                                  signals);
    if (end.exited && end.status == 0) return;
    std::string text = "ffmpeg makes no clip to start from.";
    for (const std::string& line : messages.Last()) text += " " + line;
    throw Failure(ExitStatus::ConversionFailed, text);
}

void Write(const std::string& path, const std::string& content) {
    std::ofstream file(path, std::ios::binary);
    if (file << content && file.flush()) return;
    throw Failure(ExitStatus::ConversionFailed, "The clip cannot be written to the temporary folder.");
}

/// FFmpeg's encoder. Throws NotAcceptable (NotInstalled) where there is none.
std::string EncoderOf(const std::string& codec) {
    std::string encoder = Kestro::FFWrapper::EncoderNameFromCodecId(codec);
    if (!encoder.empty()) return encoder;
    throw Planner::NotAcceptable(
        {.code = Planner::ProblemCode::NotInstalled,
         .message = "The installed FFmpeg has no encoder for " + codec + ", so there is nothing to copy."});
}

[[noreturn]] void ThrowUnstored(const std::string& codec) {
    throw Failure(ExitStatus::ConversionFailed,
                  "FFmpeg reads " + codec + " back out of no container that it writes, so there is no clip with it.");
}

bool IsStored(const std::string& codec, const std::string& container) {
    return Planner::FindFits(codec, container).front().fits;
}

/// The first container that stores the codec, films before pictures.
std::string StoringContainer(const std::string& codec) {
    std::string roomiest = RoomiestContainer();
    if (IsStored(codec, roomiest)) return roomiest;
    for (const Planner::Fit& fit : Planner::FindFits(codec, {})) {
        if (fit.fits) return fit.container;
    }
    ThrowUnstored(codec);
}

}  // namespace

void Clips::MakeFirst() const {
    Write(Path("texts.srt"), kTexts);
    Write(Path("bitmap.sup"), BitmapSubtitleFile(kWidth, kHeight));
    std::vector<std::string> arguments = kClip;
    arguments.insert(arguments.end(), {"-i", Planner::FileUrl(Path("texts.srt"))});
    arguments.insert(arguments.end(), kClipCodecs.begin(), kClipCodecs.end());
    RunFfmpeg(arguments, Path("clip.mkv"));
}

void Clips::Make(const Footage& footage) const {
    if (!Find(footage).empty()) return;
    return footage.codec.empty() ? MakeVariant(footage) : MakeAlone(footage);
}

std::string Clips::Find(const Footage& footage) const {
    for (const auto& file : std::filesystem::directory_iterator(folder_)) {
        if (file.path().stem() == footage.Name()) return file.path().string();
    }
    return {};
}

void Clips::Finish(const Footage& footage, const std::string& made, const std::string& extension) const {
    // Under its name it is complete.
    std::filesystem::rename(made, Path(footage.Name() + extension));
}

void Clips::MakeVariant(const Footage& footage) const {
    const std::string part = Path("part-" + footage.Name() + ".mkv");
    std::vector<std::string> arguments{"-i", Planner::FileUrl(Path("clip.mkv"))};
    if (!footage.subtitles.empty()) {
        const std::string encoder = footage.subtitles == kBitmapSubtitle ? "copy" : EncoderOf(footage.subtitles);
        if (!IsStored(footage.subtitles, RoomiestContainer())) ThrowUnstored(footage.subtitles);
        arguments.insert(arguments.end(), {"-fix_sub_duration", "-i", Planner::FileUrl(Path("bitmap.sup")), "-map",
                                           "0:v", "-map", "0:a", "-map", "1:s", "-c", "copy", "-c:s", encoder});
    } else {
        const std::string cover = Path("part-cover.png");
        RunFfmpeg({"-i", Planner::FileUrl(Path("clip.mkv")), "-frames:v", "1", "-s", "64x64"}, cover);
        arguments.insert(arguments.end(),
                         {"-map", "0", "-c", "copy", "-attach", cover, "-metadata:s:t", "mimetype=image/png"});
    }
    RunFfmpeg(arguments, part);
    Finish(footage, part, ".mkv");
}

bool Clips::MakeByPlan(const Footage& footage, const std::string& source) const {
    const StreamRecord& kind = StreamRecord::Find(footage.type);
    Planner::MediaInfo input = Planner::Probe(source);
    std::erase_if(input.streams, [&](const Planner::MediaStream& stream) { return stream.type != footage.type; });
    for (const std::string& container : Carriers(footage.type, footage.codec)) {
        try {
            Planner::Preset preset = Planner::Preset::OfContainer(container);
            preset.Set(kind.CodecIdPath(), footage.codec);
            const Planner::Plan plan = Planner::MakePlan(input, preset);
            Planner::CheckInstalled(plan);
            // A film is more than one picture, where a container of films stores it.
            const bool isOnePicture = plan.IsPicture() && IsStored(footage.codec, RoomiestContainer());
            if (plan.streams.front().codecId != footage.codec || isOnePicture) continue;
            const std::string extension = "." + Kestro::FFWrapper::FileExtension(container);
            const std::string part = Path("part-" + footage.Name() + extension);
            Convert(plan, part, {.overwrite = true});
            Finish(footage, part, extension);
            return true;
        } catch (const Planner::NotAcceptable&) {
            continue;
        }
    }
    return false;
}

void Clips::MakeAlone(const Footage& footage) const {
    const bool isText = footage.type != StreamType::Subtitle || Kestro::FFWrapper::IsTextSubtitle(footage.codec);
    if (footage.codec == kBitmapSubtitle) {
        std::filesystem::copy_file(Path("bitmap.sup"), Path("part-bitmap.sup"));
        return Finish(footage, Path("part-bitmap.sup"), ".sup");
    }
    const std::string encoder = EncoderOf(footage.codec);
    if (isText && MakeByPlan(footage, Path("clip.mkv"))) return;
    const std::string container = StoringContainer(footage.codec);
    const std::string extension = "." + Kestro::FFWrapper::FileExtension(container);
    const std::string part = Path("part-" + footage.Name() + extension);
    const char* letter = footage.type == StreamType::Video ? "v" : footage.type == StreamType::Audio ? "a" : "s";
    // A bitmap lasts until the next one, and encoders are told so by that option alone.
    RunFfmpeg({"-fix_sub_duration", "-i", Planner::FileUrl(Path(isText ? "clip.mkv" : "bitmap.sup")), "-map",
               std::string("0:") + letter, "-c", encoder, "-strict", "experimental", "-f",
               Kestro::FFWrapper::MuxerName(container)},
              part);
    Finish(footage, part, extension);
}

}  // namespace App
