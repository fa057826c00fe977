// Makes values, trees and presets of bytes and holds the helpers to the tests' laws. A broken law ends the program.

#include <bit>
#include <cstring>
#include <iterator>
#include <set>
#include <sstream>

#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"

#include "fuzz/Replay.h"
#include "tests/datahelpers/Laws.h"

namespace {

using namespace Kestro::Conf;
using Kestro::Core::Property;

/// Every helper, and the automatic one on top of it.
std::vector<Subject> MakeSubjects() {
    std::vector<Subject> subjects;
    for (const auto& [type, name] : AllKeys()) {
        subjects.emplace_back(type, name);
        subjects.emplace_back(CreateDataHelperAuto(type, name), name);
    }
    return subjects;
}
const std::vector<Subject>& Subjects() {
    static const std::vector<Subject> kSubjects = MakeSubjects();
    return kSubjects;
}

/// Every name, text and number that the helpers use.
std::vector<std::string> MakeWords() {
    std::set<std::string> words;
    for (const Subject& subject : Subjects()) {
        std::string text = subject.Answers();
        std::ranges::replace_if(
            text, [](char c) { return std::strchr("{}=,/:[]", c) != nullptr; }, ' ');
        std::istringstream stream(text);
        words.insert(std::istream_iterator<std::string>(stream), {});
    }
    return {words.begin(), words.end()};
}

/// Decisions out of bytes; zeros after the last.
struct Bytes {
    const uint8_t* next;
    std::size_t left;

    template <class T>
    T Take() {
        T value{};
        const std::size_t size = std::min(sizeof value, left);
        std::memcpy(&value, next, size);
        next += size;
        left -= size;
        return value;
    }
    std::size_t Below(std::size_t count) { return Take<uint16_t>() % count; }
    const std::string& Word() {
        static const std::vector<std::string> kWords = MakeWords();
        return kWords[Below(kWords.size())];
    }
    Property Value() {
        const auto bits = Take<int64_t>();
        const Property values[] = {Property("v", bits % 2 == 0),
                                   Property("v", bits),
                                   Property("v", bits % 1000),
                                   Property("v", std::bit_cast<double>(bits)),
                                   Property("v", Property::Ratio(bits >> 32, 1 + (bits & 0xFFFF))),
                                   Property("v", std::string(reinterpret_cast<const char*>(&bits), sizeof bits)),
                                   Property("v", Word()),
                                   Subjects()[Below(Subjects().size())].helper->GetDefaultSettings()};
        return values[Below(std::size(values))];
    }
    /// The tree with some nodes replaced, removed or added.
    Property Disturbed(Property tree) {
        for (std::size_t changes = Below(8); changes > 0; --changes) {
            Property* node = &tree;
            while (node->Count() > 0 && Below(4) != 0) node = &(*node)[Below(node->Count())];
            const std::string name = node->Count() > 0 && Below(2) != 0 ? (*node)[Below(node->Count())].Name() : Word();
            node->RemoveChild(name);
            if (Below(8) != 0) node->SetChild(name, Value());
        }
        return tree;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    GTEST_FLAG_SET(throw_on_failure, true);
    for (Bytes bytes{data, size}; bytes.left > 0;) {
        const Subject& subject = Subjects()[bytes.Below(Subjects().size())];
        const Property defaults = subject.helper->GetDefaultSettings();
        const Property value = bytes.Value();
        const bool isFormat = defaults.Name() == IPreset::KEY_FORMAT;
        const Property format = isFormat ? defaults : CreateDataHelper("Format", "matroska")->GetDefaultSettings();
        const Property tree = bytes.Disturbed(Laws::RuleTree(format, defaults.Name(), subject.name));
        Property codec(bytes.Below(2) != 0 ? "CodecAudio" : "CodecVideo");
        codec.CopyDataFrom(bytes.Disturbed(Laws::SourceValues(subject)));
        Laws::OfTrees(tree);
        for (const auto& [path, constraint] : subject.constraints) Laws::OfConstraints(*constraint, value);
        for (const auto& [path, rule] : subject.rules) {
            Laws::OfConstraints(*rule->GetSecondConstraint(), value);
            Laws::OfRules(*rule, tree);
        }
        Laws::OfSetups(subject, bytes.Disturbed(defaults), codec);
        Laws::OfQueries(bytes.Disturbed(defaults), codec);
    }
    return 0;
}
