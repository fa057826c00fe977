#include "Kestro/Conf/DataHelpers/Sheet.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "Kestro/Conf/DataHelpers/ConstraintChannelLayout.h"
#include "Kestro/Conf/DataHelpers/ConstraintFlag.h"
#include "Kestro/Conf/DataHelpers/ConstraintMethod.h"
#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSampleFormat.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/SettingPath.h"
#include "Kestro/Conf/DataHelpers/SizeConstraints.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

namespace Kestro::Conf {

namespace {

using ConstraintPtr = boost::intrusive_ptr<IPropertyConstraint>;

struct ConstraintMaker {
    ConstraintPtr operator()(std::monostate) const { return {}; }
    ConstraintPtr operator()(const Range& range) const {
        return ConstraintRange::Create(range.lo, range.hi, range.step);
    }
    ConstraintPtr operator()(const Integers& list) const {
        ConstraintSet::Named<int64_t> values;
        values.reserve(list.values.size());
        for (const int64_t value : list.values) values.emplace_back(std::to_string(value), value);
        return ConstraintSet::Create(values);
    }
    ConstraintPtr operator()(const NamedIntegers& list) const {
        ConstraintSet::Named<int64_t> values;
        values.reserve(list.values.size());
        for (const NamedInteger& entry : list.values) values.emplace_back(entry.name, entry.value);
        return ConstraintSet::Create(values);
    }
    ConstraintPtr operator()(Flag flag) const { return new ConstraintFlag(flag.value); }
    ConstraintPtr operator()(const Texts& list) const {
        ConstraintSet::Named<std::string> values;
        values.reserve(list.values.size());
        for (const Text& value : list.values) values.emplace_back(value.get(), value.get());
        return ConstraintSet::Create(values);
    }
    ConstraintPtr operator()(const Rates& list) const {
        ConstraintSet::Named<boost::rational<int64_t>> values;
        values.reserve(list.values.size());
        for (const FrameRate& rate : list.values) {
            values.emplace_back(rate.name, boost::rational<int64_t>(rate.numerator, rate.denominator));
        }
        return ConstraintSet::Create(values);
    }
    ConstraintPtr operator()(const Layouts& list) const {
        std::vector<std::string> names;
        names.reserve(list.values.size());
        for (const ChannelLayout layout : list.values) names.push_back(LayoutRecord::Find(layout)->name);
        return new ConstraintChannelLayout(std::move(names));
    }
    ConstraintPtr operator()(AnyLayout) const {
        std::vector<std::string> names;
        names.reserve(LayoutRecord::All().size());
        for (const LayoutRecord& record : LayoutRecord::All()) names.push_back(record.name);
        return new ConstraintChannelLayout(std::move(names));
    }
    ConstraintPtr operator()(const SampleFormatList& list) const {
        ConstraintSampleFormat::Formats formats;
        formats.reserve(list.values.size());
        for (const SampleFormats format : list.values)
            formats.emplace_back(format, SampleFmtRecord::Find(format)->name);
        return new ConstraintSampleFormat(std::move(formats));
    }
    ConstraintPtr operator()(const SamplesOf& list) const {
        std::vector<SampleFormats> formats(list.values.begin(), list.values.end());
        for (const SampleFormats format : list.values) {
            const SampleFormats counterpart = SampleFmtRecord::Find(format)->alternative;
            if (std::ranges::find(formats, counterpart) == formats.end()) formats.push_back(counterpart);
        }
        return (*this)(SampleFormatList{formats});
    }
    ConstraintPtr operator()(const FrameSizes& list) const { return SizeConstraints::Create(list.values); }
    ConstraintPtr operator()(EvenSize) const {
        return ConstraintMethod::CreateEven(IPropertyConstraint::DESCRIPTION_ID_EVEN_SIZE);
    }
    ConstraintPtr operator()(const Satisfying& condition) const {
        return new ConstraintMethod(condition.accepts, condition.description);
    }
    ConstraintPtr operator()(const Shared& shared) const { return shared.constraint(); }
};

}  // namespace

bool IsFrameRate(const Core::Property& value) {
    if (value.Type() != PropertyTypes::Ratio) return false;
    return value.GetRatio().numerator() > 0 ||
           value.GetRatio() == Proc::SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE;
}

std::string SettingKey(Node node, const std::string& tag) {
    switch (node) {
        case Node::Own:
        case Node::InFormat:
            break;
        case Node::Options:
            return JoinPath(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, tag);
        case Node::Resampler:
            return JoinPath(JoinPath(Proc::IFilterResample::CLASS_ID, Proc::IResample::CLASS_ID), tag);
        case Node::FrameRate:
            return JoinPath(Proc::IFilterFrameRate::CLASS_ID, tag);
        case Node::Resizer:
            return JoinPath(JoinPath(Proc::IFilterResize::CLASS_ID, Proc::IResize::CLASS_ID), tag);
        case Node::FirstVideo:
            return JoinPath(JoinPath(JoinPath(IPreset::KEY_STREAMS, "0"), IPreset::KEY_FILTER_VIDEO_CODEC), tag);
    }
    return tag;
}

std::string SettingPath(const std::string& ownNode, Node node, const std::string& tag) {
    const bool isOwn = node == Node::Own || node == Node::Options;
    return isOwn ? JoinPath(ownNode, SettingKey(node, tag)) : SettingKey(node, tag);
}

void WriteDefault(Core::Property& own, const SettingRow& row) {
    const auto write = [&](const auto& value) {
        using T = std::decay_t<decltype(value)>;
        if constexpr (!std::is_same_v<T, std::monostate>) {
            const std::string& options = IFormatCodec::TAG_CODEC_OPTIONS_ENCODE;
            if (row.node == Node::Options && !own.ChildExists(options)) own.SetChild(options);
            Core::Property& parent = row.node == Node::Options ? own[options] : own;
            if constexpr (std::is_same_v<T, Text>) {
                parent.SetChild(row.tag, value.get());
            } else {
                parent.SetChild(row.tag, value);
            }
        }
    };
    std::visit(write, row.initial);
}

void AddConstraints(std::span<const SettingRow> rows, ConstraintMap& constraints) {
    for (const SettingRow& row : rows) {
        if (auto constraint = MakeConstraint(row.allowed)) constraints[SettingKey(row.node, row.tag)] = constraint;
    }
}

boost::intrusive_ptr<IPropertyConstraint> MakeConstraint(const Allowed& allowed) {
    return std::visit(ConstraintMaker(), allowed);
}

std::vector<std::string> ToStrings(std::span<const Text> texts) { return {texts.begin(), texts.end()}; }

}  // namespace Kestro::Conf
