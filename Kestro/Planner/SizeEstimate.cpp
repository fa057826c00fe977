#include "Kestro/Planner/SizeEstimate.h"

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/MuxerOverhead.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Preset.h"
#include "Kestro/Planner/SizeLimit.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {

using Conf::IFormatCodec;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::StreamType;
using Core::Property;

std::optional<int64_t> ReadSizeLimit(const Property& preset) {
    if (!preset.ChildExists(Preset::KEY_SIZE)) return std::nullopt;
    const Property& size = preset[Preset::KEY_SIZE];
    const std::string text = IsNode(size) ? std::string() : Core::PropertyValueToString(size);
    if (const auto bytes = ParseSize(text)) return bytes;
    throw NotAcceptable({.code = ProblemCode::WrongType,
                         .message = "\"" + Printable(text) + "\" is no size.",
                         .path = Preset::KEY_SIZE,
                         .value = text,
                         .allowed = {"25000000", "25M", "800k", "1.5G"}});
}

bool IsFilm(const PlannedStream& stream) { return stream.kind->type == StreamType::Video && !stream.source.isCover; }

double BitrateOf(const Property& codec) {
    return static_cast<double>(Integer(codec, IFormatCodec::TAG_BITRATE).value_or(0));
}

double OtherBytes(const Plan& plan) {
    // Of most sound encoders.
    constexpr double kSamplesInPacket = 1024;
    double packets = 0;
    double sound = 0;
    double pictures = 0;
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        const Property& codec = plan.CodecSettings(i);
        if (IsFilm(plan.streams[i])) {
            packets +=
                *plan.input.duration * boost::rational_cast<double>(codec[IFormatCodecVideo::TAG_FPS].GetRatio());
        } else if (plan.streams[i].kind->type == StreamType::Audio) {
            packets += *plan.input.duration *
                       static_cast<double>(codec[IFormatCodecAudio::TAG_SAMPLE_RATE].GetInt64()) / kSamplesInPacket;
            sound += *plan.input.duration * BitrateOf(codec) / kBitsPerByte;
        } else if (plan.streams[i].kind->type == StreamType::Video) {
            // A cover takes about two bits a pixel.
            pictures += static_cast<double>(codec[IFormatCodecVideo::TAG_WIDTH].GetInt64() *
                                            codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64()) /
                        4;
        }
    }
    const auto overhead = FFWrapper::MuxerOverhead::Of(plan.muxer);
    return static_cast<double>(overhead.perFile) + static_cast<double>(overhead.perPacket) * packets + sound + pictures;
}

}  // namespace Kestro::Planner
