#include "Kestro/Conf/SettingRecord.h"

#include <string_view>

#include "Kestro/Conf/FindRecord.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/DomainLocalizationManager.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Conf {
namespace {

using Audio = IFormatCodecAudio;
using Codec = IFormatCodec;
using File = IFormatFile;
using Video = IFormatCodecVideo;

// A new text goes into the catalogues of po/, too.
constexpr SettingRecord kRecords[] = {
    {IPreset::KEY_FORMAT, "File", "", "The file that is written."},
    {IPreset::KEY_STREAMS, "Streams", "", "The pictures, sounds and subtitles of the file."},
    {IPreset::KEY_TYPE_ID, "Type", "", "The kind of a stream, or the implementation of a filter: default."},
    {IPreset::KEY_FILTER_AUDIO_CODEC, "Audio encoder", "", "How sound is encoded."},
    {IPreset::KEY_FILTER_VIDEO_CODEC, "Video encoder", "", "How pictures are encoded."},
    {IPreset::KEY_FILTER_SUBTITLE_CODEC, "Subtitle encoder", "", "How subtitles are encoded."},

    {Codec::TAG_CODEC_ID, "Codec", "", "How the stream is stored; auto takes the container's usual codec."},
    {Codec::TAG_BITRATE, "Bitrate", "bit/s", "Average data rate; a higher one gives better quality and larger files."},
    {Codec::TAG_BITRATE_MODE, "Rate control", "",
     "cbr keeps the bitrate, cbr_auto chooses one and keeps it, vbr keeps the quality."},
    {Codec::TAG_QUALITY, "Quality", "", "From 1 to 100, the best, for rate control vbr; it replaces the bitrate."},
    {Codec::TAG_MULTIPASS_ENCODING, "Passes", "",
     "two-pass takes twice as long and spends the bitrate where the picture needs it."},
    {Codec::TAG_THREAD_NUMBER, "Encoder threads", "", "Threads that the encoder works in; 0 leaves it to the encoder."},
    {Codec::TAG_UTILIZE_ALL_RESOURCES, "Use all cores", "",
     "The encoder takes every core, whatever number of threads is given."},
    {Codec::TAG_CODEC_OPTIONS_ENCODE, "Encoder options", "", "What only this encoder knows."},
    {Codec::TAG_PRESET, "Encoder preset", "", "A slower one gives better quality at the same bitrate."},
    {Codec::TAG_PROFILE, "Profile", "", "The features that a player must have; old and small players need a low one."},
    {Codec::TAG_GLOBAL_HEADER, "Global header", "",
     "The codec's parameters stand once, in the file's header; leave it as the container has it."},
    {Codec::TAG_CODEC_TAG, "Codec tag", "",
     "The four characters that name the codec in the file, as a number; 0 takes the usual ones."},
    {Codec::TAG_LOSSLESS, "Lossless", "", "The stream is copied, or encoded without loss."},
    {Codec::TAG_MAIN_STREAM, "Main stream", "", "The stream is the main one of its kind in the file."},

    {Audio::TAG_SAMPLE_RATE, "Sample rate", "Hz",
     "Samples per second: 44100 is usual for music, 48000 for video; -1 keeps the source's."},
    {Audio::TAG_LAYOUT, "Channel layout", "", "The speakers, such as mono, stereo, 5.1; unknown keeps the source's."},
    {Audio::TAG_SAMPLE_FORMAT, "Sample format", "",
     "How a sample is represented, such as s16 or fltp; none keeps the source's."},
    {Audio::TAG_BITS_PER_SAMPLE, "Sample size", "bits",
     "Size of one sample of one channel: 16 on a CD, 24 in studios."},

    {Video::TAG_WIDTH, "Width", "px",
     "Width of the picture, even; in percent of the source's where the frame size is custom_scale."},
    {Video::TAG_HEIGHT, "Height", "px",
     "Height of the picture, even; in percent of the source's where the frame size is custom_scale."},
    {Video::TAG_ASPECTX, "Sample aspect ratio, horizontal", "",
     "Width of a pixel in relation to its height; 1 for square pixels."},
    {Video::TAG_ASPECTY, "Sample aspect ratio, vertical", "",
     "Height of a pixel in relation to its width; 1 for square pixels."},
    {Video::TAG_FPS, "Frame rate", "frames/s", "Pictures per second, such as 25 or 30000/1001; 0 keeps the source's."},
    {Video::TAG_MAX_B_FRAME_SEQUENCE, "Consecutive B-frames", "frames",
     "More of them compress better; 0 suits the oldest players."},
    {Video::TAG_MAX_I_FRAME_INTERVAL, "Key frame interval", "frames",
     "Greatest distance of two key frames; a short one makes seeking faster and the file larger."},
    {Video::TAG_BITS_PER_PIXEL, "Colour depth", "bits",
     "Size of one pixel: 24 is usual, 32 has transparency; 0 leaves it to the encoder."},
    {Video::TAG_PIXEL_FORMAT, "Pixel format", "", "How a pixel is represented; yuv420p plays everywhere."},
    {Video::TAG_COVER_FLAG, "Cover picture", "", "The stream is a still picture that stands for the file."},
    {Video::TAG_APPROVED_VBR_MODE_ONLY, "Keep the preset's bitrate", "",
     "With rate control vbr the bitrate is the preset's, not one that follows from the quality."},
    {Video::TAG_X264_TUNE, "Tuning", "", "The kind of picture that the encoder does best; film suits most."},

    {File::TAG_CONTAINER, "Container", "", "The kind of file; mp4 plays on most devices, matroska holds most codecs."},
    {File::TAG_LIMITS, "Stream limits", "", "How many streams of each kind the container takes."},
    {File::TAG_LIMITS_AUDIO, "Audio streams, at most", "", "The most audio streams that the container takes."},
    {File::TAG_LIMITS_VIDEO, "Video streams, at most", "", "The most video streams that the container takes."},
    {File::TAG_LIMITS_SUBTITLE, "Subtitle streams, at most", "", "The most subtitle streams that the container takes."},
    {File::TAG_LIMITS_OTHER, "Other streams, at most", "", "The most streams of other kinds that the container takes."},
    {File::TAG_PROGRESSIVE_READ, "Progressive playback", "",
     "The file plays while it is still being loaded; take it for the web."},
    {File::TAG_PSP_MODE, "Handheld console", "", "The file is written for the player of the handheld console."},
    {File::TAG_DISK_SIZE, "Disc size", "bytes", "Capacity of the disc that the file is made for."},
    {File::TAG_DVD_STANDARD, "Television system", "",
     "pal for players in most of the world, ntsc in North America and Japan."},
};

std::string Translated(const char* text) { return Core::GetLocalizationManagerForDomain("core").Translate(text); }

}  // namespace

std::string SettingRecord::Label() const { return Translated(label); }

std::string SettingRecord::Unit() const { return Translated(unit); }

std::string SettingRecord::Help() const { return Translated(help); }

const SettingRecord* SettingRecord::Find(const std::string& path) { return Find(kRecords, path); }

const SettingRecord* SettingRecord::Find(std::span<const SettingRecord> records, const std::string& path) {
    const std::string_view text = path;
    const std::string_view tag = text.substr(text.rfind(Core::Property::SEPARATOR) + 1);
    return FindRecord(records, [tag](const SettingRecord& record) { return record.tag == tag; });
}

std::span<const SettingRecord> SettingRecord::All() { return kRecords; }

}  // namespace Kestro::Conf
