#include "prove/BitmapSubtitle.h"

#include <cstdint>
#include <initializer_list>

namespace App {
namespace {

// Presentation graphics of a Blu-ray disc, as FFmpeg's demuxer "sup" reads them: segments with a clock of 90 kHz.
enum Segment : uint8_t { Palette = 0x14, Object = 0x15, Composition = 0x16, Window = 0x17, End = 0x80 };
constexpr uint32_t kShown = 18'000;
constexpr uint32_t kGone = 63'000;
constexpr int kBoxWidth = 32;
constexpr int kBoxHeight = 16;

class Writer {
public:
    void Byte(int value) { bytes_ += static_cast<char>(value); }
    void Bytes(std::initializer_list<int> values) {
        for (const int value : values) Byte(value);
    }
    /// Most significant byte first.
    void Number(uint32_t value, int bytes) {
        for (int i = bytes; i-- > 0;) Byte(static_cast<int>((value >> (8 * i)) & 0xff));
    }
    const std::string& Written() const { return bytes_; }

private:
    std::string bytes_;
};

void Append(Writer& file, uint32_t clock, Segment type, const Writer& content) {
    file.Bytes({'P', 'G'});
    file.Number(clock, 4);
    file.Number(0, 4);
    file.Byte(type);
    file.Number(static_cast<uint32_t>(content.Written().size()), 2);
    for (const char byte : content.Written()) file.Byte(static_cast<unsigned char>(byte));
}

Writer Box() {
    Writer box;
    for (int line = 0; line < kBoxHeight; ++line) {
        // A border of the second colour around the first: 0, length and its mark, colour; two zeros end the line.
        const bool isEdge = line == 0 || line == kBoxHeight - 1;
        box.Byte(2);
        box.Bytes({0, 0x80 | (kBoxWidth - 2), isEdge ? 2 : 1});
        box.Byte(2);
        box.Bytes({0, 0});
    }
    return box;
}

}  // namespace

std::string BitmapSubtitleFile(int width, int height) {
    Writer file;
    const int left = (width - kBoxWidth) / 2;
    const int top = height - 2 * kBoxHeight;
    for (const uint32_t clock : {kShown, kGone}) {
        const bool isShown = clock == kShown;
        Writer composition;
        composition.Number(static_cast<uint32_t>(width), 2);
        composition.Number(static_cast<uint32_t>(height), 2);
        // Frame rate, number of the composition, start of an epoch, palette 0, one object or none.
        composition.Bytes({0x10, 0, isShown ? 0 : 1, isShown ? 0x80 : 0, 0, 0, isShown ? 1 : 0});
        const auto place = [&](Writer& where) {
            where.Number(static_cast<uint32_t>(left), 2);
            where.Number(static_cast<uint32_t>(top), 2);
        };
        if (isShown) {
            composition.Bytes({0, 0, 0, 0});
            place(composition);
        }
        Append(file, clock, Composition, composition);
        Writer window;
        window.Bytes({1, 0});
        place(window);
        window.Number(kBoxWidth, 2);
        window.Number(kBoxHeight, 2);
        Append(file, clock, Window, window);
        if (isShown) {
            Writer palette;
            palette.Bytes({0, 0, 1, 235, 128, 128, 255, 2, 16, 128, 128, 255});
            Append(file, clock, Palette, palette);
            const Writer box = Box();
            Writer object;
            object.Bytes({0, 0, 0, 0xc0});
            object.Number(static_cast<uint32_t>(box.Written().size()) + 4, 3);
            object.Number(kBoxWidth, 2);
            object.Number(kBoxHeight, 2);
            for (const char byte : box.Written()) object.Byte(static_cast<unsigned char>(byte));
            Append(file, clock, Object, object);
        }
        Append(file, clock, End, {});
    }
    return file.Written();
}

}  // namespace App
