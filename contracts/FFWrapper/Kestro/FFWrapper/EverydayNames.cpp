#include "Kestro/FFWrapper/EverydayNames.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <algorithm>
#include <span>
#include <string_view>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"

namespace Kestro::FFWrapper {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::IFormatFile;

struct Everyday {
    std::string_view word;
    const std::string& name;
};

constexpr Everyday kContainers[] = {
    {"mkv", IFormatFile::FORMAT_MATROSKA}, {"mk3d", IFormatFile::FORMAT_MATROSKA},
    {"qt", IFormatFile::FORMAT_MOV},       {"quicktime", IFormatFile::FORMAT_MOV},
    {"ts", IFormatFile::FORMAT_MPEGTS},    {"m2ts", IFormatFile::FORMAT_MPEGTS},
    {"mts", IFormatFile::FORMAT_MPEGTS},   {"m2t", IFormatFile::FORMAT_MPEGTS},
    {"mpg", IFormatFile::FORMAT_MPEG},     {"oga", IFormatFile::FORMAT_OGG},
    {"aac", IFormatFile::FORMAT_AAC},      {"aif", IFormatFile::FORMAT_AIFF},
    {"wave", IFormatFile::FORMAT_WAV},     {"3gpp", IFormatFile::FORMAT_3GP},
    {"3gpp2", IFormatFile::FORMAT_3G2},    {"jpg", IFormatFile::FORMAT_IMAGE2},
    {"jpeg", IFormatFile::FORMAT_IMAGE2},  {"tif", IFormatFile::FORMAT_TIFF},
    {"tga", IFormatFile::FORMAT_TARGA},    {"jp2", IFormatFile::FORMAT_JPEG2000},
    {"j2k", IFormatFile::FORMAT_JPEG2000}, {"jls", IFormatFile::FORMAT_JPEGLS},
    {"subrip", IFormatFile::FORMAT_SRT},
};

constexpr Everyday kCodecs[] = {
    {"avc", IFormatCodecVideo::CODEC_ID_H264},         {"x264", IFormatCodecVideo::CODEC_ID_H264},
    {"h265", IFormatCodecVideo::CODEC_ID_H265},        {"x265", IFormatCodecVideo::CODEC_ID_H265},
    {"divx", IFormatCodecVideo::CODEC_ID_MPEG4},       {"xvid", IFormatCodecVideo::CODEC_ID_MPEG4},
    {"mpeg1", IFormatCodecVideo::CODEC_ID_MPEG1VIDEO}, {"mpeg2", IFormatCodecVideo::CODEC_ID_MPEG2VIDEO},
    {"jpg", IFormatCodecVideo::CODEC_ID_MJPEG},        {"jpeg", IFormatCodecVideo::CODEC_ID_MJPEG},
    {"dv", IFormatCodecVideo::CODEC_ID_DVVIDEO},       {"lame", IFormatCodecAudio::CODEC_ID_MP3},
    {"dca", IFormatCodecAudio::CODEC_ID_DTS},          {"pcm", IFormatCodecAudio::CODEC_ID_PCM_S16LE},
    {"wav", IFormatCodecAudio::CODEC_ID_PCM_S16LE},
};

/// Small letters, without the dots and dashes of "H.264" and "MPEG-2".
std::string Plain(const std::string& word) {
    std::string plain;
    for (const char c : word) {
        if (c != '.' && c != '-') plain += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return plain;
}

std::string Find(std::span<const Everyday> names, const std::string& word) {
    const std::string plain = Plain(word);
    const auto found = std::ranges::find(names, plain, &Everyday::word);
    return found != names.end() ? found->name : std::string();
}

std::vector<std::string> WordsFor(std::span<const Everyday> names, const std::string& name) {
    std::vector<std::string> words;
    for (const Everyday& everyday : names) {
        if (everyday.name == name) words.emplace_back(everyday.word);
    }
    return words;
}

}  // namespace

std::string ContainerOfEverydayName(const std::string& word) { return Find(kContainers, word); }

std::string CodecOfEverydayName(const std::string& word) {
    if (std::string codec = Find(kCodecs, word); !codec.empty()) return codec;
    const AVCodec* encoder = avcodec_find_encoder_by_name(word.c_str());
    return encoder != nullptr ? avcodec_get_name(encoder->id) : std::string();
}

std::vector<std::string> EverydayNamesOfContainer(const std::string& container) {
    return WordsFor(kContainers, container);
}

std::vector<std::string> EverydayNamesOfCodec(const std::string& codecId) { return WordsFor(kCodecs, codecId); }

}  // namespace Kestro::FFWrapper
