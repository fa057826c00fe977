#pragma once

#include <span>

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/StreamType.h"

namespace Kestro::Conf {

/// "Where the setting `when` is one of `is`, the setting `tag` must be `allowed`": what an encoder takes in some of its
/// modes only.
struct CodecRuleRow {
    Text when;
    Node whenNode = Node::Own;
    Allowed is;
    Text tag;
    Node node;
    Allowed allowed;
};

/// All that is known of one encoder. Where nothing is said of what its filters may give it, it does not mind, and there
/// is no rule.
struct CodecSheet {
    Text codecId;
    StreamType stream;
    /// In the order of the default settings, after the codec id. The node of the encoder's options stands where its
    /// first setting does; when it has none, it stands empty before the global-header flag.
    std::span<const SettingRow> settings;
    Allowed sampleRates = {};  ///< Hz, what the resampler may give the encoder
    Allowed layouts = {};
    Allowed sampleFormats = {};
    Allowed widths = {};  ///< pixels, what the resizer may give the encoder
    Allowed heights = {};
    Allowed frameSizes = {};
    Allowed frameRates = {};                   ///< what the frame-rate filter may give; a list is a constraint too
    std::span<const CodecRuleRow> rules = {};  ///< rules beyond those that the above make
    bool bitrateIsOptional = false;            ///< of sound: a preset may leave out the bitrate and the quality
};

constexpr bool IsSound(const CodecSheet& sheet) {
    for (const CodecRuleRow& rule : sheet.rules) {
        if (!Sound::IsSound({}, rule.is) || !Sound::IsSound({}, rule.allowed)) return false;
    }
    return Sound::IsSound(sheet.settings) && Sound::IsSound({}, sheet.sampleRates) &&
           Sound::IsSound({}, sheet.layouts) && Sound::IsSound({}, sheet.sampleFormats) &&
           Sound::IsSound({}, sheet.widths) && Sound::IsSound({}, sheet.heights) &&
           Sound::IsSound({}, sheet.frameSizes) && Sound::IsSound({}, sheet.frameRates);
}

}  // namespace Kestro::Conf
