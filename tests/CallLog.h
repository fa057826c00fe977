#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>

#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/RefCounted.h"

#include "tests/Trees.h"

namespace Kestro::Conf {

/// Writes down every call that a constraint makes: "min 0, max 200, step 10" or "8000=8000, end". A real number is
/// marked by ~.
class CallLog final : public RefCounted<IConstraintConsumer> {
public:
    static std::string Of(const IPropertyConstraint& constraint) {
        const boost::intrusive_ptr<CallLog> log = new CallLog();
        constraint.FillValueList(log);
        return log->text_;
    }

    void Clear() override { Add("clear"); }
    void AddValue(const std::string& name, const Core::Property& value) override {
        const bool isNode = value.Type() == PropertyTypes::Node;
        Add(name + "=" + (isNode ? Core::Dump(value) : Core::PropertyValueToString(value)));
    }
    void EndValues() override { Add("end"); }
    void SetMax(int64_t value) override { Add("max " + std::to_string(value)); }
    void SetMax(double value) override { Add("max ~" + Core::PropertyValueToString({"", value})); }
    void SetMin(int64_t value) override { Add("min " + std::to_string(value)); }
    void SetMin(double value) override { Add("min ~" + Core::PropertyValueToString({"", value})); }
    void SetStep(int64_t value) override { Add("step " + std::to_string(value)); }
    void SetStep(double value) override { Add("step ~" + Core::PropertyValueToString({"", value})); }
    Core::Property GetResult() const override { return Core::Property(); }

private:
    void Add(const std::string& call) { text_ += (text_.empty() ? "" : ", ") + call; }

    std::string text_;
};

}  // namespace Kestro::Conf
