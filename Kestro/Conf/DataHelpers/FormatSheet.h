#pragma once

#include <cstdint>
#include <span>

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/StreamType.h"

namespace Kestro::Conf {

/// The most streams of each kind that a container takes.
struct StreamLimits {
    int64_t video;
    int64_t audio;
    int64_t subtitle;
    int64_t other;
};

/// A kind of stream that the container carries: its codecs in the order in which they are offered.
struct StreamRow {
    StreamType type;
    std::span<const Text> codecs;
    Text defaultCodec;
    bool isCover = false;  ///< a video stream that is the cover picture of an audio file
};

/// "Where the stream's codec is one of `codecs`, the setting must be `allowed`." No codecs: all that the container
/// takes.
struct FormatRuleRow {
    StreamType type;
    std::span<const Text> codecs = {};
    Text tag;
    Node node;
    Allowed allowed;
};

/// All that is known of one container.
struct FormatSheet {
    Text container;
    /// In the order of the default settings, after the container's name.
    std::span<const SettingRow> settings;
    StreamLimits limits;
    /// In the order of the default streams.
    std::span<const StreamRow> streams;
    std::span<const FormatRuleRow> rules = {};
};

constexpr bool IsSound(const FormatSheet& sheet) {
    const auto carries = [&sheet](StreamType type) {
        for (const StreamRow& stream : sheet.streams) {
            if (stream.type == type) return true;
        }
        return false;
    };
    for (size_t i = 0; i < sheet.streams.size(); ++i) {
        const StreamRow& stream = sheet.streams[i];
        if (!Sound::IsOffered(stream.codecs, stream.defaultCodec)) return false;
        for (const StreamRow& earlier : sheet.streams.first(i)) {
            if (earlier.type == stream.type) return false;
        }
    }
    for (const FormatRuleRow& rule : sheet.rules) {
        if (!carries(rule.type) || !Sound::IsSound({}, rule.allowed)) return false;
    }
    const StreamLimits& limits = sheet.limits;
    const bool limitsHold = limits.video >= carries(StreamType::Video) && limits.audio >= carries(StreamType::Audio) &&
                            limits.subtitle >= 0 && limits.other >= 0;
    return limitsHold && Sound::IsSound(sheet.settings);
}

}  // namespace Kestro::Conf
