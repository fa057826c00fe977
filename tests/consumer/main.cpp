#include <exception>
#include <iostream>
#include <string>

#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioFormatter.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"

using Kestro::Conf::HelperException;
using Kestro::Conf::IFormatFile;
using Kestro::Conf::IPreset;

namespace {

/// The container that MP4's default settings name.
std::string DefaultContainer() {
    const auto helper = CreateDataHelper(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MP4);
    return helper->GetDefaultSettings()[IFormatFile::TAG_CONTAINER].GetString();
}

/// Whether the library's exception for an unknown name is caught here by its own type.
bool RefusesUnknownName() {
    try {
        CreateDataHelper(IPreset::KEY_FORMAT, "no such format");
    } catch (const HelperException&) {
        return true;
    }
    return false;
}

}  // namespace

int main() {
    try {
        const std::string container = DefaultContainer();
        std::cout << container << '\n';
        if (container == IFormatFile::FORMAT_MP4 && RefusesUnknownName()) {
            return 0;
        }
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
    }
    return 1;
}
