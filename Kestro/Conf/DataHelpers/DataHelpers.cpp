#include "Kestro/Conf/DataHelpers/DataHelpers.h"

#include "Kestro/Conf/DataHelpers/HelperTables.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/DataHelpers";

/// Other names of types.
const std::map<std::string, std::string> kAliases{
    {IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO, IPreset::KEY_FILTER_AUDIO_CODEC},
    {IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO, IPreset::KEY_FILTER_VIDEO_CODEC},
};

/// Null for a type that has no table.
const DataHelperTable* FindTable(const std::string& type) {
    if (type == IPreset::KEY_FORMAT) return &kFormats;
    if (type == IPreset::KEY_FILTER_AUDIO_CODEC) return &kAudioCodecs;
    if (type == IPreset::KEY_FILTER_VIDEO_CODEC) return &kVideoCodecs;
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
    const auto alias = Kestro::Conf::kAliases.find(type);
    if (alias != Kestro::Conf::kAliases.end()) return CreateDataHelper(alias->second, name);
    const auto filter = Kestro::Conf::kFilters.find(type);
    if (filter != Kestro::Conf::kFilters.end()) return filter->second;
    Kestro::Conf::ThrowUnknownType(type, boost::source_location(Kestro::Conf::kSource, 294, BOOST_CURRENT_FUNCTION));
}
