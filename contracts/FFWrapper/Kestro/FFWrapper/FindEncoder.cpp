#include "Kestro/FFWrapper/FindEncoder.h"

#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/EncoderRecord.h"

namespace Kestro::FFWrapper {

const AVCodec* FindEncoder(const std::string& codecId) {
    for (const EncoderRecord& record : EncoderRecord::All()) {
        if (record.codecId != codecId) continue;
        if (const AVCodec* encoder = avcodec_find_encoder_by_name(record.name)) return encoder;
    }
    return avcodec_find_encoder(CodecIDFromTextID(codecId));
}

}  // namespace Kestro::FFWrapper
