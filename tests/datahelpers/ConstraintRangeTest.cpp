#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Core/PropertyException.h"

#include "tests/CallLog.h"

namespace Kestro::Conf {
namespace {

using Core::Property;

constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

template <class Number>
Property Value(Number number) {
    return {"setting", number};
}

struct Row {
    Property value;
    std::optional<bool> isValid;        ///< nullopt: throws PropertyException
    std::optional<Property> corrected;  ///< nullopt: cannot be
};

void Check(const boost::intrusive_ptr<IPropertyConstraint>& range, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(CallLog::Of(*range) + ": " + Core::PropertyValueToString(row.value));
        if (row.isValid) {
            EXPECT_EQ(range->IsValid(row.value), *row.isValid);
        } else {
            EXPECT_THROW(range->IsValid(row.value), Core::PropertyException);
        }
        Property value = row.value;
        EXPECT_EQ(range->CorrectValue(value), row.corrected.has_value());
        EXPECT_EQ(value.Name(), "setting");
        // A NaN is not equal to itself: it is compared as text.
        const Property expected = row.corrected.value_or(row.value);
        EXPECT_EQ(value.Type(), expected.Type());
        EXPECT_EQ(Core::PropertyValueToString(value), Core::PropertyValueToString(expected));
    }
}

TEST(ConstraintRange, OfIntegers) {
    const auto lo = Value(0);
    const auto hi = Value(200);
    Check(ConstraintRange::Create(int64_t{0}, int64_t{200}, int64_t{10}), {{lo, true, lo},
                                                                           {hi, true, hi},
                                                                           {Value(15), true, Value(15)},
                                                                           {Value(-1), false, lo},
                                                                           {Value(201), false, hi},
                                                                           {Value(kMin), false, lo},
                                                                           {Value(kMax), false, hi},
                                                                           {Value(100.5), true, Value(100.5)},
                                                                           {Value(200.9), true, Value(200.9)},
                                                                           {Value(201.0), false, hi},
                                                                           {Value(-0.5), true, Value(-0.5)},
                                                                           {Value(-1.0), false, lo},
                                                                           {Value(0x1p63), {}, hi},
                                                                           {Value(-1e300), {}, lo},
                                                                           {Value(kInf), {}, hi},
                                                                           {Value(-kInf), {}, lo},
                                                                           {Value(kNan), {}, hi},
                                                                           {Value("150"), true, {}},
                                                                           {Value("201"), false, {}},
                                                                           {Value("many"), {}, {}},
                                                                           {Value(true), true, {}},
                                                                           {Value(Property::Ratio(401, 2)), true, {}},
                                                                           {Property("setting"), {}, {}}});
    Check(ConstraintRange::Create(kMin, kMax, int64_t{0}),
          {{Value(kMin), true, Value(kMin)}, {Value(kMax), true, Value(kMax)}, {Value(0x1p63), {}, Value(kMax)}});
    Check(ConstraintRange::Create(int64_t{10}, int64_t{0}, int64_t{0}),
          {{Value(5), false, Value(10)}, {Value(10), false, Value(0)}, {Value(-1.5), false, Value(10)}});
}

TEST(ConstraintRange, OfRealNumbers) {
    const auto lo = Value(0.0);
    const auto hi = Value(1.0);
    Check(ConstraintRange::Create(0.0, 1.0, 0.25), {{lo, true, lo},
                                                    {hi, true, hi},
                                                    {Value(0.3), true, Value(0.3)},
                                                    {Value(std::nextafter(1.0, 2.0)), false, hi},
                                                    {Value(-5e-324), false, lo},
                                                    {Value(1), true, Value(1)},
                                                    {Value(2), false, hi},
                                                    {Value(-kInf), false, lo},
                                                    {Value(kInf), false, hi},
                                                    {Value(kNan), false, hi},
                                                    {Value("0.5"), true, {}},
                                                    {Value(""), {}, {}}});
    Check(ConstraintRange::Create(-kInf, kInf, 0.0),
          {{Value(kInf), true, Value(kInf)}, {Value(kMin), true, Value(kMin)}, {Value(kNan), false, Value(kInf)}});
    Check(ConstraintRange::Create(kNan, 1.0, 0.0), {{Value(0.5), false, hi}, {Value(-0.5), false, hi}});
    Check(ConstraintRange::Create(1.0, 0.0, 0.0), {{Value(0.5), false, hi}, {Value(1.5), false, lo}});
}

TEST(ConstraintRange, DescribesItsBounds) {
    const std::pair<boost::intrusive_ptr<IPropertyConstraint>, const char*> rows[] = {
        {ConstraintRange::Create(int64_t{0}, int64_t{200}, int64_t{0}), "min 0, max 200"},
        {ConstraintRange::Create(kMin, kMax, int64_t{-2}),
         "min -9223372036854775808, max 9223372036854775807, step -2"},
        {ConstraintRange::Create(0.0, 1.0, 0.0), "min ~0, max ~1"},
        {ConstraintRange::Create(0.5, 1.0, 0.1), "min ~0.5, max ~1, step ~0.1"},
        {ConstraintRange::Create(0.0, 1.0, kNan), "min ~0, max ~1, step ~nan"},
    };
    for (const auto& [range, calls] : rows) {
        EXPECT_EQ(CallLog::Of(*range), calls);
        EXPECT_EQ(range->GetDescription("BitRate"), "");
        EXPECT_EQ(range->GetRefCount(), 1);
    }
}

}  // namespace
}  // namespace Kestro::Conf
