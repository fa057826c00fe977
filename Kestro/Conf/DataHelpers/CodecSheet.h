#pragma once

#include <cstdint>
#include <span>

#include "Kestro/Conf/DataHelpers/List.h"
#include "Kestro/Conf/DataHelpers/Sheet.h"
#include "Kestro/Conf/DataHelpers/SheetChecks.h"
#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Conf/StreamType.h"

namespace Kestro::Conf {

/// "Where the setting `when` is one of `is`, the setting `tag` must be `allowed`": what an encoder takes in some of its
/// modes only.
struct CodecRuleRow {
    Text when;
    Node whenNode = Node::Own;
    Allowed is;
    Text tag;
    Node node = Node::Own;
    Allowed allowed;
};

/// The bitrates, bit/s, that an audio encoder takes at a sample rate. 0: no limit. A limit per channel holds for a
/// stream as many times as it has channels; pairs of channels and six of them are coded together and have limits of
/// their own.
struct BitrateLimits {
    int64_t sampleRate;  ///< Hz
    int64_t lowestPerChannel = 0;
    int64_t lowestOfTwo = 0;
    int64_t lowestOfSix = 0;
    int64_t highestPerChannel = 0;
    int64_t highest = 0;
};

/// How much of the samples of a format, planar or packed, a lossless encoder writes: 1 for all of their bits.
struct EncodedShare {
    SampleFormats format;
    double share;
};

/// All that is known of one encoder. What is left out does not matter to it: there is no constraint and no rule.
struct CodecSheet {
    Text codecId;
    StreamType stream;
    /// In the order of the default settings, after the codec id. The node of the encoder's options stands where its
    /// first setting does; when it has none, it stands empty before the global-header flag.
    List<SettingRow, 5> settings = {};
    bool globalHeader = false;                     ///< the extradata goes into the container's header
    List<SettingRow, 6> settingsAfterHeader = {};  ///< more settings, whose defaults stand after the flag
    Allowed sampleRates = {};                      ///< Hz, what the resampler may give the encoder
    Allowed layouts = {};
    Allowed sampleFormats = {};
    Allowed widths = {};  ///< pixels, what the resizer may give the encoder
    Allowed heights = {};
    Allowed frameSizes = {};
    Allowed frameRates = {};           ///< what the frame-rate filter may give; a list is a constraint too
    List<CodecRuleRow, 5> rules = {};  ///< rules beyond those that the above make
    bool hasBFrames = true;            ///< of video
    bool bitrateIsOptional = false;    ///< of audio: a preset may leave out the bitrate and the quality
    std::span<const BitrateLimits> bitrateLimits = {};  ///< of audio
    List<EncodedShare, 2> encodedShares = {};           ///< of lossless audio, whose bitrate follows from the samples
};

constexpr bool IsConsistent(const CodecSheet& sheet) {
    for (const CodecRuleRow& rule : sheet.rules) {
        if (!Sheets::IsConsistent(rule.is) || !Sheets::IsConsistent(rule.allowed)) return false;
    }
    for (const Allowed& allowed : {sheet.sampleRates, sheet.layouts, sheet.sampleFormats, sheet.widths, sheet.heights,
                                   sheet.frameSizes, sheet.frameRates}) {
        if (!Sheets::IsConsistent(allowed)) return false;
    }
    return Sheets::IsConsistent(sheet.settings, sheet.settingsAfterHeader);
}

}  // namespace Kestro::Conf
