#pragma once

#include <span>

#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/StreamType.h"

namespace Kestro::Conf {

/// "Where the encoder's own setting `when` is one of `is`, the setting must be `allowed`": what an encoder takes in
/// some of its modes only.
struct CodecRuleRow {
    Text when;
    Allowed is;
    Text tag;
    Node node;
    Allowed allowed;
};

/// All that is known of one encoder. An empty list: the encoder does not mind, and there is no rule.
struct CodecSheet {
    Text codecId;
    StreamType stream;
    /// In the order of the default settings, after the codec id. The node of the encoder's options stands where its
    /// first setting does; when it has none, it stands empty before the global-header flag.
    std::span<const SettingRow> settings;
    std::span<const int64_t> sampleRates = {};  ///< Hz, what the resampler may give the encoder
    std::span<const Text> layouts = {};
    std::span<const SampleFormats> sampleFormats = {};
    std::span<const FrameRate> frameRates = {};  ///< what the frame-rate filter may give the encoder
    std::span<const CodecRuleRow> rules = {};    ///< rules beyond those that the lists above make
};

constexpr bool IsSound(const CodecSheet& sheet) {
    for (const int64_t rate : sheet.sampleRates) {
        if (rate <= 0) return false;
    }
    for (const CodecRuleRow& rule : sheet.rules) {
        if (!Sound::IsSound({}, rule.is) || !Sound::IsSound({}, rule.allowed)) return false;
    }
    return Sound::IsSound(sheet.settings) && Sound::IsUnique(sheet.sampleRates) && Sound::IsUnique(sheet.layouts) &&
           Sound::IsUnique(sheet.sampleFormats) && Sound::IsUnique(sheet.frameRates);
}

}  // namespace Kestro::Conf
