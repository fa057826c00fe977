#pragma once

#include <cstdint>
#include <string>

#include "Kestro/Conf/DescribedNode.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// The part of a codec description that every stream type has. `Interface` derives from IFormatCodec.
template <class Interface, StreamType kStreamType>
class FormatCodecImpl : public RefCounted<Interface> {
public:
    explicit FormatCodecImpl(const Core::Property& codec) : node_(codec) {}

    StreamType GetStreamType() const final { return kStreamType; }

    bool ExistsCodecID() const final { return node_.Exists(Interface::TAG_CODEC_ID, PropertyTypes::String); }
    const std::string& GetCodecID() const final {
        return node_.Get(Interface::TAG_CODEC_ID, PropertyTypes::String).GetString();
    }
    bool ExistsBitrate() const final { return node_.Exists(Interface::TAG_BITRATE, PropertyTypes::Int64); }
    int64_t GetBitrate() const final { return node_.Get(Interface::TAG_BITRATE, PropertyTypes::Int64).GetInt64(); }
    bool ExistsCodecTag() const final { return node_.Exists(Interface::TAG_CODEC_TAG, PropertyTypes::Int64); }
    int64_t GetCodecTag() const final { return node_.Get(Interface::TAG_CODEC_TAG, PropertyTypes::Int64).GetInt64(); }
    bool ExistsLossless() const final { return node_.Exists(Interface::TAG_LOSSLESS, PropertyTypes::Bool); }
    bool GetLossless() const final { return node_.Get(Interface::TAG_LOSSLESS, PropertyTypes::Bool).GetBool(); }
    bool GetMainStream() const final {
        return node_.Exists(Interface::TAG_MAIN_STREAM, PropertyTypes::Bool) &&
               node_.Get(Interface::TAG_MAIN_STREAM, PropertyTypes::Bool).GetBool();
    }

protected:
    const DescribedNode& Node() const { return node_; }

private:
    const DescribedNode node_;
};

}  // namespace Kestro::Conf
