#pragma once

#include <span>
#include <string>

#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/Export.h"

namespace Kestro::Conf {

/// What is known of one sample format.
struct KESTRO_CONFINT_API SampleFmtRecord {
    SampleFormats code;
    int bitsPerSample;          ///< size of one sample of one channel; the nearness of formats is measured in it
    std::string name;           ///< FFmpeg's name: "s16", "fltp"
    bool planar;                ///< a plane a channel, instead of interleaved channels
    SampleFormats alternative;  ///< the same samples, planar if this is interleaved and the other way round

    /// The record of a format, or null: SampleFormats::None and codes outside the enumeration have none.
    static const SampleFmtRecord* Find(SampleFormats code);
    /// The record with exactly that name, or null.
    static const SampleFmtRecord* Find(const std::string& name);
    /// Every format, in the order of the enumeration.
    static std::span<const SampleFmtRecord> All();
};

}  // namespace Kestro::Conf
