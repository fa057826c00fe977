// A library that uses ours while it is loaded and after everything else has ended.

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/SettingRecord.h"
#include "Kestro/Core/DomainLocalizationManager.h"
#include "Kestro/Proc/KeepSource.h"

using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatCodecVideo;
using Kestro::Conf::IFormatFile;
using Kestro::Conf::IPreset;
using Kestro::Core::Property;

/// Whether everything answers that keeps something for later calls.
extern "C" __attribute__((visibility("default"))) bool UseTheLibrary() {
    const auto helper = CreateDataHelperAuto(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MATROSKA);
    const Property settings = helper->GetDefaultSettings();
    Kestro::Conf::ConstraintMap constraints;
    CreateDataHelper("CodecVideo", IFormatCodecVideo::CODEC_ID_H264)->FillConstraints(constraints);
    helper->FillConstraints(constraints);
    std::string descriptions;
    for (const auto& [key, constraint] : constraints) {
        const auto consumer = Kestro::Conf::FakeConstraintConsumer::Create();
        constraint->FillValueList(consumer);
        descriptions += constraint->GetDescription(key);
    }
    Property codec("CodecVideo");
    codec.SetChild(IFormatCodec::TAG_CODEC_ID, IFormatCodecVideo::CODEC_ID_H265);
    codec.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    const std::string text = "Parameter %1 must be one of the following values: %2";
    return !descriptions.empty() && CodecIsSupported(IFormatFile::Create(settings), IFormatCodecVideo::Create(codec)) &&
           Kestro::Conf::FormatHasGlobalHeader("mp4") && Kestro::Proc::SourceValue("Fps") != nullptr &&
           !Kestro::Conf::SettingRecord::Find("VideoFrameRate/Fps")->Label().empty() &&
           !Kestro::Core::GetLocalizationManagerForDomain("core").Translate(text).empty();
}

namespace {

// What does not work ends the program at once: there is nobody left to tell.
struct Global {
    Global() { Check(); }
    ~Global() { Check(); }
    static void Check() {
        if (!UseTheLibrary()) __builtin_trap();
    }
} global;

}  // namespace
