#pragma once

#include "Kestro/Conf/DataHelpers/CodecSheet.h"
#include "Kestro/Conf/DataHelpers/SharedRanges.h"
#include "Kestro/Conf/DataHelpers/SharedRows.h"
#include "Kestro/Conf/IFormatCodec.h"

/// What the sheets of many encoders share.
namespace Kestro::Conf {

inline constexpr Text kCbr = IFormatCodec::TAG_BITRATE_MODE_CBR;
inline constexpr Text kVbr = IFormatCodec::TAG_BITRATE_MODE_VBR;
inline constexpr Text kCbrOnly[] = {kCbr};
inline constexpr Text kCbrOrVbr[] = {kCbr, kVbr};

/// Constant bitrate alone, and constant bitrate unless variable is asked for.
inline constexpr SettingRow kCbrMode{
    .tag = IFormatCodec::TAG_BITRATE_MODE, .initial = kCbr, .allowed = Texts{kCbrOnly}};
inline constexpr SettingRow kCbrOrVbrMode{
    .tag = IFormatCodec::TAG_BITRATE_MODE, .initial = kCbr, .allowed = Texts{kCbrOrVbr}};

/// An audio encoder with variable bitrate.
inline constexpr SettingRow kAudioQuality{
    .tag = IFormatCodec::TAG_QUALITY, .initial = 1, .allowed = Shared{QualityRange}};

inline constexpr SettingRow kVideoBitrate{
    .tag = IFormatCodec::TAG_BITRATE, .initial = 2'000'000, .allowed = Shared{VideoBitrateRange}};
/// The mean: it gives the default bitrate of no quality at all (GetDefaultVideoBitrate).
inline constexpr SettingRow kVideoQuality{
    .tag = IFormatCodec::TAG_QUALITY, .initial = 50, .allowed = Shared{QualityRange}};

}  // namespace Kestro::Conf
