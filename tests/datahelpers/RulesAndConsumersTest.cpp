#include <gtest/gtest.h>

#include <boost/any.hpp>
#include <limits>
#include <string>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Core/PropertyException.h"

namespace Kestro::Conf {
namespace {

using Core::Property;

constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
constexpr int64_t kMax = std::numeric_limits<int64_t>::max();

TEST(PairValidationRule, HoldsTheSecondWhereTheFirstApplies) {
    const auto upToTen = ConstraintRange::Create(int64_t{0}, int64_t{10}, int64_t{0});
    const auto oneOrTwo = ConstraintSet::Create(ConstraintSet::Named<int64_t>{{"1", 1}, {"2", 2}});
    const auto rule = PairValidationRule::Create("a/first", upToTen, "second", oneOrTwo);
    EXPECT_EQ(rule->GetFirstName(), "a/first");
    EXPECT_EQ(rule->GetSecondName(), "second");
    EXPECT_EQ(rule->GetFirstConstraint(), upToTen);
    EXPECT_EQ(rule->GetSecondConstraint(), oneOrTwo);

    const auto tree = [](const Property& first, const Property& second) {
        Property root("root");
        if (!first.IsEmpty()) root.SetChild("a").SetChild("first", first);
        if (!second.IsEmpty()) root.SetChild("second", second);
        return root;
    };
    const Property none;
    EXPECT_TRUE(rule->Validate(tree({"", 5}, {"", 2})));
    EXPECT_FALSE(rule->Validate(tree({"", 5}, {"", 3})));
    EXPECT_TRUE(rule->Validate(tree({"", 20}, {"", 3})));
    EXPECT_TRUE(rule->Validate(tree({"", 20}, {"", "no number"}))) << "the second is not looked at";
    EXPECT_TRUE(rule->Validate(tree({"", 20}, none)));
    EXPECT_THROW(rule->Validate(tree({"", 5}, none)), Core::PropertyException);
    EXPECT_THROW(rule->Validate(tree(none, {"", 2})), Core::PropertyException);
    EXPECT_THROW(rule->Validate(tree({"", "five"}, {"", 2})), Core::PropertyException);
    EXPECT_THROW(rule->Validate(tree({"", 5}, {"", "2"})), ConstraintIsNotApplicableForTypeException);
}

TEST(PairValidationRule, WithoutAConstraintFailsWhenItIsUsed) {
    const auto any = ConstraintRange::Create(int64_t{0}, int64_t{9}, int64_t{0});
    const Property tree("", 5);
    const auto first = PairValidationRule::Create("", nullptr, "", any);
    EXPECT_EQ(first->GetFirstConstraint(), nullptr);
    EXPECT_THROW(first->Validate(tree), Exception);
    EXPECT_THROW(PairValidationRule::Create("", any, "", nullptr)->Validate(tree), Exception);
}

TEST(FakeConstraintConsumer, GivesMinimumMiddleAndMaximumOfIntegers) {
    const struct {
        int64_t lo, hi, step, middle;
    } rows[] = {
        {0, 200, 0, 100},
        {1, 10, 3, 4},
        {-5, 0, 0, -2},
        {0, 9, 2, 4},
        {7, 7, 100, 7},
        {10, 0, 0, 5},
        {0, 10, -1, 5},
        {-9, 2, -2, -3},
        {0, 10, kMin, 0},
        {-9, 3, -4, -1},
        // Sums wrap around.
        {kMin, kMax, 0, 0},
        {kMax, kMax, 0, -1},
        {kMin, kMin, 0, 0},
        {kMin, 0, -1, kMin / 2},
        {kMin, kMin, -1, 0},
        {kMin, 0, kMin, 0},
        {kMax, kMax - 2, kMax, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.lo) + " " + std::to_string(row.hi) + " " + std::to_string(row.step));
        const auto consumer = FakeConstraintConsumer::Create();
        ConstraintRange::Create(row.lo, row.hi, row.step)->FillValueList(consumer);
        const Property result = consumer->GetResult();
        EXPECT_EQ(result.Name(), "");
        ASSERT_EQ(result.Count(), 3U);
        EXPECT_EQ(result[0], Property("minValue", row.lo));
        EXPECT_EQ(result[1], Property("midValue", row.middle));
        EXPECT_EQ(result[2], Property("maxValue", row.hi));
        EXPECT_EQ(result[0].Name() + result[1].Name() + result[2].Name(), "minValuemidValuemaxValue");
    }
}

TEST(FakeConstraintConsumer, RecordsOneDescriptionAfterTheOther) {
    const auto consumer = FakeConstraintConsumer::Create();
    EXPECT_TRUE(consumer->GetResult().IsEmpty());

    ConstraintRange::Create(0.0, 1.0, 4.0)->FillValueList(consumer);
    EXPECT_EQ(consumer->GetResult()["midValue"], Property("", 0.5));
    ConstraintRange::Create(int64_t{0}, int64_t{14}, int64_t{0})->FillValueList(consumer);
    EXPECT_EQ(consumer->GetResult()["midValue"].GetInt64(), 7) << "a real step is not recorded";

    consumer->AddValue("b", Property("x", 1));
    consumer->AddValue("a", Property("y", "2"));
    consumer->AddValue("b", Property("z", 3));
    consumer->EndValues();
    Property list;
    list.SetChild("b", 3);
    list.SetChild("a", "2");
    EXPECT_EQ(consumer->GetResult(), list) << "a list goes before bounds";

    consumer->Clear();
    EXPECT_THROW(consumer->GetResult(), boost::bad_any_cast) << "the kind of numbers stays, the bounds do not";
    consumer->SetMin(int64_t{3});
    EXPECT_THROW(consumer->GetResult(), boost::bad_any_cast);
    consumer->SetMax(2.0);
    EXPECT_THROW(consumer->GetResult(), boost::bad_any_cast) << "one of each kind";
    consumer->SetMax(int64_t{10});
    consumer->SetStep(int64_t{5});
    EXPECT_EQ(consumer->GetResult()["midValue"].GetInt64(), 8) << "3 + 5, on the grid";

    consumer->Clear();
    ConstraintRange::Create(int64_t{0}, int64_t{14}, int64_t{0})->FillValueList(consumer);
    EXPECT_EQ(consumer->GetResult()["midValue"].GetInt64(), 5) << "the step stays";
}

}  // namespace
}  // namespace Kestro::Conf
