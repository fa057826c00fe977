// Makes presets of bytes and gives them to the helpers, their constraints and their rules: whatever they say, they say
// it by their answer or by an exception of the family.

#include <algorithm>
#include <bit>
#include <cmath>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Exception.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"

#include "Fuzzing.h"

namespace {

using namespace Kestro::Conf;
using Fuzzing::Input;
using Fuzzing::Require;
using Kestro::PropertyTypes;
using Kestro::Core::Property;

/// One helper, of the registry or a proxy of it, and all that it says without being asked about anything.
struct Subject {
    boost::intrusive_ptr<const IDataHelper> helper;
    Property defaults;
    ConstraintMap constraints;
    ValidationRuleList rules;
};

/// All helpers, and the words that they use.
struct Knowledge {
    std::vector<Subject> subjects;
    std::vector<std::string> paths;
    std::vector<std::string> texts;
};

/// Paths and texts of a tree, from its root's children on.
void Gather(const Property& node, const std::string& path, std::set<std::string>& paths, std::set<std::string>& texts) {
    for (const Property& child : node) {
        const std::string childPath = path.empty() ? child.Name() : path + Property::SEPARATOR + child.Name();
        paths.insert(childPath);
        if (child.Type() == PropertyTypes::String) texts.insert(child.GetString());
        Gather(child, childPath, paths, texts);
    }
}

void GatherDomain(const IPropertyConstraint& constraint, std::set<std::string>& texts) {
    const auto consumer = FakeConstraintConsumer::Create();
    constraint.FillValueList(consumer);
    std::set<std::string> names;
    Gather(consumer->GetResult(), {}, names, texts);
}

Knowledge GatherKnowledge() {
    std::vector<boost::intrusive_ptr<const IDataHelper>> helpers;
    for (const std::string& type :
         {IPreset::KEY_FORMAT, IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC}) {
        for (const auto& [name, helper] : GetAvailableDataHelpers(type)) {
            helpers.push_back(helper);
            helpers.push_back(CreateDataHelperAuto(type, name));
        }
    }
    for (const std::string& filter :
         {Kestro::Proc::IFilterResample::CLASS_ID, Kestro::Proc::IFilterAudioVolume::CLASS_ID,
          Kestro::Proc::IFilterAudioFormatter::CLASS_ID, Kestro::Proc::IFilterFrameRate::CLASS_ID,
          Kestro::Proc::IFilterResize::CLASS_ID}) {
        helpers.push_back(CreateDataHelper(filter, {}));
        helpers.push_back(CreateDataHelperAuto(filter, {}));
    }

    Knowledge knowledge;
    std::set<std::string> paths;
    std::set<std::string> texts;
    for (const auto& helper : helpers) {
        Subject subject{helper, helper->GetDefaultSettings(), {}, {}};
        helper->FillConstraints(subject.constraints);
        helper->FillValidationRules(subject.rules);
        Gather(subject.defaults, {}, paths, texts);
        for (const auto& [path, constraint] : subject.constraints) {
            paths.insert(path);
            GatherDomain(*constraint, texts);
        }
        for (const auto& [path, rule] : subject.rules) {
            paths.insert({rule->GetFirstName(), rule->GetSecondName()});
            GatherDomain(*rule->GetFirstConstraint(), texts);
            GatherDomain(*rule->GetSecondConstraint(), texts);
        }
        knowledge.subjects.push_back(std::move(subject));
    }
    knowledge.paths.assign(paths.begin(), paths.end());
    knowledge.texts.assign(texts.begin(), texts.end());
    return knowledge;
}

const Knowledge& All() {
    static const Knowledge kKnowledge = GatherKnowledge();
    return kKnowledge;
}

const std::string& AnyOf(Input& input, const std::vector<std::string>& words) {
    return words[input.Below(words.size())];
}

std::string Text(Input& input) { return input.Byte() % 4 != 0 ? AnyOf(input, All().texts) : input.Text(); }

/// A value of any kind, a small list included.
void SetValue(Input& input, Property& node) {
    switch (input.Byte() % 8) {
        case 0:
            node = input.Bool();
            break;
        case 1:
            node = input.Real();
            break;
        case 2:
            node = input.Integer();
            break;
        case 3: {
            const int64_t numerator = std::max(input.Integer(), -std::numeric_limits<int64_t>::max());
            const int64_t denominator = input.Integer() & std::numeric_limits<int64_t>::max();
            node = boost::rational<int64_t>(numerator, std::max<int64_t>(denominator, 1));
            break;
        }
        case 4:
            node.CopyDataFrom(Property());
            break;
        case 5:
            node.CopyDataFrom(All().subjects[input.Below(All().subjects.size())].defaults);
            break;
        default:
            node = Text(input);
    }
}

/// The node at a path, made where it is missing.
Property& Reach(Property& root, std::string_view path) {
    Property* node = &root;
    while (!path.empty()) {
        const std::string segment(path.substr(0, path.find('/')));
        path.remove_prefix(std::min(segment.size() + 1, path.size()));
        node = node->FindByPath(segment) != nullptr ? &node->ChildByPath(segment) : &node->SetChild(segment);
    }
    return *node;
}

/// Changes some of the settings that any helper knows.
void Disturb(Input& input, Property& tree) {
    for (std::size_t changes = input.Below(16); changes > 0; --changes) {
        Property& parent = Reach(tree, AnyOf(input, All().paths));
        if (input.Byte() % 4 == 0 && parent.Count() > 0) {
            parent.RemoveChild(std::as_const(parent)[input.Below(parent.Count())].Name());
        } else {
            SetValue(input, parent);
        }
    }
}

/// A codec, format or filter node: the defaults of that helper or of any other, disturbed.
Property Settings(Input& input, const Subject& subject) {
    Property settings =
        input.Byte() % 4 != 0 ? subject.defaults : All().subjects[input.Below(All().subjects.size())].defaults;
    Disturb(input, settings);
    return settings;
}

/// A stream's codec node as the application has it: with a name of its own and the source's values.
Property CodecNode(Input& input, const Subject& subject) {
    static const std::string kNames[] = {IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO,
                                         IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO, std::string()};
    Property codec(kNames[input.Below(std::size(kNames))]);
    if (input.Bool()) codec.CopyDataFrom(subject.defaults);
    codec.SetChild(IFormatCodecVideo::TAG_WIDTH, 1920);
    codec.SetChild(IFormatCodecVideo::TAG_HEIGHT, 1080);
    codec.SetChild(IFormatCodecVideo::TAG_FPS, boost::rational<int64_t>(25));
    codec.SetChild(IFormatCodecAudio::TAG_SAMPLE_RATE, 48'000);
    codec.SetChild(IFormatCodecAudio::TAG_LAYOUT, IFormatCodecAudio::TAG_CH_LAYOUT_STEREO);
    codec.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    codec.SetChild(IFormatCodec::TAG_CODEC_ID, Text(input));
    Disturb(input, codec);
    return codec;
}

/// The tree that rules run over: the default settings of some helpers side by side, and the streams of the last of them
/// that has streams.
Property RuleTree(Input& input, const Subject& subject) {
    Property root;
    const auto add = [&root](const Property& settings) {
        root.SetChild(settings.Name(), settings);
        if (settings.ChildExists(IPreset::KEY_STREAMS))
            root.SetChild(IPreset::KEY_STREAMS, settings[IPreset::KEY_STREAMS]);
    };
    for (std::size_t others = input.Below(6); others > 0; --others) {
        add(All().subjects[input.Below(All().subjects.size())].defaults);
    }
    add(subject.defaults);
    Disturb(input, root);
    return root;
}

/// Equality in which a NaN equals itself.
bool IsSame(const Property& a, const Property& b) {
    if (a.Type() != b.Type()) return false;
    if (a.Type() == PropertyTypes::Double) {
        return std::bit_cast<std::uint64_t>(a.GetDouble()) == std::bit_cast<std::uint64_t>(b.GetDouble());
    }
    if (a.Type() != PropertyTypes::Node) return a == b;
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Property& mine, const Property& theirs) {
        return mine.Name() == theirs.Name() && IsSame(mine, theirs);
    });
}

/// Whether the call came to its end; what it may throw is caught.
template <class Call>
bool Ends(Call call) {
    try {
        call();
        return true;
    } catch (const Kestro::Exception& exception) {
        Require(exception.what() != nullptr && *exception.what() != '\0', "an exception has a message");
        Require(boost::get_error_info<Kestro::TagCallStack>(exception) != nullptr, "an exception has a call stack");
        return false;
    }
}

void Check(const IPropertyConstraint& constraint, const Property& value) {
    bool isValid = false;
    Ends([&] { isValid = constraint.IsValid(value); });
    Property corrected(value);
    bool isCorrected = false;
    Require(Ends([&] { isCorrected = constraint.CorrectValue(corrected); }), "a correction does not throw");
    Require(corrected.Name() == value.Name(), "a corrected value keeps its name");
    if (isValid || !isCorrected) Require(IsSame(corrected, value), "a value that is not corrected is left alone");
    if (isCorrected) {
        Require(constraint.IsValid(corrected), "a corrected value is valid");
        Require(corrected.Type() != PropertyTypes::Double || std::isfinite(corrected.GetDouble()),
                "a corrected value is finite");
    }
}

void CheckConstraints(Input& input, const Subject& subject) {
    Property value("value");
    SetValue(input, value);
    for (const auto& [path, constraint] : subject.constraints) Check(*constraint, value);
    for (const auto& [path, rule] : subject.rules) {
        Check(*rule->GetFirstConstraint(), value);
        Check(*rule->GetSecondConstraint(), value);
    }
}

void CheckRules(Input& input, const Subject& subject) {
    const Property tree = RuleTree(input, subject);
    for (const auto& entry : subject.rules) {
        Ends([&] { entry.second->Validate(tree); });
    }
}

void CheckSetup(Input& input, const Subject& subject) {
    const Property preset = Settings(input, subject);
    Property codec = CodecNode(input, subject);
    const std::string name = codec.Name();
    Ends([&] { subject.helper->ApplyPresetSettings(preset, codec); });
    if (!Ends([&] { subject.helper->CorrectFormatCodec(codec); })) return;
    const Property repaired(codec);
    Require(Ends([&] { subject.helper->CorrectFormatCodec(codec); }), "what is repaired passes");
    Require(IsSame(codec, repaired), "what is repaired is left alone");
    Require(codec.Name() == name, "a codec node keeps its name");
}

void CheckQueries(Input& input, const Subject& subject) {
    const std::string type = Text(input);
    const std::string name = Text(input);
    Ends([&] { GetAvailableDataHelpers(type); });
    Ends([&] { CreateDataHelper(type, name); });
    Ends([&] { CreateDataHelperAuto(type, name); });
    Ends([&] { FormatHasGlobalHeader(name); });
    Ends([&] { CodecHasGlobalHeader(name); });
    const auto file = IFormatFile::Create(Settings(input, subject));
    const Property codec = CodecNode(input, subject);
    CodecIsSupported(file, IFormatCodecVideo::Create(codec));
    CodecIsSupported(file, IFormatCodecAudio::Create(codec));
    CodecIsSupported(file, IFormatCodecSubtitle::Create(codec));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    while (!input.IsAtEnd()) {
        const Subject& subject = All().subjects[input.Below(All().subjects.size())];
        switch (input.Byte() % 4) {
            case 0:
                CheckConstraints(input, subject);
                break;
            case 1:
                CheckRules(input, subject);
                break;
            case 2:
                CheckSetup(input, subject);
                break;
            default:
                CheckQueries(input, subject);
        }
    }
    return 0;
}
