#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/ConstraintChannelLayout.h"
#include "Kestro/Conf/DataHelpers/ConstraintCodecs.h"
#include "Kestro/Conf/DataHelpers/ConstraintMethod.h"
#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSampleFormat.h"
#include "Kestro/Conf/DataHelpers/SizeConstraints.h"
#include "Kestro/Conf/SampleFmtRecord.h"

#include "tests/CallLog.h"
#include "tests/Failure.h"

namespace Kestro::Conf {
namespace {

using Core::Property;
using Constraint = boost::intrusive_ptr<IPropertyConstraint>;

/// The text that the constraint makes of the given one; nullopt where it cannot, and then the value must be untouched.
std::optional<std::string> Corrected(const IPropertyConstraint& constraint, const std::string& text) {
    Property value("setting", text);
    const bool wasValid = constraint.IsValid(value);
    const bool corrected = constraint.CorrectValue(value);
    EXPECT_EQ(value.Name(), "setting");
    EXPECT_TRUE(!wasValid || corrected);
    EXPECT_TRUE((!wasValid && corrected) || value.GetString() == text);
    return corrected ? std::optional(value.GetString()) : std::nullopt;
}

Constraint Layouts(std::vector<std::string> names) { return new ConstraintChannelLayout(std::move(names)); }

Constraint Formats(const std::vector<std::string>& names) {
    ConstraintSampleFormat::Formats formats;
    for (const std::string& name : names) formats.emplace_back(SampleFmtRecord::Find(name)->code, name);
    return new ConstraintSampleFormat(formats);
}

TEST(DomainConstraints, RefuseOtherKindsOfValues) {
    const Constraint integers = new ConstraintRange(PropertyTypes::String, int64_t{0}, int64_t{9}, int64_t{0});
    const std::string suffix = "::IsValid(const class Kestro::Core::Property &) const";
    const struct {
        Constraint constraint;
        std::string className, reportedAs;
        int line;
    } rows[] = {
        {new ConstraintCodecs({{"AAC", "aac"}}, "aac"), "ConstraintCodecs", "ConstraintCodecs", 25},
        {Layouts({"stereo"}), "ConstraintChannelLayout", "ConstraintSet", 25},
        {Formats({"s16"}), "ConstraintSampleFormat", "ConstraintSampleFormat", 28},
        {integers, "ConstraintRange", "ConstraintRange", 30},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.className);
        ExpectFailure<ConstraintIsNotApplicableForTypeException>(
            [&] { row.constraint->IsValid(Property("setting", 5)); },
            [&](const Exception& e) {
                EXPECT_EQ(InfoOf<ConstraintException::TagConstraintClass>(e), row.reportedAs);
                EXPECT_EQ(InfoOf<ConstraintException::TagValueType>(e), PropertyTypes::String);
                EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/" + row.className, row.line}));
                EXPECT_EQ(std::string(InfoOf<boost::throw_function>(e).value_or("")),
                          "bool __cdecl Kestro::Conf::" + row.className + suffix);
            });
        EXPECT_EQ(row.constraint->GetDescription("name"), "");
    }
    ExpectFailure<ConstraintIsNotApplicableForTypeException>(
        [&] { CallLog::Of(*integers); },
        [](const Exception& e) {
            EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/ConstraintRange", 54}));
            EXPECT_EQ(
                std::string(InfoOf<boost::throw_function>(e).value_or("")),
                "void __cdecl Kestro::Conf::ConstraintRange::FillValueList(const class boost::intrusive_ptr<class "
                "Kestro::Conf::IConstraintConsumer> &) const");
        });
    for (const Constraint& constraint : {rows[1].constraint, rows[2].constraint, integers}) {
        Property value("setting", 5);
        EXPECT_FALSE(constraint->CorrectValue(value)) << "no correction, no exception";
        EXPECT_EQ(value, Property("", 5));
    }
}

TEST(ConstraintCodecs, KnowsIdsAndNotTheNamesThatAreShown) {
    const Constraint codecs = new ConstraintCodecs({{"A", "x"}, {"B", "y"}}, "y");
    EXPECT_EQ(CallLog::Of(*codecs), "A=x, B=y, end");
    EXPECT_EQ(Corrected(*codecs, "x"), "x");
    for (const char* unknown : {"A", "X", "x ", "", "z"}) {
        EXPECT_FALSE(codecs->IsValid({"", unknown})) << unknown;
        EXPECT_EQ(Corrected(*codecs, unknown), "y") << unknown;
    }
    const ConstraintCodecs withoutDefault({{"A", "x"}}, "");
    EXPECT_EQ(Corrected(withoutDefault, "z"), std::nullopt);
    EXPECT_EQ(withoutDefault.GetDefaultValue(), Property("", ""));
    const ConstraintCodecs elsewhere({}, "not listed");
    EXPECT_EQ(Corrected(elsewhere, "z"), "not listed");
    EXPECT_EQ(CallLog::Of(elsewhere), "end");
}

TEST(ConstraintChannelLayout, CorrectsByNumberOfChannels) {
    const std::vector<std::string> usual = {"mono", "stereo", "5.1"};
    const struct {
        std::vector<std::string> layouts;
        const char* value;
        std::optional<std::string> corrected;
    } rows[] = {
        {usual, "stereo", "stereo"},
        {usual, "quad", "stereo"},
        {usual, "2.1", "stereo"},
        {usual, "5.1(side)", "5.1"},
        {usual, "22.2", "5.1"},
        {{"5.1", "7.1"}, "stereo", "5.1"},
        {{"7.1", "5.1"}, "mono", "5.1"},
        {{"5.1", "stereo", "mono"}, "5.0", "5.1"},
        {{"5.1(side)", "5.1"}, "7.1", "5.1(side)"},
        {{"mono", "quad", "4.0"}, "3.1", "quad"},
        {usual, "unknown", {}},
        {usual, "", {}},
        {usual, "Stereo", {}},
        {{}, "stereo", {}},
    };
    for (const auto& row : rows) EXPECT_EQ(Corrected(*Layouts(row.layouts), row.value), row.corrected) << row.value;
    EXPECT_EQ(CallLog::Of(*Layouts(usual)), "mono=mono, stereo=stereo, 5.1=5.1, end");
}

TEST(ConstraintSampleFormat, CorrectsByCounterpartThenSize) {
    const struct {
        std::vector<std::string> formats;
        const char* value;
        std::optional<std::string> corrected;
    } rows[] = {
        {{"s16", "s32p"}, "s16", "s16"},
        {{"s16", "s32p"}, "s32", "s32p"},
        {{"s32", "flt", "s32p"}, "fltp", "flt"},
        {{"u8", "s32"}, "s16", "u8"},
        {{"dbl", "s16"}, "u8p", "s16"},
        {{"dbl", "dblp"}, "s64", "dblp"},
        {{"dblp", "dbl"}, "s64p", "dbl"},
        {{"s32", "flt"}, "dbl", "s32"},
        {{"s16", "s16p"}, "s17", {}},
        {{"s16"}, "none", {}},
        {{"s16"}, "", {}},
        {{}, "s16", {}},
    };
    for (const auto& row : rows) EXPECT_EQ(Corrected(*Formats(row.formats), row.value), row.corrected) << row.value;
    EXPECT_EQ(CallLog::Of(*Formats({"s32p", "u8"})), "s32p=s32p, u8=u8, end");
    const ConstraintSampleFormat unknown({{static_cast<SampleFormats>(99), "s99"}});
    EXPECT_EQ(Corrected(unknown, "s16"), std::nullopt);
}

TEST(SizeConstraints, OfferSizesForTheCustomMode) {
    const SizeConstraints sizes({{1280, 720}, {128, 96}});
    EXPECT_EQ(CallLog::Of(sizes),
              "1280 x 720=FrameSizeMode{Width=1280,Height=720}, "
              "128 x 96=FrameSizeMode{Width=128,Height=96}, end");
    Property mode("setting", "custom");
    EXPECT_TRUE(sizes.CorrectValue(mode));
    for (const Property& other : {Property("", "original"), Property("", 1280), Property(""), Property("", 2.5)}) {
        Property value = other;
        EXPECT_FALSE(sizes.IsValid(value));
        EXPECT_FALSE(sizes.CorrectValue(value));
        EXPECT_EQ(value, other);
    }
    EXPECT_EQ(sizes.GetDescription("name"), "");
}

TEST(ConstraintMethod, AsksItsPredicateAlone) {
    constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
    const auto any = ConstraintMethod::CreateAny("any");
    const auto even = ConstraintMethod::CreateEven(IPropertyConstraint::DESCRIPTION_ID_EVEN_SIZE);
    const ConstraintMethod none(nullptr, "none");
    const struct {
        Property value;
        bool isEven;
    } rows[] = {
        {Property("s", 0), true},      {Property("s", -2), true},    {Property("s", 1920), true},
        {Property("s", kMin), true},   {Property("s", 1081), false}, {Property("s", -1), false},
        {Property("s", 2.0), false},   {Property("s", "2"), false},  {Property("s", Property::Ratio(2)), false},
        {Property("s", false), false}, {Property("s"), false},
    };
    for (const auto& row : rows) {
        Property value = row.value;
        EXPECT_TRUE(any->IsValid(value) && any->CorrectValue(value));
        EXPECT_EQ(even->IsValid(value), row.isEven) << Core::Dump(value);
        EXPECT_EQ(even->CorrectValue(value), row.isEven);
        EXPECT_FALSE(none.IsValid(value) || none.CorrectValue(value));
        EXPECT_EQ(value, row.value);
    }
    EXPECT_EQ(CallLog::Of(*any) + CallLog::Of(*even) + CallLog::Of(none), "");
    EXPECT_EQ(even->GetDescription("Width"), "even-size");
}

}  // namespace
}  // namespace Kestro::Conf
