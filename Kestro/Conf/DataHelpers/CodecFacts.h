#pragma once

#include "Kestro/Conf/DataHelpers/CodecSheet.h"
#include "Kestro/Conf/DataHelpers/SharedRanges.h"
#include "Kestro/Conf/IFormatCodec.h"

/// What the sheets of many encoders share.
namespace Kestro::Conf {

inline constexpr Text kCbr = IFormatCodec::TAG_BITRATE_MODE_CBR;
inline constexpr Text kVbr = IFormatCodec::TAG_BITRATE_MODE_VBR;
inline constexpr Text kCbrOnly[] = {kCbr};
inline constexpr Text kVbrOnly[] = {kVbr};
inline constexpr Text kCbrOrVbr[] = {kCbr, kVbr};

/// Bitrate modes: one alone, or both with the first-named by default.
inline constexpr SettingRow kCbrMode{
    .tag = IFormatCodec::TAG_BITRATE_MODE, .initial = kCbr, .allowed = Texts{kCbrOnly}};
inline constexpr SettingRow kVbrMode{
    .tag = IFormatCodec::TAG_BITRATE_MODE, .initial = kVbr, .allowed = Texts{kVbrOnly}};
inline constexpr SettingRow kVbrOrCbrMode{
    .tag = IFormatCodec::TAG_BITRATE_MODE, .initial = kVbr, .allowed = Texts{kCbrOrVbr}};
inline constexpr SettingRow kCbrOrVbrMode{
    .tag = IFormatCodec::TAG_BITRATE_MODE, .initial = kCbr, .allowed = Texts{kCbrOrVbr}};

/// The bitrate of an audio encoder that offers these.
constexpr SettingRow AudioBitrate(std::span<const int64_t> bitrates, int64_t initial = 256'000) {
    return {.tag = IFormatCodec::TAG_BITRATE, .initial = initial, .allowed = Integers{bitrates}};
}

/// The rates of MPEG-1 (ISO/IEC 11172-3), which AC-3 has too.
inline constexpr int64_t kMpeg1SampleRates[] = {32'000, 44'100, 48'000};
inline constexpr ChannelLayout kMonoAndStereo[] = {ChannelLayout::Mono, ChannelLayout::Stereo};
inline constexpr std::span<const ChannelLayout> kMono = std::span(kMonoAndStereo).first(1);
/// Of an encoder that takes any: 768 kHz is the highest that converters have.
inline constexpr Range kAnySampleRate{.lo = 1, .hi = 768'000};

/// Of an audio encoder with variable bitrate.
inline constexpr SettingRow kAudioQuality{
    .tag = IFormatCodec::TAG_QUALITY, .initial = 1, .allowed = Shared{QualityRange}};

/// MPEG-1 and MPEG-2, up to the frames of 2160 lines.
inline constexpr Range kMpegWidths{.lo = 32, .hi = 3840, .step = 2};
inline constexpr Range kMpegHeights{.lo = 32, .hi = 2160, .step = 2};

inline constexpr SettingRow kVideoBitrate{
    .tag = IFormatCodec::TAG_BITRATE, .initial = 2'000'000, .allowed = Shared{VideoBitrateRange}};
/// An encoder without a quality by default, which may have one.
inline constexpr SettingRow kOptionalVideoQuality{.tag = IFormatCodec::TAG_QUALITY, .allowed = Shared{QualityRange}};
/// 50 is the middle: GetDefaultVideoBitrate gives the same bitrate for it as for no quality at all.
inline constexpr SettingRow kVideoQuality{
    .tag = IFormatCodec::TAG_QUALITY, .initial = 50, .allowed = Shared{QualityRange}};

/// The settings of encoders that have nothing of their own to set: without and with a quality by default.
inline constexpr SettingRow kPlainVideo[] = {kCbrOrVbrMode, kVideoBitrate, kOptionalVideoQuality};
inline constexpr SettingRow kPlainVideoOfQuality[] = {kCbrOrVbrMode, kVideoBitrate, kVideoQuality};

}  // namespace Kestro::Conf
