#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Core/PropertyException.h"

#include "tests/CallLog.h"
#include "tests/Failure.h"

namespace Kestro::Conf {
namespace {

using Core::NodeOf;
using Core::Property;
using Ratio = boost::rational<int64_t>;
using Set = boost::intrusive_ptr<IPropertyConstraint>;

constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

template <class T>
Set SetOf(const std::vector<T>& values) {
    ConstraintSet::Named<T> named;
    for (const T& value : values) named.emplace_back("#" + std::to_string(named.size()), value);
    return ConstraintSet::Create(named);
}

template <class T>
Property Value(const T& value) {
    return {"setting", value};
}

TEST(ConstraintSet, EveryFactoryKeepsNamesValuesAndOrder) {
    const struct {
        Set set;
        PropertyTypes type;
        Property entry;
        Property other;
        const char* calls;
    } rows[] = {
        {SetOf<double>({0.5, -1.0, 0.5}), PropertyTypes::Double, Value(-1.0), Value(1.0), "#0=0.5, #1=-1, #2=0.5, end"},
        {SetOf<std::string>({"b", "a"}), PropertyTypes::String, Value("a"), Value("#1"), "#0=b, #1=a, end"},
        {SetOf<Ratio>({Ratio(50, 2), Ratio(1, 3)}), PropertyTypes::Ratio, Value(Ratio(25)), Value(Ratio(3)),
         "#0=25/1, #1=1/3, end"},
        {SetOf<int64_t>({kMax, kMin}), PropertyTypes::Int64, Value(kMin), Value(0),
         "#0=9223372036854775807, #1=-9223372036854775808, end"},
        {SetOf<bool>({true}), PropertyTypes::Bool, Value(true), Value(false), "#0=true, end"},
        {ConstraintSet::Create(PropertyTypes::Int64, {{"one", Property("x", 1)}, {"two", Property("y", 2)}}),
         PropertyTypes::Int64, Value(2), Value(3), "one=1, two=2, end"},
        {ConstraintSet::Create(PropertyTypes::String, NodeOf("list", {Property("x", "1"), Property("y", "2")})),
         PropertyTypes::String, Value("2"), Value("x"), "x=1, y=2, end"},
        {ConstraintSet::Create(PropertyTypes::Node, {{"n", Property(NodeOf("list", {Property("x", "1")}))}}),
         PropertyTypes::Node, NodeOf("list", {Property("x", "1")}), NodeOf("list", {Property("x", 1)}),
         "n=list{x=1}, end"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.calls);
        EXPECT_EQ(CallLog::Of(*row.set), row.calls);
        EXPECT_TRUE(row.set->IsValid(row.entry));
        EXPECT_FALSE(row.set->IsValid(row.other));
        for (const Property& wrong : {Property("setting"), Value(true), Value(1.5), Value(1), Value("z"),
                                      Value(Ratio(1)), NodeOf("list", {Property("z", 1)})}) {
            if (wrong.Type() == row.type || (row.type == PropertyTypes::Ratio && wrong.Type() == PropertyTypes::String))
                continue;
            ExpectFailure<ConstraintIsNotApplicableForTypeException>(
                [&] { row.set->IsValid(wrong); },
                [&](const Exception& e) {
                    EXPECT_EQ(InfoOf<ConstraintException::TagConstraintClass>(e), "ConstraintSet");
                    EXPECT_EQ(InfoOf<ConstraintException::TagValueType>(e), row.type);
                    EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/ConstraintSet", 69}));
                });
            Property value = wrong;
            EXPECT_FALSE(row.set->CorrectValue(value));
            EXPECT_EQ(value, wrong);
        }
    }
}

TEST(ConstraintSet, Corrections) {
    const Set rates = SetOf<int64_t>({8000, 16000, 44100});
    const Set fps = SetOf<Ratio>({Ratio(25), Ratio(30000, 1001), Ratio(30)});
    const struct {
        Set set;
        Property value;
        std::optional<Property> corrected;  ///< nullopt: cannot be
    } rows[] = {
        {rates, Value(22050), Value(16000)},
        {rates, Value(12000), Value(8000)},
        {rates, Value(16000), Value(16000)},
        {rates, Value(kMax), Value(44100)},
        {rates, Value(kMin), Value(8000)},
        {SetOf<int64_t>({kMin, kMax}), Value(kMax - 1), Value(kMax)},
        {SetOf<int64_t>({kMax, kMin}), Value(kMin + 1), Value(kMin)},
        {SetOf<int64_t>({kMin, -1}), Value(kMax), Value(-1)},
        {SetOf<double>({0.5, 1.5}), Value(1.0), Value(0.5)},
        {SetOf<double>({0.5, 1.5}), Value(1e12), Value(1.5)},
        {SetOf<double>({0.5, 1.5}), Value(1e300), Value(0.5)},
        {SetOf<double>({0.5, 1.5}), Value(kNan), Value(0.5)},
        {SetOf<double>({0.5, 1.5}), Value(-kInf), Value(0.5)},
        {SetOf<double>({kInf, 1.5}), Value(7.0), Value(1.5)},
        {SetOf<std::string>({"main", "high"}), Value("low"), Value("main")},
        {SetOf<std::string>({"main", "high"}), Value("high"), Value("high")},
        {SetOf<std::string>({"main", "high"}), Value(""), Value("main")},
        {fps, Value(Ratio(2997, 100)), Value(Ratio(30000, 1001))},
        {fps, Value(Ratio(0)), Value(Ratio(25))},
        {fps, Value(Ratio(1000000)), Value(Ratio(30))},
        {fps, Value(Ratio(kMin)), Value(Ratio(25))},
        {SetOf<Ratio>({Ratio(1), Ratio(3)}), Value(Ratio(2)), Value(Ratio(1))},
        {fps, Value("60000/2002"), Value("60000/2002")},
        {fps, Value("24"), {}},
        {fps, Value("fast"), {}},
        {SetOf<bool>({true}), Value(true), Value(true)},
        {SetOf<bool>({true}), Value(false), {}},
        {SetOf<int64_t>({}), Value(1), {}},
        {SetOf<std::string>({}), Value("a"), {}},
        {SetOf<Ratio>({}), Value("25"), {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(CallLog::Of(*row.set) + " of " + Core::PropertyValueToString(row.value));
        Property value = row.value;
        EXPECT_EQ(row.set->CorrectValue(value), row.corrected.has_value());
        EXPECT_EQ(value, row.corrected.value_or(row.value));
        EXPECT_EQ(value.Name(), "setting");
    }
}

TEST(ConstraintSet, ARationalSetReadsTexts) {
    const Set fps = SetOf<Ratio>({Ratio(25), Ratio(30000, 1001)});
    for (const char* text : {"25", "25/1", "50/2", "25.0", "30000/1001"})
        EXPECT_TRUE(fps->IsValid(Value(text))) << text;
    for (const char* text : {"24", "29.97", "0"}) EXPECT_FALSE(fps->IsValid(Value(text))) << text;
    for (const char* text : {"", "fast", "25/0"}) EXPECT_THROW(fps->IsValid(Value(text)), Core::PropertyException);
}

TEST(ConstraintSet, DescriptionsForPeople) {
    const ConstraintSet::Named<int64_t> two = {{"64k", 64000}, {"128k", 128000}};
    const struct {
        Set set;
        const char* setting;
        const char* text;
    } rows[] = {
        {ConstraintSet::Create(two), "bitrate", "Parameter bitrate must be one of the following values: 64k 128k "},
        {SetOf<int64_t>({}), "bitrate", "Parameter bitrate must be one of the following values: %2"},
        {SetOf<int64_t>({}), "a %2", "Parameter a %2 must be one of the following values: %2"},
        {ConstraintSet::Create(two), "a %2", "Parameter a 64k 128k  must be one of the following values: %2"},
        {ConstraintSet::Create(ConstraintSet::Named<bool>{{"%1 %2", true}}), "%1",
         "Parameter %1 must be one of the following values: %1 %2 "},
    };
    for (const auto& row : rows) EXPECT_EQ(row.set->GetDescription(row.setting), row.text);
}

}  // namespace
}  // namespace Kestro::Conf
