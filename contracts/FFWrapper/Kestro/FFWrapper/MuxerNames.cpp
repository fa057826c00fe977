#include "Kestro/FFWrapper/MuxerNames.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/avstring.h>
}

#include <algorithm>
#include <iterator>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

namespace Kestro::FFWrapper {
namespace {

using Conf::IFormatCodecVideo;
using Conf::IFormatFile;

constexpr const char* kImageMuxer = "image2";
constexpr const char* kPspMuxer = "psp";

struct OtherName {
    const std::string& format;
    const std::string& muxer;
};

// What callers of MuxerNameFromFormatName rely on: these seven, and every other name as it is.
constexpr OtherName kPrescribedNames[] = {
    {IFormatFile::FORMAT_MPEG2TS, IFormatFile::FORMAT_MPEGTS},
    {IFormatFile::FORMAT_MPEG1VIDEO, IFormatFile::FORMAT_MPEG},
    {IFormatFile::FORMAT_MPEG2VIDEO, IFormatFile::FORMAT_VOB},
    {IFormatFile::FORMAT_WMV, IFormatFile::FORMAT_ASF},
    {IFormatFile::FORMAT_WMA, IFormatFile::FORMAT_ASF},
    {IFormatFile::FORMAT_M4A, IFormatFile::FORMAT_IPOD},
    {IFormatFile::FORMAT_M4V, IFormatFile::FORMAT_IPOD},
};

// Endings of files under which FFmpeg has no muxer, and what writes such files; only MuxerName knows them.
constexpr OtherName kFurtherNames[] = {
    {IFormatFile::FORMAT_M4B, IFormatFile::FORMAT_IPOD}, {IFormatFile::FORMAT_M4R, IFormatFile::FORMAT_IPOD},
    {IFormatFile::FORMAT_F4A, IFormatFile::FORMAT_IPOD}, {IFormatFile::FORMAT_MKA, IFormatFile::FORMAT_MATROSKA},
    {IFormatFile::FORMAT_SSA, IFormatFile::FORMAT_ASS},
};

const std::string* Find(std::span<const OtherName> names, const std::string& format) {
    const auto found = std::ranges::find_if(names, [&](const OtherName& name) { return name.format == format; });
    return found != names.end() ? &found->muxer : nullptr;
}

/// How the files of a picture codec end, where that is not its name.
struct Extension {
    const std::string& codecId;
    const char* extension;
};
constexpr Extension kExtensions[] = {
    {IFormatCodecVideo::CODEC_ID_MJPEG, "jpg"},  {IFormatCodecVideo::CODEC_ID_JPEG2000, "jp2"},
    {IFormatCodecVideo::CODEC_ID_JPEGLS, "jls"}, {IFormatCodecVideo::CODEC_ID_TARGA, "tga"},
    {IFormatCodecVideo::CODEC_ID_TIFF, "tif"},
};

}  // namespace

const std::string& MuxerNameFromFormatName(const std::string& formatName) {
    const std::string* other = Find(kPrescribedNames, formatName);
    return other != nullptr ? *other : formatName;
}

std::string MuxerName(const std::string& container) {
    if (const std::string* other = Find(kFurtherNames, container)) return *other;
    // Single pictures are named as their codec, and most have no muxer of their own.
    if (!MuxerExists(container) && Conf::IsVideoCodec(container)) return kImageMuxer;
    return MuxerNameFromFormatName(container);
}

std::string MuxerName(const Core::Property& format) {
    std::string muxer = MuxerName(format[IFormatFile::TAG_CONTAINER].GetString());
    const Core::Property* psp = format.FindByPath(IFormatFile::TAG_PSP_MODE);
    // The console plays MP4; other containers that have the flag stay what they are.
    const bool isMp4 = muxer == IFormatFile::FORMAT_MP4 || muxer == IFormatFile::FORMAT_IPOD;
    return isMp4 && psp != nullptr && psp->GetBool() ? kPspMuxer : muxer;
}

bool MuxerExists(const std::string& muxer) { return av_guess_format(muxer.c_str(), nullptr, nullptr) != nullptr; }

bool IsImageMuxer(const std::string& muxer) { return muxer == kImageMuxer; }

std::string PictureExtension(const std::string& codecId) {
    const auto* row =
        std::ranges::find_if(kExtensions, [&](const Extension& entry) { return entry.codecId == codecId; });
    return row != std::end(kExtensions) ? row->extension : codecId;
}

std::string CoverMediaType(const std::string& codecId) {
    if (codecId == IFormatCodecVideo::CODEC_ID_MJPEG) return "image/jpeg";
    return codecId == IFormatCodecVideo::CODEC_ID_PNG ? "image/png" : std::string();
}

std::string FileExtension(const std::string& container) {
    const std::string muxer = MuxerName(container);
    if (IsImageMuxer(muxer)) {
        return PictureExtension(container == kImageMuxer ? IFormatCodecVideo::CODEC_ID_MJPEG : container);
    }
    if (Find(kFurtherNames, container) != nullptr) return container;
    const AVOutputFormat* format = av_guess_format(muxer.c_str(), nullptr, nullptr);
    const std::string extensions = format != nullptr && format->extensions != nullptr ? format->extensions : "";
    // Of several containers that one muxer writes, each has its own.
    const bool isOwn = muxer != container && av_match_name(container.c_str(), extensions.c_str()) != 0;
    return isOwn || extensions.empty() ? container : extensions.substr(0, extensions.find(','));
}

}  // namespace Kestro::FFWrapper
