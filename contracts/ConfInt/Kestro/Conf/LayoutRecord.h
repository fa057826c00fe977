#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "Kestro/Conf/ChannelLayout.h"
#include "Kestro/Export.h"

namespace Kestro::Conf {

/// What is known of one channel layout.
struct KESTRO_CONFINT_API LayoutRecord {
    ChannelLayout code;
    std::string name;     ///< FFmpeg's name: "stereo", "5.1(side)"
    int channels;         ///< number of channels
    uint64_t ffmpegMask;  ///< FFmpeg's AV_CH_LAYOUT_ mask: a bit a speaker

    /// The record of a layout, or null: ChannelLayout::Unknown and codes outside the enumeration have none.
    static const LayoutRecord* Find(ChannelLayout code);
    /// The record with exactly that name, or null.
    static const LayoutRecord* Find(const std::string& name);
    /// FFmpeg's default layout of that number of channels, or null where FFmpeg has no standard layout for it.
    static const LayoutRecord* Find(int channels);
    /// Every layout, in the order of the enumeration.
    static std::span<const LayoutRecord> All();
};

}  // namespace Kestro::Conf
