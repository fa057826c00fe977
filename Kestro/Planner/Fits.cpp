#include "Kestro/Planner/Fits.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <memory>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/UntilUnload.h"

namespace Kestro::Planner {
namespace {

using FFWrapper::IsImageMuxer;
using FFWrapper::MuxerExists;
using FFWrapper::MuxerName;
using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecSubtitle;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IFormatFile;
using Kestro::Core::Property;

struct FreeOutput {
    void operator()(AVFormatContext* context) const {
        uint8_t* written = nullptr;
        if (context->pb != nullptr) avio_close_dyn_buf(context->pb, &written);
        av_free(written);
        avformat_free_context(context);
    }
};

/// Whether the muxer refuses a plain stream of the codec from the start.
bool RefusesHeader(const std::string& muxer, AVCodecID id) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(id);
    AVFormatContext* made = nullptr;
    if (avformat_alloc_output_context2(&made, nullptr, muxer.c_str(), nullptr) < 0) return true;
    const std::unique_ptr<AVFormatContext, FreeOutput> context(made);
    if (avio_open_dyn_buf(&context->pb) < 0) return true;
    AVStream* stream = avformat_new_stream(context.get(), nullptr);
    if (stream == nullptr || descriptor == nullptr) return true;
    AVCodecParameters& parameters = *stream->codecpar;
    parameters.codec_type = descriptor->type;
    parameters.codec_id = id;
    if (descriptor->type == AVMEDIA_TYPE_AUDIO) {
        parameters.sample_rate = 48'000;
        av_channel_layout_default(&parameters.ch_layout, 2);
    } else {
        parameters.width = 352;
        parameters.height = 288;
    }
    stream->time_base = {1, 25};
    stream->avg_frame_rate = {25, 1};
    return avformat_write_header(context.get(), nullptr) < 0;
}

const std::vector<std::string>& KnownCodecs() {
    static const auto& codecs = Kestro::UntilUnload([] {
        std::vector<std::string> ids;
        for (const std::string& id : Kestro::Conf::VideoCodecIds()) ids.push_back(id);
        for (const std::string& id : Kestro::Conf::AudioCodecIds()) ids.push_back(id);
        for (const std::string& id : Kestro::Conf::SubtitleCodecIds()) ids.push_back(id);
        return ids;
    }());
    return codecs;
}

void CheckName(const std::string& name, const std::vector<std::string>& known, const char* what) {
    if (std::ranges::find(known, name) != known.end()) return;
    throw NotAcceptable(
        {.code = ProblemCode::UnknownName,
         .message = std::string("There is no ") + what + " \"" + Printable(name) + "\"." + DidYouMean(name, known),
         .value = name,
         .allowed = known});
}

Fit FindFit(const std::string& codec, const std::string& container) {
    Fit fit{.codec = codec, .container = container, .muxer = MuxerName(container)};
    if (!MuxerExists(fit.muxer)) {
        fit.muxer.clear();
        fit.reason = "the installed FFmpeg has no muxer for it";
        return fit;
    }
    fit.ownMuxer = fit.muxer == container;
    if (IsImageMuxer(fit.muxer) && Kestro::Conf::IsVideoCodec(container) && codec != container) {
        fit.reason = "its files are of " + container + " alone";
        return fit;
    }
    Property node;
    node.SetChild(IFormatCodec::TAG_CODEC_ID, codec);
    fit.fits = MuxerTakes(fit.muxer, node);
    if (fit.fits) return fit;
    const AVCodecID id = Kestro::FFWrapper::CodecIDFromTextID(codec);
    fit.reason = RefusesHeader(fit.muxer, id) ? "refused by the muxer" : "it would not read back as " + codec;
    return fit;
}

}  // namespace

bool MuxerTakes(const std::string& muxer, const Property& codec) {
    Property format;
    format.SetChild(IFormatFile::TAG_CONTAINER, muxer);
    Property described = codec;
    if (!described.ChildExists(IFormatCodec::TAG_CODEC_TAG)) described.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    const std::string& id = described[IFormatCodec::TAG_CODEC_ID].GetString();
    boost::intrusive_ptr<const IFormatCodec> description = IFormatCodecSubtitle::Create(described);
    if (Kestro::Conf::IsVideoCodec(id)) description = IFormatCodecVideo::Create(described);
    if (Kestro::Conf::IsAudioCodec(id)) description = IFormatCodecAudio::Create(described);
    return Kestro::Conf::CodecIsSupported(IFormatFile::Create(format), description);
}

std::vector<std::string> OfferedCodecs(const std::string& container, Conf::StreamType type) {
    Conf::ConstraintMap constraints;
    FindHelper(kFormats, container)->FillConstraints(constraints);
    std::vector<std::string> codecs;
    const auto found = constraints.find(Conf::StreamRecord::Find(type).CodecIdPath());
    if (found == constraints.end()) return codecs;
    for (const Domain::Entry& entry : DescribeDomain(*found->second).entries) {
        codecs.push_back(Core::PropertyValueToString(entry.value));
    }
    return codecs;
}

std::vector<Fit> FindFits(const std::string& codec, const std::string& container) {
    const std::vector<std::string> containers = HelperNames(kFormats);
    const bool isFfmpegs = Kestro::FFWrapper::CodecIDFromTextID(codec) != AV_CODEC_ID_NONE;
    if (!codec.empty() && !isFfmpegs) CheckName(codec, KnownCodecs(), "codec");
    if (!container.empty()) CheckName(container, containers, "container");
    std::vector<Fit> fits;
    for (const std::string& name : container.empty() ? containers : std::vector{container}) {
        std::vector<std::string> offered;
        for (const Conf::StreamRecord& kind : Conf::StreamRecord::All()) {
            const std::vector<std::string> ofKind = OfferedCodecs(name, kind.type);
            offered.insert(offered.end(), ofKind.begin(), ofKind.end());
        }
        for (const std::string& id : codec.empty() ? KnownCodecs() : std::vector{codec}) {
            Fit& fit = fits.emplace_back(FindFit(id, name));
            fit.isOffered = std::ranges::find(offered, id) != offered.end();
        }
    }
    return fits;
}

}  // namespace Kestro::Planner
