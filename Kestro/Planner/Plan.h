#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/MediaInfo.h"

namespace Kestro::Planner {

/// A setting that the preset left open, or that its other settings decide.
struct Choice {
    std::string path;
    std::string value;
    std::string reason;

    bool operator==(const Choice&) const = default;
};

/// A value that was not accepted, and what took its place.
struct Correction {
    std::string path;
    std::optional<Kestro::Core::Property> before;  ///< none: the setting was absent
    std::optional<Kestro::Core::Property> after;   ///< none: the setting is gone
    std::string reason;

    bool operator==(const Correction&) const = default;
};

/// How settings came about: of one stream, or of a whole conversion.
struct Account {
    std::vector<Choice> choices;
    std::vector<Correction> corrections;
    std::vector<std::string> notes;

    /// Adds what is not there yet: tracks that are made alike have much to tell in common.
    void Add(const Account& other);
};

/// What becomes of the pixels of a video stream that is encoded.
struct Pixels {
    std::string format;           ///< FFmpeg's; empty: the nearest to the source's that the encoder takes
    int64_t bitDepth = 0;         ///< of a colour's sample
    bool isToneMapped = false;    ///< high dynamic range becomes BT.709
    bool isDeinterlaced = false;  ///< fields become frames
    bool isInterlaced = false;    ///< fields stay
};

/// One stream of the output.
struct PlannedStream {
    const Conf::StreamRecord* kind;
    MediaStream source;
    std::string path;  ///< of its settings in the preset: "Streams/TypeId=audio"
    std::string codecId;
    bool isCopied;        ///< the source's packets go into the output as they are
    std::string encoder;  ///< FFmpeg's name; empty when the stream is copied, or the installed FFmpeg has none
    bool globalHeader;    ///< the encoder writes its extradata into the container's header
    bool isSupported;     ///< the container's muxer stores the codec
    Pixels pixels = {};
};

/// What a conversion will do: the settings that it uses and how they came about.
struct KESTRO_PLANNER_API Plan : Account {
    MediaInfo input;
    std::string container;
    std::string muxer;  ///< FFmpeg's, of that container
    bool globalHeader;  ///< the container has a header for the encoders' extradata
    /// { Format, Streams { 0 … } }: a child of Streams for each of `streams`, in that order.
    Kestro::Core::Property settings;
    std::vector<PlannedStream> streams;
    std::vector<int> attachments;           ///< the input's streams that are files, such as fonts, and are kept
    std::optional<int64_t> sizeLimit = {};  ///< bytes that the output must not exceed

    const Kestro::Core::Property& FormatSettings() const;
    /// The codec node of a stream: the values that the output has.
    const Kestro::Core::Property& CodecSettings(std::size_t stream) const;
    const Kestro::Core::Property& StreamSettings(std::size_t stream) const;
    /// Whether the output is one picture, and could be a folder of many.
    bool IsPicture() const;
};

}  // namespace Kestro::Planner
