#include "Kestro/Conf/IFormatCodecVideo.h"

#include "Kestro/Conf/FormatCodecImpl.h"

namespace Kestro::Conf {
namespace {

class FormatCodecVideo final : public FormatCodecImpl<IFormatCodecVideo, StreamType::Video> {
public:
    using FormatCodecImpl::FormatCodecImpl;

    bool ExistsWidth() const override { return Node().Exists(TAG_WIDTH, PropertyTypes::Int64); }
    int64_t GetWidth() const override { return Node().Get(TAG_WIDTH, PropertyTypes::Int64).GetInt64(); }
    bool ExistsHeight() const override { return Node().Exists(TAG_HEIGHT, PropertyTypes::Int64); }
    int64_t GetHeight() const override { return Node().Get(TAG_HEIGHT, PropertyTypes::Int64).GetInt64(); }
    bool ExistsFps() const override { return Node().Exists(TAG_FPS, PropertyTypes::Ratio); }
    boost::rational<int64_t> GetFps() const override { return Node().Get(TAG_FPS, PropertyTypes::Ratio).GetRatio(); }
    bool ExistsPixelFormat() const override { return Node().Exists(TAG_PIXEL_FORMAT, PropertyTypes::String); }
    const std::string& GetPixelFormat() const override {
        return Node().Get(TAG_PIXEL_FORMAT, PropertyTypes::String).GetString();
    }
};

}  // namespace

IFormatCodecVideo::~IFormatCodecVideo() = default;

boost::intrusive_ptr<const IFormatCodecVideo> IFormatCodecVideo::Create(const Core::Property& codec) {
    return new FormatCodecVideo(codec);
}

}  // namespace Kestro::Conf
