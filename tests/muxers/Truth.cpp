#include "Truth.h"

#include <sys/wait.h>
#include <unistd.h>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/log.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

namespace MuxerTest {
namespace {

constexpr unsigned kPatience = 5;  // seconds

/// The demuxers whose names are not those of their muxers.
const std::map<std::string, std::string> kDemuxers = {
    {"mp4", "mov"},  {"ipod", "mov"}, {"3gp", "mov"},   {"3g2", "mov"},  {"webm", "matroska"}, {"vob", "mpeg"},
    {"dvd", "mpeg"}, {"vcd", "mpeg"}, {"svcd", "mpeg"}, {"adts", "aac"}, {"ogv", "ogg"},
};
/// The extensions of pictures that are not the codecs' names; the name is all that tells some of them.
const std::map<std::string, std::string> kExtensions = {
    {"mjpeg", "jpg"}, {"jpeg2000", "jp2"}, {"jpegls", "jls"}, {"targa", "tga"}, {"tiff", "tif"}};

/// Writes the samples as the streams of one file. Packets go in by their time.
bool Write(const AVOutputFormat& muxer, const std::vector<const Sample*>& samples, const std::string& path) {
    AVFormatContext* context = nullptr;
    if (avformat_alloc_output_context2(&context, &muxer, nullptr, path.c_str()) < 0) return false;
    const bool isPicture = std::string(muxer.name) == "image2";
    if (isPicture) av_opt_set(context->priv_data, "update", "1", 0);
    for (const Sample* sample : samples) {
        AVStream* stream = avformat_new_stream(context, nullptr);
        avcodec_parameters_copy(stream->codecpar, sample->parameters.get());
        stream->codecpar->codec_tag = 0;
        stream->time_base = sample->timeBase;
        const bool isVideo = stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
        if (isVideo) stream->avg_frame_rate = {25, 1};
        const bool isCover = isVideo && muxer.video_codec != AV_CODEC_ID_NONE && samples.size() == 2 &&
                             samples[0]->parameters->codec_type == AVMEDIA_TYPE_AUDIO;
        if (isCover) stream->disposition = AV_DISPOSITION_ATTACHED_PIC;
    }
    if ((muxer.flags & AVFMT_NOFILE) == 0 && avio_open(&context->pb, path.c_str(), AVIO_FLAG_WRITE) < 0) return false;
    if (avformat_write_header(context, nullptr) < 0) return false;
    struct Entry {
        double time;
        unsigned stream;
        const AVPacket* packet;
    };
    std::vector<Entry> entries;
    for (unsigned i = 0; i < samples.size(); ++i) {
        const bool isOne = isPicture || (context->streams[i]->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
        for (const auto& packet : samples[i]->packets) {
            entries.push_back({static_cast<double>(packet->dts) * av_q2d(samples[i]->timeBase), i, packet.get()});
            if (isOne) break;
        }
    }
    std::ranges::stable_sort(entries, {}, &Entry::time);
    for (const Entry& entry : entries) {
        AVPacket* packet = av_packet_clone(entry.packet);
        packet->stream_index = static_cast<int>(entry.stream);
        av_packet_rescale_ts(packet, samples[entry.stream]->timeBase, context->streams[entry.stream]->time_base);
        if (av_interleaved_write_frame(context, packet) < 0) return false;
    }
    if (av_write_trailer(context) < 0) return false;
    return context->pb == nullptr || (avio_flush(context->pb), context->pb->error >= 0);
}

/// Whether a stream is what was written: the codec, and of sound its rate and channels.
bool IsSame(const AVCodecParameters& written, const AVCodecParameters& read) {
    if (read.codec_id != written.codec_id) return false;
    return written.codec_type != AVMEDIA_TYPE_AUDIO ||
           (read.sample_rate == written.sample_rate && read.ch_layout.nb_channels == written.ch_layout.nb_channels);
}

/// Whether the container's demuxer finds that stream, with a packet.
bool Reads(const std::string& muxer, const Sample& sample, const std::string& path) {
    const auto row = kDemuxers.find(muxer);
    const AVInputFormat* demuxer = av_find_input_format((row != kDemuxers.end() ? row->second : muxer).c_str());
    AVFormatContext* context = nullptr;
    if (demuxer == nullptr || avformat_open_input(&context, path.c_str(), demuxer, nullptr) < 0) return false;
    if (avformat_find_stream_info(context, nullptr) < 0) return false;
    std::set<int> streams;
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        if (!IsSame(*sample.parameters, *context->streams[i]->codecpar)) continue;
        if (context->streams[i]->attached_pic.size > 0) return true;
        streams.insert(static_cast<int>(i));
    }
    AVPacket* packet = av_packet_alloc();
    while (!streams.empty() && av_read_frame(context, packet) >= 0) {
        if (packet->size > 0 && streams.contains(packet->stream_index)) return true;
        av_packet_unref(packet);
    }
    return false;
}

/// In a process of its own, which ends with it: a muxer that crashes or hangs takes nothing along.
Fate Try(const std::string& muxer, const std::vector<std::vector<const Sample*>>& ways, const Sample& sample,
         const std::string& path) {
    const pid_t child = fork();
    if (child == 0) {
        alarm(kPatience);
        const AVOutputFormat* format = av_guess_format(muxer.c_str(), nullptr, nullptr);
        Fate fate = Fate::Refused;
        for (const auto& samples : ways) {
            if (!Write(*format, samples, path)) continue;
            fate = Fate::Other;
            if (!Reads(muxer, sample, path)) continue;
            fate = Fate::Read;
            break;
        }
        _exit(static_cast<int>(fate));
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::filesystem::remove(path);
    if (WIFEXITED(status)) return static_cast<Fate>(WEXITSTATUS(status));
    return WTERMSIG(status) == SIGALRM ? Fate::Hung : Fate::Refused;
}

}  // namespace

std::vector<std::string> Muxers() {
    std::set<std::string> muxers;
    for (const auto& [name, helper] : GetAvailableDataHelpers(Kestro::Conf::IPreset::KEY_FORMAT)) {
        const std::string& muxerName = Kestro::FFWrapper::MuxerNameFromFormatName(name);
        if (const AVOutputFormat* muxer = av_guess_format(muxerName.c_str(), nullptr, nullptr)) {
            muxers.insert(muxer->name);
        }
    }
    return {muxers.begin(), muxers.end()};
}

std::vector<std::string> Codecs() {
    using Kestro::Conf::IFormatCodecSubtitle;
    std::vector<std::string> codecs;
    for (const std::string& id : Kestro::Conf::VideoCodecIds()) codecs.push_back(id);
    for (const std::string& id : Kestro::Conf::AudioCodecIds()) codecs.push_back(id);
    for (const char* id : {"subrip", "srt", "ssa", "ass", "text", "mov_text", "xsub", "dvb_teletext", "dvb_subtitle",
                           "dvd_subtitle", "hdmv_pgs_subtitle", "opus", "webvtt"}) {
        codecs.emplace_back(id);
    }
    return codecs;
}

const Sample* Truth::Find(const std::string& codecId, const SampleKind& kind) {
    const auto [entry, isNew] = samples_.try_emplace({codecId, kind});
    if (isNew) entry->second = MakeSample(codecId, kind);
    return entry->second ? &*entry->second : nullptr;
}

bool Truth::IsSynthetic(const std::string& codecId) {
    const Sample* sample = Find(codecId, {});
    return sample != nullptr && sample->isSynthetic;
}

Fate Truth::Of(const std::string& muxer, const std::string& codecId) {
    Fate best = Fate::Refused;
    for (const int rate : {44100, 48000}) {
        const Fate fate = Of(muxer, codecId, {.sampleRate = rate}).value_or(Fate::Refused);
        if (fate == Fate::Read) return fate;
        if (fate != Fate::Refused) best = fate;
    }
    return best;
}

std::optional<Fate> Truth::Of(const std::string& muxer, const std::string& codecId, SampleKind kind) {
    av_log_set_level(AV_LOG_QUIET);
    const AVOutputFormat* format = av_guess_format(muxer.c_str(), nullptr, nullptr);
    kind.globalHeader = (format->flags & AVFMT_GLOBALHEADER) != 0;
    const Sample* sample = Find(codecId, kind);
    if (sample == nullptr) return std::nullopt;
    std::vector<std::vector<const Sample*>> ways = {{sample}};
    const auto with = [&](AVCodecID companion) {
        if (companion == AV_CODEC_ID_NONE) return;
        if (const Sample* other = Find(avcodec_get_name(companion), {.globalHeader = kind.globalHeader})) {
            ways.push_back({other, sample});
        }
    };
    const AVMediaType type = sample->parameters->codec_type;
    if (type != AVMEDIA_TYPE_VIDEO) with(format->video_codec);
    if (type != AVMEDIA_TYPE_AUDIO) with(format->audio_codec);
    const auto extension = kExtensions.find(codecId);
    const std::string path =
        std::filesystem::temp_directory_path() /
        ("muxer-" + std::to_string(getpid()) + "." + (extension != kExtensions.end() ? extension->second : codecId));
    return Try(muxer, ways, *sample, path);
}

}  // namespace MuxerTest
