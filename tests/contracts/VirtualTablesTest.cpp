#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/IValidationRule.h"

namespace Kestro::Conf {
namespace {

// A program that is installed calls by these places: one that moves breaks it, a new function stands behind the last.

/// The place in the virtual table, as a pointer to the member says it (Itanium C++ ABI, 2.3).
template <class Function>
std::ptrdiff_t PlaceOf(Function function) {
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof(function) == sizeof(words));
    std::memcpy(words, &function, sizeof(words));
#if defined(__aarch64__) || defined(__arm__)
    return words[0] / static_cast<std::ptrdiff_t>(sizeof(void*));
#else
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
#endif
}

/// Behind the two entries of the destructor, the three of IRefCountable and those of another base.
template <class... Functions>
void ExpectOrder(std::ptrdiff_t place, Functions... functions) {
    const auto expect = [&place](std::ptrdiff_t found) { EXPECT_EQ(found, place++); };
    (..., expect(PlaceOf(functions)));
}

TEST(VirtualTables, KeepTheirOrder) {
    using Consumer = IConstraintConsumer;
    using Rule = IValidationRule;
    ExpectOrder(2, &IRefCountable::AddRef, &IRefCountable::GetRefCount, &IRefCountable::Release);
    ExpectOrder(5, &IDataHelper::GetDefaultSettings, &IDataHelper::GetRequiredFilters,
                &IDataHelper::FillValidationRules, &IDataHelper::FillConstraints, &IDataHelper::ApplyPresetSettings,
                &IDataHelper::CorrectFormatCodec);
    ExpectOrder(5, &IPropertyConstraint::FillValueList, &IPropertyConstraint::IsValid,
                &IPropertyConstraint::CorrectValue, &IPropertyConstraint::GetDescription);
    ExpectOrder(5, &Rule::Validate, &Rule::GetFirstName, &Rule::GetSecondName, &Rule::GetFirstConstraint,
                &Rule::GetSecondConstraint);
    const auto integer = [](void (Consumer::*set)(int64_t)) { return set; };
    const auto real = [](void (Consumer::*set)(double)) { return set; };
    ExpectOrder(5, &Consumer::Clear, &Consumer::AddValue, &Consumer::EndValues, integer(&Consumer::SetMax),
                real(&Consumer::SetMax), integer(&Consumer::SetMin), real(&Consumer::SetMin),
                integer(&Consumer::SetStep), real(&Consumer::SetStep), &Consumer::GetResult);
    ExpectOrder(5, &IFormatFile::ExistsFormatName, &IFormatFile::GetFormatName);
    ExpectOrder(5, &IFormatCodec::GetStreamType, &IFormatCodec::ExistsCodecID, &IFormatCodec::GetCodecID,
                &IFormatCodec::ExistsBitrate, &IFormatCodec::GetBitrate, &IFormatCodec::ExistsCodecTag,
                &IFormatCodec::GetCodecTag, &IFormatCodec::ExistsLossless, &IFormatCodec::GetLossless,
                &IFormatCodec::GetMainStream);
    ExpectOrder(15, &IFormatCodecAudio::ExistsSampleRate, &IFormatCodecAudio::GetSampleRate,
                &IFormatCodecAudio::ExistsChannelLayout, &IFormatCodecAudio::GetChannelLayout,
                &IFormatCodecAudio::ExistsSampleFormat, &IFormatCodecAudio::GetSampleFormat);
    ExpectOrder(15, &IFormatCodecVideo::ExistsWidth, &IFormatCodecVideo::GetWidth, &IFormatCodecVideo::ExistsHeight,
                &IFormatCodecVideo::GetHeight, &IFormatCodecVideo::ExistsFps, &IFormatCodecVideo::GetFps,
                &IFormatCodecVideo::ExistsPixelFormat, &IFormatCodecVideo::GetPixelFormat);
}

}  // namespace
}  // namespace Kestro::Conf
