#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "Kestro/Conf/DataHelpers/Filters/DataHelperFilterBase.h"

namespace Kestro::Conf {

/// The filter that cuts audio into packets.
class DataHelperAudioFormatter final : public DataHelperFilterBase {
public:
    /// A new helper, equal to every other.
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<const IDataHelper> Create();

    /// AudioPackets { Packetizer { TypeId = default }, PacketDuration = 100000 }
    Core::Property GetDefaultSettings() const override;

private:
    DataHelperAudioFormatter() = default;
};

}  // namespace Kestro::Conf
