#pragma once

#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <vector>

/// What FFmpeg's muxers do with codecs, as it was measured, and the text file that keeps it.
namespace Measure {

/// A sample rate in Hz and a number of channels.
using Sound = std::pair<int, int>;
using Sounds = std::set<Sound>;

/// Every sound that is tried with every audio codec whose encoder makes it.
const Sounds& AllSounds();

/// A codec with its sounds; none where it is no audio, or has no encoder that makes them.
struct CodecSounds {
    std::string codec;
    Sounds sounds;
};
using CodecList = std::vector<CodecSounds>;

/// In the file a line is a name and its codecs. The name "tried" comes first, and behind a codec stand the sounds that
/// its encoder made: "mp3(11025,22050,44100/1,2)" is three sample rates with one and two channels each, semicolons part
/// several such groups, and "all" are AllSounds. The other names are muxers, with the codecs that they store; behind
/// one stand the sounds if they are not those that were tried. Lines that begin with # are for people.
struct MuxerData {
    CodecList tried;                          ///< with the sounds that their encoders made
    std::map<std::string, CodecList> stored;  ///< by muxer: what was written and read back

    /// Throws std::runtime_error for what is no such file.
    static MuxerData Read(std::istream& in);
    void Write(std::ostream& out) const;
};

/// Null where the codec is not there.
const CodecSounds* Find(const CodecList& codecs, const std::string& codec);

/// "muxers-ffmpeg5.txt" for FFmpeg 5: the name of the installed version's file.
std::string FileName();

}  // namespace Measure
