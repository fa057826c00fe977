#include "Kestro/Conf/DiscRecord.h"

#include "Kestro/Conf/FindRecord.h"
#include "Kestro/Conf/IFormatFile.h"

namespace Kestro::Conf {
namespace {

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
// A DVD player reads whole packs at that rate, however little is in them; one of Video CDs 75 sectors a
// second, and of Super Video CDs twice as many.
constexpr int64_t kDvdRate = 10'080'000;
constexpr int64_t kVcdRate = int64_t{75} * 2352 * 8;
constexpr int64_t kSvcdRate = 2 * kVcdRate;
// What discs have room for beside their sound.
constexpr int64_t kSvcdVideo = 2'040'000;
constexpr int64_t kVcdVideo = 1'150'000;

bool IsText(const Core::Property& node, const std::string& tag, const std::string& text) {
    const Core::Property* found = node.FindByPath(tag);
    return found != nullptr && found->Type() == PropertyTypes::String && found->GetString() == text;
}

}  // namespace

std::span<const DiscRecord> DiscRecord::All() {
    static const Ratio kPal(25);
    static const Ratio kNtsc(30000, 1001);
    const std::string& pal = IFormatFile::DVD_STANDARD_PAL;
    const std::string& ntsc = IFormatFile::DVD_STANDARD_NTSC;
    static const DiscRecord kRecords[] = {
        {IFormatFile::FORMAT_DVD, pal, kDvdPal, kPal, kBuffer, kDvdRate, 0, true},
        {IFormatFile::FORMAT_DVD, ntsc, kDvdNtsc, kNtsc, kBuffer, kDvdRate, 0, true},
        {IFormatFile::FORMAT_SVCD, pal, kSvcdPal, kPal, kBuffer, kSvcdRate, kSvcdVideo, false},
        {IFormatFile::FORMAT_SVCD, ntsc, kSvcdNtsc, kNtsc, kBuffer, kSvcdRate, kSvcdVideo, false},
        {IFormatFile::FORMAT_VCD, pal, kVcdPal, kPal, kVcdBuffer, kVcdRate, kVcdVideo, false},
        {IFormatFile::FORMAT_VCD, ntsc, kVcdNtsc, kNtsc, kVcdBuffer, kVcdRate, kVcdVideo, false},
    };
    return kRecords;
}

const DiscRecord* DiscRecord::Find(const Core::Property& format) {
    const auto records = All();
    return FindRecord(records, [&](const DiscRecord& record) {
        return IsText(format, IFormatFile::TAG_CONTAINER, record.container) &&
               IsText(format, IFormatFile::TAG_DVD_STANDARD, record.standard);
    });
}

Ratio TelevisionSampleAspectRatio(const FrameSize& frame, double pictureShape, bool mayBeWide) {
    constexpr double kBetween = (4.0 / 3.0 + 16.0 / 9.0) / 2.0;
    const Ratio screen = mayBeWide && pictureShape > kBetween ? Ratio(16, 9) : Ratio(4, 3);
    return screen * Ratio(frame.height, frame.width);
}

}  // namespace Kestro::Conf
