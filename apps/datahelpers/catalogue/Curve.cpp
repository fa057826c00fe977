#include "catalogue/Curve.h"

#include <algorithm>
#include <array>
#include <boost/rational.hpp>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Exception.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/RuleTree.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"

namespace App::Catalogue {
namespace {

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecAudio;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IPreset;
using Kestro::Conf::IValidationRule;
using Kestro::Core::Property;
using Ratio = Property::Ratio;
using Size = std::pair<int64_t, int64_t>;

/// Whether the stream keeps the rules of the encoder; those on what it does not have do not count.
bool KeepsRules(const HelperSheet& sheet, const Property& stream) {
    const Property tree = Planner::RuleTree(Property(), stream);
    return std::ranges::all_of(sheet.rules, [&tree](const auto& entry) {
        const IValidationRule& rule = *entry.second;
        const bool applies = tree.FindByPath(rule.GetFirstName()) != nullptr && tree.FindByPath(rule.GetSecondName());
        return !applies || rule.Validate(tree);
    });
}

/// The values that a rule on the setting lists; none where no rule does.
std::vector<Property> ListedByRule(const HelperSheet& sheet, const std::string& tag) {
    std::vector<Property> listed;
    for (const auto& [path, rule] : sheet.rules) {
        if (!rule->GetSecondName().ends_with(Property::SEPARATOR + tag) || !listed.empty()) continue;
        for (Planner::Domain::Entry& entry : Planner::DescribeDomain(*rule->GetSecondConstraint()).entries) {
            listed.push_back(std::move(entry.value));
        }
    }
    return listed;
}

/// The bitrate of a codec node, unless the helper refuses what it is asked.
template <class Ask>
std::optional<int64_t> Bitrate(const Ask& ask) {
    try {
        const Property codec = ask();
        const Property* bitrate = codec.FindByPath(IFormatCodec::TAG_BITRATE);
        return bitrate != nullptr ? std::optional(bitrate->GetInt64()) : std::nullopt;
    } catch (const Kestro::Exception&) {
        return std::nullopt;
    }
}

/// One line for what is the same, none for what there is not.
void AddSeries(Curve::Series series, Curve::Block& block) {
    if (std::ranges::none_of(series.bitrates, [](const auto& bitrate) { return bitrate.has_value(); })) return;
    const auto isSame = [&](const Curve::Series& other) {
        return other.bitrates == series.bitrates && other.words == series.words;
    };
    const auto same = std::ranges::find_if(block.series, isSame);
    if (same == block.series.end()) {
        block.series.push_back(std::move(series));
    } else {
        // "stereo s16, s16p": what both begin with is said once.
        const std::size_t word = series.name.rfind(' ') + 1;
        const bool isShared = word > 0 && same->name.starts_with(series.name.substr(0, word));
        same->name += ", " + series.name.substr(isShared ? word : 0);
    }
}

/// Of a video encoder: sizes, and a block for each frame rate with a series for each quality.
class VideoCurve {
public:
    explicit VideoCurve(const Codec& codec)
        : sheet_(*codec.sheet), helper_(Planner::FindHelper(Planner::kVideoCodecs, codec.id)) {}

    Curve Make() const {
        Curve curve{.pointsAre = "frame size", .blocks = {}};
        for (const Ratio& fps : {Ratio(30), Ratio(30'000, 1001), Ratio(24), Ratio(25), Ratio(50), Ratio(60)}) {
            Curve::Block block = MakeBlock(fps);
            if (!block.series.empty()) curve.blocks.push_back(std::move(block));
        }
        return curve;
    }

private:
    std::vector<Size> Sizes() const {
        std::vector<Size> sizes;
        for (const Property& size : ListedByRule(sheet_, Kestro::Proc::IResize::FRAME_SIZE_MODE)) {
            sizes.emplace_back(size[IFormatCodecVideo::TAG_WIDTH].GetInt64(),
                               size[IFormatCodecVideo::TAG_HEIGHT].GetInt64());
        }
        std::ranges::sort(sizes);
        if (!sizes.empty()) return sizes;
        return {{640, 360}, {854, 480}, {1280, 720}, {1920, 1080}, {2560, 1440}, {3840, 2160}};
    }

    Property Stream(const Size& size, const Ratio& fps) const {
        Property stream;
        stream.SetChild(IPreset::KEY_TYPE_ID, IPreset::STREAM_TYPE_VIDEO);
        stream.SetChild(IPreset::KEY_FILTER_VIDEO_CODEC, sheet_.defaults);
        Property& resizer =
            stream.SetChild(Kestro::Proc::IFilterResize::CLASS_ID).SetChild(Kestro::Proc::IResize::CLASS_ID);
        resizer.SetChild(IFormatCodecVideo::TAG_WIDTH, size.first);
        resizer.SetChild(IFormatCodecVideo::TAG_HEIGHT, size.second);
        stream.SetChild(Kestro::Proc::IFilterFrameRate::CLASS_ID).SetChild(IFormatCodecVideo::TAG_FPS, fps);
        return stream;
    }

    /// quality: 0 for none, the bitrate is left to the helper.
    std::optional<int64_t> Answer(const Size& size, const Ratio& fps, int64_t quality) const {
        return Bitrate([&] {
            Property preset = sheet_.defaults;
            preset.SetChild(IFormatCodec::TAG_BITRATE_MODE,
                            quality > 0 ? IFormatCodec::TAG_BITRATE_MODE_VBR : IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO);
            preset.SetChild(IFormatCodec::TAG_QUALITY, quality);
            Property codec;
            codec.SetChild(IFormatCodecVideo::TAG_WIDTH, size.first);
            codec.SetChild(IFormatCodecVideo::TAG_HEIGHT, size.second);
            codec.SetChild(IFormatCodecVideo::TAG_FPS, fps);
            helper_->ApplyPresetSettings(preset, codec);
            return codec;
        });
    }

    Curve::Block MakeBlock(const Ratio& fps) const {
        std::vector<int64_t> qualities = {0};
        const auto mode = sheet_.constraints.find(IFormatCodec::TAG_BITRATE_MODE);
        if (mode != sheet_.constraints.end() && mode->second->IsValid({{}, IFormatCodec::TAG_BITRATE_MODE_VBR})) {
            qualities = {100, 75, 0, 50, 25, 1};
        }
        std::vector<Size> sizes = Sizes();
        std::erase_if(sizes, [&](const Size& size) { return !KeepsRules(sheet_, Stream(size, fps)); });
        Curve::Block block{
            .name = Kestro::Core::PropertyValueToString({{}, fps}) + " frames/s", .points = {}, .series = {}};
        for (const auto& [width, height] : sizes) {
            block.points.push_back(std::to_string(width) + " x " + std::to_string(height));
        }
        if (fps.denominator() == 1) block.name = std::to_string(fps.numerator()) + " frames/s";
        for (const int64_t quality : qualities) {
            Curve::Series series{.name = quality > 0 ? "quality " + std::to_string(quality) : "automatic",
                                 .bitrates = {}};
            for (const Size& size : sizes) series.bitrates.push_back(Answer(size, fps, quality));
            AddSeries(std::move(series), block);
        }
        return block;
    }

    const HelperSheet& sheet_;
    Planner::HelperPtr helper_;
};

/// Of an audio encoder: sample rates, and a series for each of some layouts and, without loss, sample formats.
class AudioCurve {
public:
    explicit AudioCurve(const Codec& codec)
        : sheet_(*codec.sheet), helper_(Planner::FindHelper(Planner::kAudioCodecs, codec.id)) {}

    Curve Make() const {
        Curve curve{.pointsAre = "sample rate", .blocks = {}};
        const std::vector<Property> rates = Rates();
        Curve::Block block;
        for (const Property& rate : rates) block.points.push_back(std::to_string(rate.GetInt64()) + " Hz");
        for (const char* layout : {"5.1", "stereo", "mono"}) AddLayout(rates, layout, block);
        if (!block.series.empty()) curve.blocks.push_back(std::move(block));
        return curve;
    }

private:
    std::vector<Property> Rates() const {
        std::vector<Property> rates = ListedByRule(sheet_, IFormatCodecAudio::TAG_SAMPLE_RATE);
        if (rates.empty()) {
            for (const int64_t rate : {8000, 16'000, 22'050, 32'000, 44'100, 48'000, 96'000})
                rates.push_back({{}, rate});
        }
        std::ranges::sort(rates, {}, [](const Property& rate) { return rate.GetInt64(); });
        return rates;
    }

    std::vector<int64_t> Offered() const {
        std::vector<int64_t> offered;
        const auto constraint = sheet_.constraints.find(IFormatCodec::TAG_BITRATE);
        if (constraint == sheet_.constraints.end()) return offered;
        for (const auto& entry : Planner::DescribeDomain(*constraint->second).entries) {
            offered.push_back(entry.value.GetInt64());
        }
        return offered;
    }

    /// The most, the default and the least of the bitrates that the encoder takes; without loss there is one.
    std::vector<std::pair<std::string, std::optional<int64_t>>> Answers(const Property& rate, const std::string& layout,
                                                                        const Property& format) const {
        const Property* usual = sheet_.defaults.FindByPath(IFormatCodec::TAG_BITRATE);
        if (usual == nullptr) return {{"", Answer(rate, layout, format, 0)}};
        std::optional<int64_t> most;
        std::optional<int64_t> least;
        for (const int64_t bitrate : Offered()) {
            const std::optional<int64_t> answer = Answer(rate, layout, format, bitrate);
            if (!answer) continue;
            most = std::max(most.value_or(*answer), *answer);
            least = std::min(least.value_or(*answer), *answer);
        }
        return {{"most", most}, {"default", Answer(rate, layout, format, usual->GetInt64())}, {"least", least}};
    }

    void AddLayout(const std::vector<Property>& rates, const std::string& layout, Curve::Block& block) const {
        std::vector<Property> formats = ListedByRule(sheet_, IFormatCodecAudio::TAG_SAMPLE_FORMAT);
        if (formats.empty()) formats.emplace_back();
        for (const Property& format : formats) {
            const std::string name = layout + (formats.size() > 1 ? " " + format.GetString() : "");
            std::vector<Curve::Series> series;
            for (const Property& rate : rates) {
                const auto answers = Answers(rate, layout, format);
                series.resize(answers.size());
                for (std::size_t i = 0; i < answers.size(); ++i) {
                    series[i].name = name;
                    series[i].words = answers[i].first;
                    series[i].bitrates.push_back(answers[i].second);
                }
            }
            for (Curve::Series& one : series) AddSeries(std::move(one), block);
        }
    }

    /// bitrate: 0 for none.
    std::optional<int64_t> Answer(const Property& rate, const std::string& layout, const Property& format,
                                  int64_t bitrate) const {
        Property stream;
        stream.SetChild(IPreset::KEY_TYPE_ID, IPreset::STREAM_TYPE_AUDIO);
        Property& codec = stream.SetChild(IPreset::KEY_FILTER_AUDIO_CODEC, sheet_.defaults);
        if (bitrate > 0) codec.SetChild(IFormatCodec::TAG_BITRATE, bitrate);
        Property& resampler =
            stream.SetChild(Kestro::Proc::IFilterResample::CLASS_ID).SetChild(Kestro::Proc::IResample::CLASS_ID);
        for (Property* node : {&codec, &resampler}) {
            node->SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, rate);
            node->SetChild(IFormatCodecAudio::TAG_LAYOUT, layout);
            if (!format.IsEmpty()) node->SetChild(IFormatCodecAudio::TAG_SAMPLE_FORMAT, format);
        }
        if (!KeepsRules(sheet_, stream)) return std::nullopt;
        return Bitrate([&] {
            helper_->CorrectFormatCodec(codec);
            return codec;
        });
    }

    const HelperSheet& sheet_;
    Planner::HelperPtr helper_;
};

}  // namespace

bool Curve::IsFlat() const {
    return std::ranges::all_of(blocks.front().series, [](const Series& series) {
        std::optional<int64_t> level;
        return std::ranges::all_of(series.bitrates, [&level](const auto& bitrate) {
            if (!level) level = bitrate;
            return !bitrate || bitrate == level;
        });
    });
}

std::optional<Curve> BitrateCurve(const Codec& codec) {
    if (!codec.sheet || codec.isLeftToProgram) return std::nullopt;
    const bool isVideo = codec.kind->type == Kestro::Conf::StreamType::Video;
    // What loses nothing takes the bits that the picture asks for.
    if (isVideo && Kestro::FFWrapper::IsAlwaysLossless(codec.id)) return std::nullopt;
    Curve curve = isVideo ? VideoCurve(codec).Make() : AudioCurve(codec).Make();
    if (curve.blocks.empty()) return std::nullopt;
    return curve;
}

}  // namespace App::Catalogue
