#pragma once

#include <string>

#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/Property.h"

/// What a preset may hold. A tree of known settings has the shape of the settings, and in each leaf some value of the
/// setting's type: its default or the first value that its constraint allows.
namespace Kestro::Planner {

/// The format node of a preset for that container.
Kestro::Core::Property KnownFormatSettings(const Kestro::Conf::IDataHelper& format);

/// One stream of a preset for that encoder: its type, codec node and the filters for its kind of stream.
Kestro::Core::Property KnownStreamSettings(const Conf::StreamRecord& kind, const Kestro::Conf::IDataHelper& encoder);

/// One stream of a preset without an encoder's settings: subtitles, or one that is copied.
Kestro::Core::Property KnownWithoutEncoder(const Conf::StreamRecord& kind);

/// Brings the settings to the types that the known ones have. Throws NotAcceptable with every setting that is not
/// known (UnknownSetting), naming the nearest one that is, and every value of another type (WrongType). `path` is where
/// the settings stand in the preset, for messages.
void CheckSettings(Kestro::Core::Property& settings, const Kestro::Core::Property& known, const std::string& path);

/// Sets one setting, given by its path below `settings`, to a text read as a value of the type that the known one has;
/// creates what is known but absent. Throws as CheckSettings.
void SetSetting(Kestro::Core::Property& settings, const Kestro::Core::Property& known, const std::string& path,
                const std::string& below, const std::string& value);

}  // namespace Kestro::Planner
