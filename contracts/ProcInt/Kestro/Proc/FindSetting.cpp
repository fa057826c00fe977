#include "Kestro/Proc/FindSetting.h"

#include "Kestro/Proc/IAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"

namespace Kestro::Proc {
namespace {

// A new text goes into the catalogues of po/, too.
constexpr Conf::SettingRecord kRecords[] = {
    {IFilterResample::CLASS_ID, "Sound conversion", "", "Converts sound to what the encoder takes."},
    {IResample::CLASS_ID, "Resampler", "", "The sound that comes out."},
    {IFilterAudioVolume::CLASS_ID, "Loudness", "", "Makes sound louder or quieter."},
    {IFilterAudioVolume::VOLUME_VALUE, "Volume", "%",
     "Amplitude in relation to the source's; 100 leaves the sound as it is."},
    {IFilterAudioFormatter::CLASS_ID, "Audio packets", "", "Cuts sound into packets."},
    {IAudioFormatter::CLASS_ID, "Packetizer", "", "What cuts the sound."},
    {IFilterAudioFormatter::PACKET_DURATION, "Packet duration", "\u00B5s",
     "Length of a packet of sound; the default suits every encoder."},
    {IFilterFrameRate::CLASS_ID, "Frame rate conversion", "", "Repeats or drops pictures to reach a frame rate."},
    {IFilterResize::CLASS_ID, "Picture size", "", "Brings pictures to another size."},
    {IResize::CLASS_ID, "Resizer", "", "The size of the pictures that come out."},
    {IResize::FRAME_SIZE_MODE, "Frame size", "",
     "original keeps the source's; half, quarter; custom takes width and height, custom_scale a percentage."},
    {IResize::MODE, "Fit", "",
     "How a picture of other proportions fills a custom frame: letterbox shows all of it, crop fills the frame."},
    {IResize::METHOD, "Scaling method", "", "bicubic is the sharpest, fast_bilinear fast, neighbor keeps hard edges."},
};

}  // namespace

const Conf::SettingRecord* FindSetting(const std::string& path) {
    const Conf::SettingRecord* own = Conf::SettingRecord::Find(kRecords, path);
    return own != nullptr ? own : Conf::SettingRecord::Find(path);
}

std::span<const Conf::SettingRecord> FilterSettings() { return kRecords; }

}  // namespace Kestro::Proc
