#include "Disc.h"

#include <algorithm>
#include <utility>

#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/RefCounted.h"

#include "Tree.h"

namespace App {
namespace {

using Kestro::Conf::ConstraintSet;
using Kestro::Conf::IConstraintConsumer;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IFormatFile;
using Kestro::Conf::IPropertyConstraint;
using Kestro::Core::Property;
using Kestro::Proc::IFilterFrameRate;
using Kestro::Proc::IFilterResize;
using Kestro::Proc::IResize;
using Ratio = boost::rational<int64_t>;

// DVD-Video, Super Video CD (IEC 62107) and Video CD (White Book), of 625 and of 525 lines.
constexpr FrameSize kDvdPal[] = {{720, 576}, {704, 576}, {352, 576}, {352, 288}};
constexpr FrameSize kDvdNtsc[] = {{720, 480}, {704, 480}, {352, 480}, {352, 240}};
constexpr FrameSize kSvcdPal[] = {{480, 576}};
constexpr FrameSize kSvcdNtsc[] = {{480, 480}};
constexpr FrameSize kVcdPal[] = {{352, 288}};
constexpr FrameSize kVcdNtsc[] = {{352, 240}};

// Of a player: 112 and 20 blocks of 16384 bits.
constexpr int64_t kBuffer = 1'835'008;
constexpr int64_t kVcdBuffer = 327'680;

struct Row {
    const std::string& container;
    const std::string& standard;
    Disc disc;
};

std::span<const Row> Rows() {
    static const Ratio kPal(25);
    static const Ratio kNtsc(30000, 1001);
    static const Row kRows[] = {
        {IFormatFile::FORMAT_DVD, IFormatFile::DVD_STANDARD_PAL, {kDvdPal, kPal, kBuffer, true}},
        {IFormatFile::FORMAT_DVD, IFormatFile::DVD_STANDARD_NTSC, {kDvdNtsc, kNtsc, kBuffer, true}},
        {IFormatFile::FORMAT_SVCD, IFormatFile::DVD_STANDARD_PAL, {kSvcdPal, kPal, kBuffer, false}},
        {IFormatFile::FORMAT_SVCD, IFormatFile::DVD_STANDARD_NTSC, {kSvcdNtsc, kNtsc, kBuffer, false}},
        {IFormatFile::FORMAT_VCD, IFormatFile::DVD_STANDARD_PAL, {kVcdPal, kPal, kVcdBuffer, false}},
        {IFormatFile::FORMAT_VCD, IFormatFile::DVD_STANDARD_NTSC, {kVcdNtsc, kNtsc, kVcdBuffer, false}},
    };
    return kRows;
}

/// The sizes of a disc, as a constraint on the resizer's frame-size mode.
class DiscSizes final : public Kestro::RefCounted<IPropertyConstraint> {
public:
    explicit DiscSizes(std::span<const FrameSize> sizes) : sizes_(sizes) {}

    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override {
        for (const FrameSize& size : sizes_) {
            Property node(IResize::FRAME_SIZE_MODE);
            node.SetChild(IFormatCodecVideo::TAG_WIDTH, size.width);
            node.SetChild(IFormatCodecVideo::TAG_HEIGHT, size.height);
            consumer->AddValue(std::to_string(size.width) + " x " + std::to_string(size.height), node);
        }
        consumer->EndValues();
    }
    bool IsValid(const Property& value) const override { return value == Property({}, IResize::FRAME_SIZE_CUSTOM); }
    bool CorrectValue(Property& value) const override { return IsValid(value); }
    std::string GetDescription(const std::string& /*settingName*/) const override { return {}; }

private:
    std::span<const FrameSize> sizes_;
};

}  // namespace

const Disc* Disc::Find(const Property& format) {
    const std::string container = TextAt(format, IFormatFile::TAG_CONTAINER);
    const std::string standard = TextAt(format, IFormatFile::TAG_DVD_STANDARD);
    const auto rows = Rows();
    const auto row = std::ranges::find_if(
        rows, [&](const Row& disc) { return disc.container == container && disc.standard == standard; });
    return row != rows.end() ? &row->disc : nullptr;
}

Ratio TelevisionPixels(const FrameSize& frame, double pictureShape, bool mayBeWide) {
    constexpr double kBetween = (4.0 / 3.0 + 16.0 / 9.0) / 2.0;
    const Ratio screen = mayBeWide && pictureShape > kBetween ? Ratio(16, 9) : Ratio(4, 3);
    return screen * Ratio(frame.height, frame.width);
}

void AddDiscDemands(const Property& format, Demands& demands) {
    const Disc* disc = Disc::Find(format);
    if (disc == nullptr) return;
    const std::string who =
        TextAt(format, IFormatFile::TAG_CONTAINER) + " " + TextAt(format, IFormatFile::TAG_DVD_STANDARD);
    demands.push_back({who, Below(Below(IFilterResize::CLASS_ID, IResize::CLASS_ID), IResize::FRAME_SIZE_MODE),
                       new DiscSizes(disc->sizes)});
    const std::string name = std::to_string(disc->fps.numerator()) + "/" + std::to_string(disc->fps.denominator());
    demands.push_back({who, Below(IFilterFrameRate::CLASS_ID, IFormatCodecVideo::TAG_FPS),
                       ConstraintSet::Create(ConstraintSet::Named<Ratio>{{name, disc->fps}})});
}

}  // namespace App
