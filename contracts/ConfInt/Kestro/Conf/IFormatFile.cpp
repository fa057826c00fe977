#include "Kestro/Conf/IFormatFile.h"

#include "Kestro/Conf/DescribedNode.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {
namespace {

class FormatFile final : public RefCounted<IFormatFile> {
public:
    explicit FormatFile(const Core::Property& format) : node_(format) {}

    bool ExistsFormatName() const override { return node_.Exists(TAG_CONTAINER, PropertyTypes::String); }
    const std::string& GetFormatName() const override {
        return node_.Get(TAG_CONTAINER, PropertyTypes::String).GetString();
    }

private:
    const DescribedNode node_;
};

}  // namespace

IFormatFile::~IFormatFile() = default;

boost::intrusive_ptr<const IFormatFile> IFormatFile::Create(const Core::Property& format) {
    return new FormatFile(format);
}

}  // namespace Kestro::Conf
