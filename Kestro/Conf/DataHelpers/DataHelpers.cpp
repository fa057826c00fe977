#include "Kestro/Conf/DataHelpers/DataHelpers.h"

#include "Kestro/Conf/DataHelpers/HelperTables.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/DataHelpers";

/// What a type is called otherwise; null where it has no other name.
const std::string* FindAlias(const std::string& type) {
    if (type == IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO) return &IPreset::KEY_FILTER_AUDIO_CODEC;
    if (type == IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO) return &IPreset::KEY_FILTER_VIDEO_CODEC;
    return nullptr;
}

/// Null for a type that has no table.
const DataHelperTable* FindTable(const std::string& type) {
    if (type == IPreset::KEY_FORMAT) return &Formats();
    if (type == IPreset::KEY_FILTER_AUDIO_CODEC) return &AudioCodecs();
    if (type == IPreset::KEY_FILTER_VIDEO_CODEC) return &VideoCodecs();
    return nullptr;
}

[[noreturn]] void ThrowUnknownType(const std::string& type, const boost::source_location& where) {
    HelperException exception;
    exception << TagDescription("There is no type of helpers named \"" + type + "\"")
              << HelperException::TagClassIsNotFound(type);
    Throw(exception, where);
}

}  // namespace

}  // namespace Kestro::Conf

using Kestro::Conf::HelperException;
using Kestro::Conf::IDataHelper;

const DataHelperTable& GetAvailableDataHelpers(const std::string& type) {
    if (const DataHelperTable* table = Kestro::Conf::FindTable(type)) return *table;
    Kestro::Conf::ThrowUnknownType(type, boost::source_location(Kestro::Conf::kSource, 256, BOOST_CURRENT_FUNCTION));
}

const boost::intrusive_ptr<const IDataHelper> CreateDataHelper(const std::string& type, const std::string& name) {
    if (const DataHelperTable* table = Kestro::Conf::FindTable(type)) {
        const auto found = table->find(name);
        if (found != table->end()) return found->second;
        HelperException exception;
        exception << Kestro::TagDescription("There is no helper of type \"" + type + "\" named \"" + name + "\"")
                  << HelperException::TagClassIsFound(type) << HelperException::TagTypeIsNotFound(name);
        Kestro::Throw(exception, boost::source_location(Kestro::Conf::kSource, 297, BOOST_CURRENT_FUNCTION));
    }
    if (const std::string* alias = Kestro::Conf::FindAlias(type)) return CreateDataHelper(*alias, name);
    const DataHelperTable& filters = Kestro::Conf::Filters();
    const auto filter = filters.find(type);
    if (filter != filters.end()) return filter->second;
    Kestro::Conf::ThrowUnknownType(type, boost::source_location(Kestro::Conf::kSource, 294, BOOST_CURRENT_FUNCTION));
}
