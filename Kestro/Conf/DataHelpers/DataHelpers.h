#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <map>
#include <string>

#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Export.h"

/// The registry: one shared helper for every container, encoder and filter, built when the library is loaded.
/// Its functions may be called from any thread; they allocate nothing.

/// Helpers by name.
using DataHelperTable = std::map<std::string, const boost::intrusive_ptr<const Kestro::Conf::IDataHelper>>;

/// All helpers of one type: IPreset::KEY_FORMAT (containers, by IFormatFile::FORMAT_ name), KEY_FILTER_AUDIO_CODEC or
/// KEY_FILTER_VIDEO_CODEC (encoders, by CODEC_ID_). The table lives as long as the library.
/// Throws HelperException with TagClassIsNotFound for any other type.
KESTRO_DATAHELPERS_API const DataHelperTable& GetAvailableDataHelpers(const std::string& type);

/// The helper of that type and name. Beside the types above: IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO and
/// IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO are other names of the two encoder types, and the class id of a filter is
/// a type of which there is one helper, whatever the name. Throws HelperException with TagClassIsNotFound for an
/// unknown type; with TagClassIsFound and TagTypeIsNotFound for a name that its table does not hold.
KESTRO_DATAHELPERS_API const boost::intrusive_ptr<const Kestro::Conf::IDataHelper> CreateDataHelper(
    const std::string& type, const std::string& name);
