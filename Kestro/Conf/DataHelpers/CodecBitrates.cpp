#include "Kestro/Conf/DataHelpers/CodecBitrates.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"

namespace Kestro::Conf {

namespace {

std::span<const int64_t> OfferedBitrates(const CodecSheet& sheet) {
    for (const SettingRow& row : sheet.settings) {
        const auto* list = std::get_if<Integers>(&row.allowed);
        if (list != nullptr && row.tag.get() == IFormatCodec::TAG_BITRATE) return list->values;
    }
    return {};
}

/// 0 without a layout. One that no record knows has failed the encoder's rules.
int64_t ChannelsOf(const Core::Property& settings) {
    const Core::Property* layout = settings.FindByPath(IFormatCodecAudio::TAG_LAYOUT);
    return layout != nullptr ? LayoutRecord::Find(layout->GetString())->channels : 0;
}

Range LimitsFor(const BitrateLimits& limits, int64_t channels) {
    Range range{.lo = limits.lowestPerChannel * channels, .hi = limits.highestPerChannel * channels};
    if (channels == 2) range.lo = limits.lowestOfTwo;
    if (channels == 6) range.lo = limits.lowestOfSix;
    if (limits.highestPerChannel == 0) range.hi = limits.highest;
    return range;
}

int64_t Nearest(std::span<const int64_t> bitrates, int64_t wanted, const Range& range) {
    int64_t nearest = wanted;
    int64_t least = std::numeric_limits<int64_t>::max();
    for (const int64_t bitrate : bitrates) {
        const int64_t distance = std::abs(bitrate - wanted);
        if (bitrate < range.lo || bitrate > range.hi || distance >= least) continue;
        least = distance;
        nearest = bitrate;
    }
    return nearest;
}

}  // namespace

void HoldToBitrateLimits(const CodecSheet& sheet, Core::Property& settings) {
    if (sheet.bitrateLimits.empty()) return;
    const Core::Property* rate = settings.FindByPath(IFormatCodecAudio::TAG_SAMPLE_RATE);
    const Core::Property* bitrate = settings.FindByPath(IFormatCodec::TAG_BITRATE);
    if (rate == nullptr || bitrate == nullptr) return;
    const int64_t channels = ChannelsOf(settings);
    for (const BitrateLimits& limits : sheet.bitrateLimits) {
        if (limits.sampleRate != rate->GetInt64()) continue;
        if (limits.highestPerChannel != 0 && channels == 0) continue;
        const int64_t held = Nearest(OfferedBitrates(sheet), bitrate->GetInt64(), LimitsFor(limits, channels));
        settings.SetChild(IFormatCodec::TAG_BITRATE, held);
        return;
    }
}

void WriteLosslessBitrate(const CodecSheet& sheet, Core::Property& settings) {
    const Core::Property* rate = settings.FindByPath(IFormatCodecAudio::TAG_SAMPLE_RATE);
    const Core::Property* format = settings.FindByPath(IFormatCodecAudio::TAG_SAMPLE_FORMAT);
    const int64_t channels = ChannelsOf(settings);
    if (rate == nullptr || format == nullptr || channels == 0) return;
    // A format that no record knows has failed the encoder's rules.
    const SampleFmtRecord& samples = *SampleFmtRecord::Find(format->GetString());
    for (const EncodedShare& encoded : sheet.encodedShares) {
        if (encoded.format != samples.code && encoded.format != samples.alternative) continue;
        const int64_t raw = rate->GetInt64() * channels * samples.bitsPerSample;
        settings.SetChild(IFormatCodec::TAG_BITRATE,
                          static_cast<int64_t>(std::llround(static_cast<double>(raw) * encoded.share)));
        return;
    }
}

}  // namespace Kestro::Conf
