#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Export.h"
#include "Kestro/FFWrapper/BitrateLimits.h"

namespace Kestro::FFWrapper {

/// An encoder's own scale of constant quality.
struct QualityScale {
    const char* option;  ///< FFmpeg's
    double worst;
    double best;                    ///< what the eye or ear does not tell from the source
    const char* bitrate = nullptr;  ///< the bitrate that leaves the choice to the quality, where one must be given
    bool isWhole = false;           ///< the option takes whole numbers alone
    bool isQuantiser = false;       ///< a step's size: equal steps of quality are equal parts of it
};

/// The pixels in which a profile, or a frame of so many lines, is stored.
struct PixelFormatOf {
    const std::string* profile = nullptr;  ///< null: any
    int64_t lines = 0;                     ///< 0: any
    const char* name;                      ///< FFmpeg's
};

/// How an encoder is told that a run is one of two.
enum class Passes { None, Options, X265Parameters };

/// What an encoder is given where nobody says how good or how large the picture shall be: not worse than what FFmpeg
/// gives it by itself, where that is no bitrate that starves every picture.
struct UsualSettings {
    int64_t quality = 0;  ///< 0: it has no mode of constant quality
    std::optional<int64_t> keyInterval = {};
    std::optional<int64_t> bFrames = {};
};

/// What is known of one encoder of FFmpeg beyond what its libraries tell: a row of a table in which a codec's encoders
/// stand best first.
struct KESTRO_FFWRAPPER_API EncoderRecord {
    const std::string& codecId;
    const char* name;
    const QualityScale* quality = nullptr;  ///< null: it has no mode of constant quality
    UsualSettings usual = {};
    bool heedsBitrate = true;   ///< false: its frames take what they take
    bool hasRateBuffer = true;  ///< false: it refuses a highest bitrate beside the mean one
    Passes passes = Passes::Options;
    std::span<const PixelFormatOf> pixelFormats = {};  ///< the first that fits; none: the nearest to the source's
    /// For sources of more than 8 bits, where no profile is asked for; null: they go into those of above.
    const char* deepPixelFormat = nullptr;
    /// Its pictures are read by the matrix of BT.601, by which they must be made (JFIF).
    bool isBt601 = false;
    bool needsEvenSides = false;  ///< it refuses frames of an odd width or height
    /// An option, and its value, without which it refuses transparent pixels; null: it needs none.
    const char* alphaOption = nullptr;
    const char* alphaValue = nullptr;
    /// The codec's profile that the encoder calls by another word, and that word.
    const std::string* profile = nullptr;
    const char* profileWord = nullptr;
    /// The profiles that it writes well, where it writes unreadable streams under others; none: all.
    std::span<const std::string* const> profiles = {};
    const std::string* experimentalProfile = nullptr;  ///< FFmpeg must be told to allow it
    std::optional<BitrateLimits> videoLimits = {};
    BitrateLimits (*audioLimits)(int64_t sampleRate, const Conf::LayoutRecord& layout) = nullptr;

    /// The row of the encoder with that FFmpeg name, or null: nothing is known of it.
    static const EncoderRecord* Find(const std::string& encoderName);
    /// The codec's best encoder, or null. It stands for encoders without a row.
    static const EncoderRecord* OfCodec(const std::string& codecId);
    static std::span<const EncoderRecord> All();

    /// FFmpeg's options, name and value, for a quality 1..Conf::IFormatCodec::MAX_QUALITY: 1 is the coarsest that the
    /// encoder does, MAX_QUALITY its best. A higher quality is never coarser. Empty without a scale.
    std::vector<std::pair<std::string, std::string>> QualityOptions(int64_t quality) const;
    /// FFmpeg's name of the pixel format for a profile and a frame of so many lines; empty: the nearest to the
    /// source's.
    std::string PixelFormat(const std::string& ofProfile, int64_t lines) const;
};

/// Whether an encoder of FFmpeg's refuses frames of an odd width or height: as its row says, or that of the codec's
/// best.
KESTRO_FFWRAPPER_API bool NeedsEvenSides(const std::string& encoderName, const std::string& codecId);

/// Whether a codec loses nothing of the picture or sound, so that no bitrate or quality moves it.
KESTRO_FFWRAPPER_API bool IsAlwaysLossless(const std::string& codecId);

/// Whether FFmpeg's encoder, or the profile that it shall write, is one that FFmpeg calls experimental.
KESTRO_FFWRAPPER_API bool IsExperimental(const std::string& encoderName, const std::string& profile);

}  // namespace Kestro::FFWrapper
