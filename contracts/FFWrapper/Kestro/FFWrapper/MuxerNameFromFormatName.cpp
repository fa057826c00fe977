#include "Kestro/FFWrapper/MuxerNameFromFormatName.h"

#include "Kestro/Conf/IFormatFile.h"

namespace Kestro::FFWrapper {
namespace {

using Conf::IFormatFile;

struct OtherName {
    const std::string& format;
    const std::string& muxer;
};

constexpr OtherName kOtherNames[] = {
    {IFormatFile::FORMAT_MPEG2TS, IFormatFile::FORMAT_MPEGTS},
    {IFormatFile::FORMAT_MPEG1VIDEO, IFormatFile::FORMAT_MPEG},
    {IFormatFile::FORMAT_MPEG2VIDEO, IFormatFile::FORMAT_VOB},
    {IFormatFile::FORMAT_WMV, IFormatFile::FORMAT_ASF},
    {IFormatFile::FORMAT_WMA, IFormatFile::FORMAT_ASF},
    {IFormatFile::FORMAT_M4A, IFormatFile::FORMAT_IPOD},
    {IFormatFile::FORMAT_M4V, IFormatFile::FORMAT_IPOD},
};

}  // namespace

const std::string& MuxerNameFromFormatName(const std::string& formatName) {
    for (const OtherName& name : kOtherNames) {
        if (name.format == formatName) return name.muxer;
    }
    return formatName;
}

}  // namespace Kestro::FFWrapper
