#include <gtest/gtest.h>

#include <set>
#include <string>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"

#include "tests/Failure.h"

namespace Kestro::Conf {
namespace {

const std::string kTypes[] = {IPreset::KEY_FORMAT, IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC};
const std::string kFilters[] = {Proc::IFilterResample::CLASS_ID, Proc::IFilterAudioVolume::CLASS_ID,
                                Proc::IFilterAudioFormatter::CLASS_ID, Proc::IFilterFrameRate::CLASS_ID,
                                Proc::IFilterResize::CLASS_ID};

TEST(Registry, OneObjectForEachTypeAndName) {
    std::set<const IDataHelper*> objects;
    std::size_t names = 0;
    for (const std::string& type : kTypes) {
        const DataHelperTable& table = GetAvailableDataHelpers(type);
        EXPECT_EQ(&GetAvailableDataHelpers(type), &table);
        EXPECT_FALSE(table.empty());
        for (const auto& [name, helper] : table) {
            SCOPED_TRACE(type + " " + name);
            ASSERT_NE(helper, nullptr);
            objects.insert(helper.get());
            ++names;
            const int32_t before = helper->GetRefCount();
            const auto handle = CreateDataHelper(type, name);
            EXPECT_EQ(handle, helper);
            EXPECT_EQ(helper->GetRefCount(), before + 1);
        }
    }
    for (const std::string& classId : kFilters) {
        const auto filter = CreateDataHelper(classId, "");
        ASSERT_NE(filter, nullptr);
        EXPECT_EQ(CreateDataHelper(classId, "any name"), filter);
        objects.insert(filter.get());
        ++names;
    }
    EXPECT_EQ(objects.size(), names) << "no two names share an object";
}

TEST(Registry, AliasesLeadToTheSameObjects) {
    EXPECT_EQ(CreateDataHelper(IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO, IFormatCodecAudio::CODEC_ID_AAC),
              CreateDataHelper(IPreset::KEY_FILTER_AUDIO_CODEC, IFormatCodecAudio::CODEC_ID_AAC));
    EXPECT_EQ(CreateDataHelper(IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO, IFormatCodecVideo::CODEC_ID_H264),
              CreateDataHelper(IPreset::KEY_FILTER_VIDEO_CODEC, IFormatCodecVideo::CODEC_ID_H264));
}

using MaybeText = std::optional<std::string>;

struct FailedLookup {
    std::string type;
    std::string name;
    int line;
    MaybeText noClass, classFound, noName;
};

void CheckLookup(const FailedLookup& row, const Exception& e, const std::string& function) {
    EXPECT_EQ(InfoOf<HelperException::TagClassIsNotFound>(e), row.noClass);
    EXPECT_EQ(InfoOf<HelperException::TagClassIsFound>(e), row.classFound);
    EXPECT_EQ(InfoOf<HelperException::TagTypeIsNotFound>(e), row.noName);
    EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/DataHelpers", row.line}));
    EXPECT_NE(std::string(InfoOf<boost::throw_function>(e).value_or("")).find(function), std::string::npos);
}

TEST(Registry, FailedLookupsSayWhatIsMissing) {
    const std::string& audio = IPreset::KEY_FILTER_AUDIO_CODEC;
    const std::string& video = IPreset::KEY_FILTER_VIDEO_CODEC;
    const std::string nul = IPreset::KEY_FORMAT + std::string(1, '\0');
    const FailedLookup rows[] = {
        {"", "", 294, "", {}, {}},
        {"Format ", "mp4", 294, "Format ", {}, {}},
        {"format", "mp4", 294, "format", {}, {}},
        {nul, "mp4", 294, nul, {}, {}},
        {"Resampler", "", 294, "Resampler", {}, {}},
        {IPreset::KEY_FORMAT, "", 297, {}, IPreset::KEY_FORMAT, ""},
        {IPreset::KEY_FORMAT, "MP4", 297, {}, IPreset::KEY_FORMAT, "MP4"},
        {audio, IFormatCodecVideo::CODEC_ID_H264, 297, {}, audio, IFormatCodecVideo::CODEC_ID_H264},
        {video, IFormatCodec::CODEC_ID_AUTO, 297, {}, video, IFormatCodec::CODEC_ID_AUTO},
        {video, IFormatCodecVideo::CODEC_ID_WMV3, 297, {}, video, IFormatCodecVideo::CODEC_ID_WMV3},
        {IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO, "nope", 297, {}, audio, "nope"},
    };
    for (const FailedLookup& row : rows) {
        SCOPED_TRACE(row.type + " " + row.name);
        ExpectFailure<HelperException>([&] { CreateDataHelper(row.type, row.name); },
                                       [&](const Exception& e) { CheckLookup(row, e, "CreateDataHelper("); });
    }
    for (const std::string& type : {std::string(), IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO, kFilters[0], nul}) {
        SCOPED_TRACE(type);
        ExpectFailure<HelperException>([&] { GetAvailableDataHelpers(type); },
                                       [&](const Exception& e) {
                                           CheckLookup({type, "", 256, type, {}, {}}, e, "GetAvailableDataHelpers(");
                                       });
    }
}

}  // namespace
}  // namespace Kestro::Conf
