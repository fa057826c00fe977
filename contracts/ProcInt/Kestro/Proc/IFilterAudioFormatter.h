#pragma once

#include <string>

#include "Kestro/Constant.h"

namespace Kestro::Proc {

/// The filter that cuts audio into packets: AudioPackets { Packetizer { TypeId }, PacketDuration }.
class IFilterAudioFormatter {
public:
    static KESTRO_CONSTANT std::string CLASS_ID = "AudioPackets";
    /// Duration of a packet, integer, microseconds.
    static KESTRO_CONSTANT std::string PACKET_DURATION = "PacketDuration";

    IFilterAudioFormatter() = delete;
};

}  // namespace Kestro::Proc
