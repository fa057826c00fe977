#pragma once

#include <cstdint>
#include <span>

#include "Kestro/Conf/DataHelpers/List.h"
#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/DataHelpers/SheetChecks.h"
#include "Kestro/Conf/StreamType.h"

namespace Kestro::Conf {

using Codecs = List<Text, 9>;

/// The most streams of each kind that a container takes.
struct StreamLimits {
    int64_t video = 0;
    int64_t audio = 0;
    int64_t subtitle = 0;
    int64_t other = 0;
};

/// A kind of stream that the container carries: its codecs in the order in which they are offered.
struct StreamRow {
    StreamType type;
    Codecs codecs;
    Text defaultCodec;
    bool isCover = false;  ///< a video stream that is the cover picture of an audio file
};

/// "Where the stream's codec is one of `codecs`, the setting must be `allowed`." No codecs: all that the container
/// takes.
struct FormatRuleRow {
    StreamType type;
    Codecs codecs = {};
    Text tag;
    Node node = Node::Own;
    Allowed allowed;
};

/// All that is known of one container. The settings stand in the order of the default settings, after the container's
/// name.
struct FormatSheet {
    Text container;
    List<SettingRow, 1> settingsBeforeHeader = {};
    bool globalHeader = false;  ///< the encoders' extradata stands in the container's header
    List<SettingRow, 4> settings = {};
    StreamLimits limits;
    List<StreamRow, 3> streams;  ///< in the order of the default streams
    List<FormatRuleRow, 5> rules = {};
};

constexpr bool IsConsistent(const FormatSheet& sheet) {
    const std::span<const StreamRow> streams = sheet.streams;
    const auto carries = [streams](StreamType type) {
        for (const StreamRow& stream : streams) {
            if (stream.type == type) return true;
        }
        return false;
    };
    for (size_t i = 0; i < streams.size(); ++i) {
        if (!Sheets::IsOffered<Text>(streams[i].codecs, streams[i].defaultCodec)) return false;
        for (const StreamRow& earlier : streams.first(i)) {
            if (earlier.type == streams[i].type) return false;
        }
    }
    for (const FormatRuleRow& rule : sheet.rules) {
        if (!carries(rule.type) || !Sheets::IsUnique<Text>(rule.codecs) || !Sheets::IsConsistent(rule.allowed)) {
            return false;
        }
    }
    const StreamLimits& limits = sheet.limits;
    const bool limitsHold = limits.video >= carries(StreamType::Video) && limits.audio >= carries(StreamType::Audio) &&
                            limits.subtitle >= 0 && limits.other >= 0;
    return limitsHold && Sheets::IsConsistent(sheet.settingsBeforeHeader, sheet.settings);
}

}  // namespace Kestro::Conf
