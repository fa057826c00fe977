#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Core/PropertyValueToString.h"

#include "tests/Failure.h"
#include "tests/Trees.h"

namespace Kestro::Core {
namespace {

using Ratio = Property::Ratio;

constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr std::nullopt_t kThrows = std::nullopt;

/// root{a{x=1,y=text},b=2,c}
Property Tree(const std::string& text = "text") {
    Property root = TreeOf("root{a{x=1,y},b=2,c}");
    root["a"].SetChild("y", text);
    return root;
}

/// What a read gives, nullopt where it throws as documented.
template <class T>
std::optional<T> Read(const Property& value, T (Property::*get)() const) {
    try {
        return (value.*get)();
    } catch (const PropertyException& e) {
        EXPECT_EQ(InfoOf<TagDetails>(e), PropertyValueToString(value));
        EXPECT_NE(InfoOf<TagDescription>(e).value_or("").find(value.Name()), std::string::npos);
        return std::nullopt;
    }
}

TEST(PropertyConversions, EveryKindIntoEveryOther) {
    Property node("n");
    node.SetChild("child", 1);
    const auto text = [](const char* value) { return Property("t", value); };
    const auto real = [](double value) { return Property("d", value); };
    const struct {
        Property value;
        std::optional<bool> asBool;
        std::optional<double> asDouble;
        std::optional<int64_t> asInt64;
        std::optional<Ratio> asRatio;
    } rows[] = {
        {Property("e"), kThrows, kThrows, kThrows, kThrows},
        {node, kThrows, kThrows, kThrows, kThrows},
        {Property("b", true), true, 1.0, 1, Ratio(1)},
        {Property("b", false), false, 0.0, 0, Ratio(0)},
        {Property("i", -3), true, -3.0, -3, Ratio(-3)},
        {Property("i", kMin), true, -0x1p63, kMin, Ratio(kMin)},
        {Property("i", kMax), true, 0x1p63, kMax, Ratio(kMax)},
        {real(2.5), true, 2.5, 2, Ratio(5, 2)},
        {real(-2.9), true, -2.9, -2, Ratio(-29, 10)},
        {real(-0.0), false, -0.0, 0, Ratio(0)},
        {real(29.97), true, 29.97, 29, Ratio(2997, 100)},
        {real(1e18), true, 1e18, 1'000'000'000'000'000'000, Ratio(1'000'000'000'000'000'000)},
        {real(0x1p63), true, 0x1p63, kThrows, kThrows},
        {real(-0x1p63), true, -0x1p63, kMin, Ratio(kMin)},
        {real(std::nextafter(0x1p63, 0)), true, 0x1p63 - 1024, kMax - 1023, Ratio(kMax - 1023)},
        {real(std::nextafter(-0x1p63, -kInf)), true, -0x1p63 - 2048, kThrows, kThrows},
        {real(1e-300), true, 1e-300, 0, kThrows},
        {real(kInf), true, kInf, kThrows, kThrows},
        {Property("r", Ratio(30000, 1001)), true, 30000 / 1001.0, 29, Ratio(30000, 1001)},
        {Property("r", Ratio(-7, 2)), true, -3.5, -3, Ratio(-7, 2)},
        {Property("r", Ratio(kMin)), true, -0x1p63, kMin, Ratio(kMin)},
        {text("25"), true, 25.0, 25, Ratio(25)},
        {text("2.5"), true, 2.5, 2, Ratio(5, 2)},
        {text("-12.50e-1"), true, -1.25, -1, Ratio(-5, 4)},
        {text("1e3"), true, 1000.0, 1000, Ratio(1000)},
        {text("0e999999999"), false, 0.0, 0, Ratio(0)},
        {text("30000/1001"), true, 30000 / 1001.0, 29, Ratio(30000, 1001)},
        {text("6/-4"), true, -1.5, -1, Ratio(-3, 2)},
        {text("true"), true, 1.0, 1, Ratio(1)},
        {text("false"), false, 0.0, 0, Ratio(0)},
        {text("-9223372036854775808"), true, -0x1p63, kMin, Ratio(kMin)},
        {text("9223372036854775808"), true, 0x1p63, kThrows, kThrows},
        {text("-9223372036854775808/2"), true, -0x1p62, kMin / 2, Ratio(kMin / 2)},
        {text("9223372036854775807/9223372036854775807"), true, 1.0, 1, Ratio(1)},
        {text("0.1e-30"), true, 1e-31, 0, kThrows},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Dump(row.value));
        EXPECT_EQ(Read(row.value, &Property::GetBool), row.asBool);
        EXPECT_EQ(Read(row.value, &Property::GetDouble), row.asDouble);
        EXPECT_EQ(Read(row.value, &Property::GetInt64), row.asInt64);
        EXPECT_EQ(Read(row.value, &Property::GetRatio), row.asRatio);
        if (row.value.Type() == PropertyTypes::String) {
            EXPECT_EQ(row.value.GetString(), PropertyValueToString(row.value));
        } else {
            EXPECT_THROW(row.value.GetString(), PropertyException);
        }
    }
    EXPECT_TRUE(std::isnan(Property("d", kNan).GetDouble()));
    std::vector<Property> unreadable = {Property("d", kNan), Property("t", std::string("1\0", 2)), text("")};
    for (const char* other :
         {"1e400", "1e99999999999", "1/0", "-9223372036854775808/-1", "1/-9223372036854775808", "9223372036854775808/2",
          "1.5/2", "1/2/3", "0x10", " 1", "1 ", "+1", "-", ".", "1e", "1,5", "nan", "inf", "True"}) {
        unreadable.push_back(text(other));
    }
    for (const Property& value : unreadable) {
        SCOPED_TRACE(Dump(value));
        EXPECT_EQ(Read(value, &Property::GetDouble).has_value(), value.Type() == PropertyTypes::Double);
        EXPECT_EQ(Read(value, &Property::GetBool), kThrows);
        EXPECT_EQ(Read(value, &Property::GetInt64), kThrows);
        EXPECT_EQ(Read(value, &Property::GetRatio), kThrows);
    }
}

TEST(PropertyConversions, PrintedTextsReadBack) {
    const auto text = [](const auto& value) { return Property("", PropertyValueToString(Property("", value))); };
    for (const bool value : {true, false}) EXPECT_EQ(text(value).GetBool(), value);
    for (const int64_t value : {kMin, kMin + 1, int64_t{-1}, int64_t{0}, kMax})
        EXPECT_EQ(text(value).GetInt64(), value);
    for (const double value : {0.1, -1 / 3.0, 1e21, 1e-7, DBL_MAX, DBL_MIN, DBL_TRUE_MIN, 0x1p63, 30000 / 1001.0})
        EXPECT_EQ(text(value).GetDouble(), value);
    for (const Ratio& value : {Ratio(30000, 1001), Ratio(kMin), Ratio(-1, kMax), Ratio(kMax, kMax - 1), Ratio(0)})
        EXPECT_EQ(text(value).GetRatio(), value);
    EXPECT_EQ(PropertyValueToString(Property("empty")) + PropertyValueToString(Tree()), "");
}

// One change of root{a{x=1,y=text},b=2,c} and the tree after it.
struct Change {
    const char* what;
    void (*apply)(Property& root);
    const char* result;
};
#define DOES(action) #action, [](Property & root) { static_cast<void>(action); }

void CheckChange(const Change& change, const std::string& text) {
    SCOPED_TRACE(change.what);
    std::string expected = change.result;
    while (expected.find("text") != std::string::npos) expected.replace(expected.find("text"), 4, text);
    Property root = Tree(text);
    change.apply(root);
    EXPECT_EQ(Dump(root), expected);
    const Property copy(root);
    EXPECT_EQ(Dump(copy), expected);
    EXPECT_TRUE(copy == root);
    for (std::size_t i = 0; i < root.Count(); ++i) EXPECT_EQ(&root[root[i].Name()], &root[i]) << "names are unique";
}

void CheckChanges(const std::vector<Change>& changes) {
    for (const Change& change : changes) {
        CheckChange(change, "Text");
        CheckChange(change, std::string(50, 'T'));  // kept outside of its std::string
    }
}

TEST(PropertyChanges, KeepPlacesAndNames) {
    CheckChanges({
        {DOES(root.SetChild("a", "v")), "root{a=v,b=2,c}"},
        {DOES(root.SetChild("b")), "root{a{x=1,y=text},b,c}"},
        {DOES(root.SetChild("d", Ratio(1, 2))), "root{a{x=1,y=text},b=2,c,d=1/2}"},
        {DOES(root.SetChild("b", Property("other", 5)).SetChild("z", 1.5)), "root{a{x=1,y=text},b{z=1.5},c}"},
        {DOES(root["b"] = Property("a", 7)), "root{a{x=1,y=text},b=7,c}"},
        {DOES(root = Property("other", 7)), "other=7"},
        {DOES(root = Property(root["b"])), "b=2"},
        {DOES(root["a"] = 3.5), "root{a=3.5,b=2,c}"},
        {DOES(root["b"].SetChild("x", true)), "root{a{x=1,y=text},b{x=true},c}"},
        {DOES((root["b"].SetChild("x", true), root["b"].RemoveAll())), "root{a{x=1,y=text},b,c}"},
        {DOES(root.CopyDataFrom(Property("other", 7))), "root=7"},
        {DOES(root.RemoveChild("a")), "root{b=2,c}"},
        {DOES((root.RemoveChild("c"), root.SetChild("d", 1))), "root{a{x=1,y=text},b=2,d=1}"},
        {DOES(root.RemoveChild("x")), "root{a{x=1,y=text},b=2,c}"},
        {DOES((root.RemoveAll(), root.SetChild("d", 1))), "root{d=1}"},
        {DOES(std::swap(root["a"], root["b"])), "root{a=2,b{x=1,y=text},c}"},
    });
}

TEST(PropertyChanges, TakeEveryKindOfIntegerAndText) {
    const auto check = [](const auto& value, PropertyTypes type, const std::string& printed) {
        SCOPED_TRACE(printed);
        Property root;
        root.SetChild("set", value);
        root.SetChild("made", Property("made", value));
        root.SetChild("assigned") = value;
        for (const Property& child : root) {
            EXPECT_EQ(child.Type(), type) << child.Name();
            EXPECT_EQ(PropertyValueToString(child), printed) << child.Name();
        }
    };
    enum { kUnscoped = 7 };
    check(kUnscoped, PropertyTypes::Int64, "7");
    check(short{-7}, PropertyTypes::Int64, "-7");
    check(-7, PropertyTypes::Int64, "-7");
    check(UINT_MAX, PropertyTypes::Int64, "4294967295");
    check(LONG_MIN, PropertyTypes::Int64, "-9223372036854775808");
    check(LLONG_MIN, PropertyTypes::Int64, "-9223372036854775808");
    check(static_cast<unsigned long>(kMax), PropertyTypes::Int64, "9223372036854775807");
    check(static_cast<unsigned long long>(kMax), PropertyTypes::Int64, "9223372036854775807");
    check(true, PropertyTypes::Bool, "true");
    check(0.5F, PropertyTypes::Double, "0.5");
    check("text", PropertyTypes::String, "text");
    check(std::string_view("text!", 4), PropertyTypes::String, "text");

    const auto tooLarge = static_cast<uint64_t>(kMax) + 1;
    Property root = Tree();
    EXPECT_THROW(Property("b", tooLarge), PropertyException);
    EXPECT_THROW(root["b"] = tooLarge, PropertyException);
    try {
        root.SetChild("a", tooLarge);
        FAIL() << "kept what does not fit";
    } catch (const PropertyException& e) {
        EXPECT_EQ(InfoOf<TagDetails>(e), "9223372036854775808");
    }
    EXPECT_TRUE(root == Tree());
}

TEST(PropertyChanges, TakeTheirValuesFromTheSameTree) {
    const char* const unchanged = "root{a{x=1,y=text},b=2,c}";
    const char* const rootInB = "root{a{x=1,y=text},b{a{x=1,y=text},b=2,c},c}";
    CheckChanges({
        {DOES(root = static_cast<const Property&>(root)), unchanged},
        {DOES(root = static_cast<Property&&>(root)), unchanged},
        {DOES(root.CopyDataFrom(root)), unchanged},
        {DOES(root = root["a"]), "a{x=1,y=text}"},
        {DOES(root = std::move(root["a"])), "a{x=1,y=text}"},
        {DOES(root = std::move(root["a"]["y"])), "y=text"},
        {DOES(root.CopyDataFrom(root["a"])), "root{x=1,y=text}"},
        {DOES(root["b"] = root), rootInB},
        {DOES(root["b"].CopyDataFrom(root)), rootInB},
        {DOES(root.SetChild("b", root)), rootInB},
        // What holds the target cannot leave: it is copied.
        {DOES(root["b"] = std::move(root)), rootInB},
        {DOES(root["a"].SetChild("x", std::move(root))), "root{a{x{a{x=1,y=text},b=2,c},y=text},b=2,c}"},
        {DOES(root.SetChild("r", std::move(root))), "{r{a{x=1,y=text},b=2,c}}"},
        {DOES(root["b"] = std::move(root["a"]["y"])), "root{a{x=1,y},b=text,c}"},
        {DOES(root.SetChild("b", root["a"])), "root{a{x=1,y=text},b{x=1,y=text},c}"},
        {DOES(root.SetChild("b", std::move(root["a"]))), "root{a,b{x=1,y=text},c}"},
        {DOES(root.SetChild("a", root["a"])), unchanged},
        {DOES(root.SetChild("a", root["a"]["x"])), "root{a=1,b=2,c}"},
        {DOES(root.SetChild("a", std::move(root["a"]["y"]))), "root{a=text,b=2,c}"},
        {DOES(root["a"].SetChild("x", root["a"])), "root{a{x{x=1,y=text},y=text},b=2,c}"},

        // Texts and names that go with what is replaced.
        {DOES(root.SetChild("a", root["a"]["y"].GetString())), "root{a=text,b=2,c}"},
        {DOES(root.SetChild("a", root["a"]["y"].GetString().c_str())), "root{a=text,b=2,c}"},
        {DOES(root["a"] = root["a"]["y"].GetString()), "root{a=text,b=2,c}"},
        {DOES(root["a"]["y"].SetChild("own", root["a"]["y"].GetString())), "root{a{x=1,y{own=text}},b=2,c}"},
        {DOES(root["a"]["y"].SetChild(root["a"]["y"].GetString(), 1)), "root{a{x=1,y{text=1}},b=2,c}"},
        {DOES(root.SetChild(root["a"].Name(), 5)), "root{a=5,b=2,c}"},
        {DOES((root["a"].SetChild("a"), root.SetChild(root["a"]["a"].Name(), 5))), "root{a=5,b=2,c}"},
        {DOES(root.RemoveChild(root["b"].Name())), "root{a{x=1,y=text},c}"},
        {DOES(root["a"].RemoveChild(root["a"]["y"].Name())), "root{a{x=1},b=2,c}"},
        {DOES((root["a"].SetChild("a"), root.RemoveChild(root["a"]["a"].Name()))), "root{b=2,c}"},
        {DOES(root.SetChild(root["a"].Name(), root["a"]["y"].GetString())), "root{a=text,b=2,c}"},
        {DOES(root.SetChild(root["c"].Name(), std::move(root["a"]))), "root{a,b=2,c{x=1,y=text}}"},
        {DOES(root.SetChild(root["a"].Name(), std::move(root["a"]))), "root{a{x=1,y=text},b=2,c}"},
        {DOES(root.SetChild(root.Name(), std::move(root))), "{root{a{x=1,y=text},b=2,c}}"},
        {DOES(root.SetChild(root["a"]["y"].GetString())), "root{a{x=1,y=text},b=2,c,text}"},
        {DOES(([&root, other = Property("d", 1)]() mutable { root.SetChild(other.Name(), std::move(other)); }())),
         "root{a{x=1,y=text},b=2,c,d=1}"},
        {DOES(root.SetChild(root["a"]["y"].GetString(), std::move(root["a"]["y"]))), "root{a{x=1,y},b=2,c,text=text}"},
        {DOES(root.SetChild(root["a"]["y"].GetString(), std::move(root["a"]))), "root{a,b=2,c,text{x=1,y=text}}"},
    });
}

TEST(PropertyChanges, LeaveReferencesToOthersValid) {
    Property root = Tree();
    Property& a = root["a"];
    Property& c = root["c"];
    root.SetChild("b", root);
    for (int i = 0; i < 1000; ++i) root.SetChild("n" + std::to_string(i), i);
    root.RemoveChild("b");
    root.SetChild("n5", "replaced");
    c = "still here";
    EXPECT_EQ(&root["a"], &a);
    EXPECT_EQ(Dump(a), "a{x=1,y=text}");
    EXPECT_EQ(root["c"].GetString(), "still here");
}

TEST(PropertyChanges, AMovedFromNodeIsEmpty) {
    Property root = Tree();
    const Property child(std::move(root["a"]));
    EXPECT_EQ(Dump(child), "a{x=1,y=text}");
    EXPECT_EQ(Dump(root), "root{a,b=2,c}") << "a child stays where it is";
    const Property moved(std::move(root));
    EXPECT_EQ(Dump(moved), "root{a,b=2,c}");
    EXPECT_TRUE(root.IsEmpty());  // NOLINT(bugprone-use-after-move): that is what is asked here
    EXPECT_EQ(root.Name(), "");
    root.SetChild("again", 1);
    EXPECT_EQ(Dump(root), "{again=1}");
}

TEST(PropertyComparison, TypeValueAndChildrenCount) {
    const Property tree = Tree();
    Property other = tree;
    EXPECT_TRUE(tree == other);
    EXPECT_TRUE(Property("a", 1) == Property("b", 1)) << "the roots' own names do not count";
    const Change changes[] = {
        {DOES(root["a"]["x"] = 1.0), ""},
        {DOES(root["a"]["x"] = true), ""},
        {DOES(root["c"] = ""), ""},
        {DOES(root["c"].SetChild("d")), ""},
        {DOES(root.RemoveChild("c")), ""},
        {DOES((root.RemoveChild("c"), root.SetChild("C"))), ""},
        {DOES((root.RemoveChild("b"), root.SetChild("b", 2))), ""},  // now behind c
    };
    for (const Change& change : changes) {
        other = tree;
        change.apply(other);
        EXPECT_FALSE(tree == other) << change.what;
        EXPECT_FALSE(other == tree) << change.what;
    }
}

/// A child without the field that is looked for stands before the others.
Property Streams() {
    Property root = TreeOf(
        "preset{Streams{plain=audio,other{Rate=8000},0{TypeId=video,Codec{Id=h264},Rate=48000},"
        "1{TypeId=audio,Codec{Id=aac},Rate=48000},2{TypeId=audio,Codec{Id=mp3},Rate=48000}},{=unnamed},odd{k}}");
    root["odd"]["k"].SetChild("TypeId", "a=b");
    return root;
}

TEST(PropertyPaths, LeadToNodes) {
    Property root = Streams();
    for (const auto& [path, name] : std::vector<std::pair<std::string, std::string>>{
             {"", "preset"},
             {"Streams", "Streams"},
             {"Streams/1/Codec/Id", "Id"},
             {"Streams/TypeId=audio", "1"},
             {"Streams/TypeId=video/Codec", "Codec"},
             {"Streams/Rate=48000", "0"},
             {"odd/TypeId=a=b", "k"},
         }) {
        EXPECT_EQ(root.ChildByPath(path).Name(), name) << path;
        EXPECT_EQ(root.FindByPath(path), &root.ChildByPath(path)) << path;
    }
    EXPECT_EQ(&root.ChildByPath(""), &root);
    EXPECT_EQ(root.ChildByPath("/").GetString(), "unnamed") << "a separator stands between two empty names";
    EXPECT_EQ(root.ChildByPath("Streams/TypeId=audio/Codec/Id").GetString(), "aac") << "the first that fits";
    root.ChildByPath("Streams/TypeId=audio/Codec/Id") = "flac";
    EXPECT_EQ(root["Streams"]["1"]["Codec"]["Id"].GetString(), "flac");
}

TEST(PropertyPaths, EveryCharacterOfANameCounts) {
    for (std::size_t size = 1; size <= 20; ++size) {
        const std::string name(size, 'n');
        Property root;
        root.SetChild(name, name).SetChild("below", 1);
        EXPECT_NE(root.FindByPath(name), nullptr);
        EXPECT_NE(root.FindByPath(name + "/below"), nullptr);
        for (const std::string& other : {name + "n", name + "xbelow", name + std::string(1, '\0')}) {
            EXPECT_EQ(root.FindByPath(other), nullptr) << other;
            EXPECT_EQ(root.FindByPath(other + "/below"), nullptr) << other;
        }
        for (std::size_t at = 0; at < size; ++at) {
            std::string other = name;
            other[at] = 'm';
            EXPECT_EQ(root.FindByPath(other), nullptr) << other;
            EXPECT_FALSE(root.ChildExists(other)) << other;
            EXPECT_FALSE(NodeOf("", {{name, 1}}) == NodeOf("", {{other, 1}})) << other;
            EXPECT_FALSE(Property("", name) == Property("", other)) << other;
        }
    }
}

TEST(PropertyPaths, MissingNodesAreNamed) {
    Property root = Streams();
    for (const auto& [path, segment] : std::vector<std::pair<std::string, std::string>>{
             {"Nope", "Nope"},
             {"Streams/Nope/Codec/Id", "Nope"},
             {"Streams/1/Codec/Id/deeper", "deeper"},
             {"Streams/TypeId=subtitle/Codec", "TypeId=subtitle"},
             {"Streams/=audio", "=audio"},
             {"Streams/TypeId=/Codec", "TypeId="},
             {"Streams/TypeId=Audio", "TypeId=Audio"},
             {"Streams/Rate=44100", "Rate=44100"},
             {"Streams/", ""},
             {"/Streams", "Streams"},
             {"Streams//1", ""},
             {"streams", "streams"},
         }) {
        SCOPED_TRACE(path);
        EXPECT_EQ(root.FindByPath(path), nullptr);
        const std::string message = "There is no \"" + segment + "\" at the path \"" + path + "\"";
        const auto check = [&, &path = path](const Exception& e) {
            EXPECT_EQ(InfoOf<TagDescription>(e), message);
            EXPECT_EQ(InfoOf<TagDetails>(e), path);
        };
        ExpectFailure<PropertyException>([&, &path = path] { root.ChildByPath(path); }, check);
        ExpectFailure<PropertyException>([&, &path = path] { std::as_const(root).ChildByPath(path); }, check);
    }
    const std::string before = Dump(root);
    const auto names = [](const char* path) {
        return [path](const Exception& e) { EXPECT_EQ(InfoOf<TagDetails>(e), path) << e.what(); };
    };
    ExpectFailure<PropertyException>([&] { root["x"] = 1; }, names("preset/x"));
    ExpectFailure<PropertyException>([&] { std::as_const(root)["x"].Name(); }, names("preset/x"));
    ExpectFailure<PropertyException>([] { Property()["x"].Name(); }, names("x"));
    EXPECT_EQ(root[std::size_t{2}].Name(), "odd");
    EXPECT_THROW(root[std::size_t{3}], PropertyException);
    EXPECT_THROW(root[std::numeric_limits<std::size_t>::max()], PropertyException);
    EXPECT_EQ(Dump(root), before) << "reading creates nothing";
}

/// A chain of nodes, far deeper than a stack of 8 MiB.
Property Chain() {
    Property root("root");
    Property* node = &root;
    for (int i = 0; i < 1'000'000; ++i) node = &node->SetChild("x");
    *node = 1;
    return root;
}

TEST(PropertyDepth, ADeepTreeIsCopiedComparedMovedAndDestroyed) {
    Property root = Chain();
    Property copy = root;
    EXPECT_TRUE(copy == root);
    copy["x"].CopyDataFrom(root);
    EXPECT_FALSE(copy == root);
    Property moved = std::move(root);
    EXPECT_EQ(moved["x"]["x"].Count(), 1U);
    moved["x"]["x"].RemoveAll();
    EXPECT_EQ(Dump(moved), "root{x{x}}");
}

TEST(PropertyWidth, AWideNodeIsWhatANarrowOneIs) {
    // Against a list of names, while children come and go.
    Property root("root");
    std::vector<std::string> names;
    std::minstd_rand random;  // NOLINT(cert-msc51-cpp): the same changes every time
    for (int step = 0; step < 4000; ++step) {
        const std::string name = "name of child " + std::to_string(random() % 150);
        const auto known = std::ranges::find(names, name);
        ASSERT_EQ(root.ChildExists(name), known != names.end());
        if (random() % 3 == 0) {
            root.RemoveChild(known != names.end() ? root[name].Name() : name);
            if (known != names.end()) names.erase(known);
        } else {
            root.SetChild(name, step);
            if (known == names.end()) names.push_back(name);
            ASSERT_EQ(root.ChildByPath(name).GetInt64(), step);
        }
        if (step % 100 != 0) continue;
        Property moved = std::move(root);
        root = moved;
        ASSERT_TRUE(root == moved && root.Count() == names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            ASSERT_EQ(root[i].Name(), names[i]);
            ASSERT_EQ(&root[names[i]], &root[i]);
            ASSERT_EQ(root.FindByPath(names[i]), &root[i]);
        }
        ASSERT_THROW(root[names.size()], PropertyException);
    }
}

TEST(PropertyWidth, TakesLinearTime) {
    constexpr int kMany = 300'000;  // minutes, if one search went through all of them
    Property root;
    for (int i = 0; i < kMany; ++i) root.SetChild(std::to_string(i), i);
    const Property copy(root);
    int64_t sum = 0;
    for (int i = 0; i < kMany; ++i) {
        const std::string name = std::to_string(i);
        sum += copy[name].GetInt64() + copy.ChildByPath(name).GetInt64() - 2 * copy[static_cast<size_t>(i)].GetInt64();
    }
    EXPECT_EQ(sum, 0);
}

TEST(PropertyWidth, ManyThreadsLookUpAtFirst) {
    for (int round = 0; round < 20; ++round) {
        Property built;
        for (int i = 0; i < 200; ++i) built.SetChild(std::to_string(i), i);
        const Property shared(built);  // has not been asked for anything yet
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&shared] {
                for (int i = 0; i < 200; ++i) EXPECT_EQ(shared[std::to_string(i)].GetInt64(), i);
            });
        }
        for (std::thread& thread : threads) thread.join();
    }
}

}  // namespace
}  // namespace Kestro::Core
