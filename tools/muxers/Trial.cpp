#include "tools/muxers/Trial.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace Measure {
namespace {

/// The demuxers whose names are not those of their muxers.
const std::map<std::string, std::string> kDemuxers = {
    {"mp4", "mov"},  {"ipod", "mov"}, {"3gp", "mov"},  {"3g2", "mov"},   {"psp", "mov"},
    {"vob", "mpeg"}, {"dvd", "mpeg"}, {"vcd", "mpeg"}, {"svcd", "mpeg"}, {"webm", "matroska"},
    {"ogv", "ogg"},  {"oga", "ogg"},  {"spx", "ogg"},  {"opus", "ogg"},  {"adts", "aac"},
};
/// The extensions of pictures that are not the codecs' names; the name is all that tells some of them.
const std::map<std::string, std::string> kExtensions = {
    {"mjpeg", "jpg"}, {"jpeg2000", "jp2"}, {"jpegls", "jls"}, {"targa", "tga"}, {"tiff", "tif"}};

/// The text that stands for another in a table, or else itself.
const std::string& Translated(const std::map<std::string, std::string>& table, const std::string& text) {
    const auto row = table.find(text);
    return row != table.end() ? row->second : text;
}

void AddStream(AVFormatContext& context, const Sample& sample, bool isCover) {
    AVStream* stream = avformat_new_stream(&context, nullptr);
    avcodec_parameters_copy(stream->codecpar, sample.parameters.get());
    stream->codecpar->codec_tag = 0;
    stream->time_base = sample.timeBase;
    if (stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) stream->avg_frame_rate = {25, 1};
    if (isCover) stream->disposition = AV_DISPOSITION_ATTACHED_PIC;
}

bool WritePackets(AVFormatContext& context, const Way& way, bool isPicture) {
    struct Entry {
        double time;
        unsigned stream;
        const AVPacket* packet;
    };
    std::vector<Entry> entries;
    for (unsigned i = 0; i < way.size(); ++i) {
        const bool isOne = isPicture || (context.streams[i]->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
        for (const auto& packet : way[i]->packets) {
            entries.push_back({static_cast<double>(packet->dts) * av_q2d(way[i]->timeBase), i, packet.get()});
            if (isOne) break;
        }
    }
    std::ranges::stable_sort(entries, {}, &Entry::time);
    return std::ranges::all_of(entries, [&](const Entry& entry) {
        const Ffmpeg::Packet packet(av_packet_clone(entry.packet));
        packet->stream_index = static_cast<int>(entry.stream);
        av_packet_rescale_ts(packet.get(), way[entry.stream]->timeBase, context.streams[entry.stream]->time_base);
        return av_interleaved_write_frame(&context, packet.get()) >= 0;
    });
}

bool Write(const AVOutputFormat& muxer, const Way& way, const std::string& path) {
    AVFormatContext* made = nullptr;
    if (avformat_alloc_output_context2(&made, &muxer, nullptr, path.c_str()) < 0) return false;
    const Ffmpeg::Output context(made);
    const bool isPicture = std::string(muxer.name) == "image2";
    if (isPicture) av_opt_set(context->priv_data, "update", "1", 0);
    const bool isAudioFirst = way.front()->parameters->codec_type == AVMEDIA_TYPE_AUDIO;
    for (const Sample* sample : way) {
        const bool isVideo = sample->parameters->codec_type == AVMEDIA_TYPE_VIDEO;
        AddStream(*context, *sample, isVideo && isAudioFirst && muxer.video_codec != AV_CODEC_ID_NONE);
    }
    if ((muxer.flags & AVFMT_NOFILE) == 0 && avio_open(&context->pb, path.c_str(), AVIO_FLAG_WRITE) < 0) return false;
    if (avformat_write_header(context.get(), nullptr) < 0) return false;
    if (!WritePackets(*context, way, isPicture) || av_write_trailer(context.get()) < 0) return false;
    return context->pb == nullptr || (avio_flush(context->pb), context->pb->error >= 0);
}

/// Whether a stream is what was written: the codec, and of audio its sample rate and channels.
bool IsSame(const AVCodecParameters& written, const AVCodecParameters& read) {
    if (read.codec_id != written.codec_id) return false;
    if (read.codec_type != AVMEDIA_TYPE_AUDIO) return true;
    const bool isSameRate =
        read.sample_rate == written.sample_rate || read.codec_id == AV_CODEC_ID_OPUS;  // of 48000 Hz
    return isSameRate && read.ch_layout.nb_channels == written.ch_layout.nb_channels;
}

/// Whether the container's demuxer finds that stream, with a packet.
bool Reads(const std::string& muxer, const Sample& sample, const std::string& path) {
    const AVInputFormat* demuxer = av_find_input_format(Translated(kDemuxers, muxer).c_str());
    AVFormatContext* opened = nullptr;
    if (demuxer == nullptr || avformat_open_input(&opened, path.c_str(), demuxer, nullptr) < 0) return false;
    const Ffmpeg::Input context(opened);
    if (avformat_find_stream_info(opened, nullptr) < 0) return false;
    std::set<int> streams;
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        if (!IsSame(*sample.parameters, *context->streams[i]->codecpar)) continue;
        if (context->streams[i]->attached_pic.size > 0) return true;
        streams.insert(static_cast<int>(i));
    }
    const Ffmpeg::Packet packet(av_packet_alloc());
    while (!streams.empty() && av_read_frame(opened, packet.get()) >= 0) {
        if (packet->size > 0 && streams.contains(packet->stream_index)) return true;
        av_packet_unref(packet.get());
    }
    return false;
}

}  // namespace

bool IsStored(const std::string& muxer, const std::vector<Way>& ways, const Sample& sample, const std::string& folder) {
    const AVOutputFormat* format = av_guess_format(muxer.c_str(), nullptr, nullptr);
    const std::string path = folder + "/sample." + Translated(kExtensions, sample.codecId);
    return std::ranges::any_of(ways, [&](const Way& way) {
        std::filesystem::remove(path);
        return Write(*format, way, path) && Reads(muxer, sample, path);
    });
}

}  // namespace Measure
