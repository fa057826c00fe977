#include "Muxer.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <iterator>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

namespace App {
namespace {

using Kestro::Conf::IFormatFile;

constexpr const char* kImageMuxer = "image2";
constexpr const char* kPspMuxer = "psp";

struct OtherName {
    const std::string& container;
    const char* muxer;
};

/// Names under which FFmpeg has no muxer, and what writes such files.
const OtherName kOtherNames[] = {
    {IFormatFile::FORMAT_M4B, "ipod"},     {IFormatFile::FORMAT_M4R, "ipod"}, {IFormatFile::FORMAT_F4A, "ipod"},
    {IFormatFile::FORMAT_MKA, "matroska"}, {IFormatFile::FORMAT_SSA, "ass"},
};

}  // namespace

std::string MuxerName(const std::string& container) {
    const auto other = std::ranges::find_if(kOtherNames, [&](const auto& row) { return row.container == container; });
    if (other != std::end(kOtherNames)) return other->muxer;
    // Single pictures are named as their codec, and most have no muxer of their own.
    if (!MuxerExists(container) && Kestro::Conf::IsVideoCodec(container)) return kImageMuxer;
    return Kestro::FFWrapper::MuxerNameFromFormatName(container);
}

std::string MuxerName(const Kestro::Core::Property& format) {
    const Kestro::Core::Property* psp = format.FindByPath(IFormatFile::TAG_PSP_MODE);
    return psp != nullptr && psp->GetBool() ? kPspMuxer : MuxerName(format[IFormatFile::TAG_CONTAINER].GetString());
}

bool MuxerExists(const std::string& muxer) { return av_guess_format(muxer.c_str(), nullptr, nullptr) != nullptr; }

bool HasMovableIndex(const std::string& muxer) {
    static constexpr const char* kMuxers[] = {"mp4", "mov", "ipod", kPspMuxer, "3gp", "3g2"};
    return std::ranges::any_of(kMuxers, [&muxer](const char* name) { return muxer == name; });
}

bool IsImageMuxer(const std::string& muxer) { return muxer == kImageMuxer; }

}  // namespace App
