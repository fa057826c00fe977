#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

#include "Kestro/Exception.h"

namespace Kestro {

/// The text that an exception carries under a tag; nullopt when it does not carry it.
template <class Tag>
std::optional<typename Tag::value_type> InfoOf(const Exception& exception) {
    const auto* info = boost::get_error_info<Tag>(exception);
    return info != nullptr ? std::optional(*info) : std::nullopt;
}

/// Runs the action, which must throw an E, and hands the exception, as its base, to `check`.
template <class E, class Action, class Check>
void ExpectFailure(Action&& action, Check&& check) {
    try {
        std::forward<Action>(action)();
    } catch (const Exception& e) {
        EXPECT_NE(dynamic_cast<const E*>(&e), nullptr) << boost::diagnostic_information(e);
        EXPECT_FALSE(InfoOf<TagCallStack>(e).value_or("").empty());
        EXPECT_GT(InfoOf<boost::throw_line>(e).value_or(0), 0);
        check(e);
        return;
    }
    ADD_FAILURE() << "no exception";
}

/// As above, of an exception whose message is this one.
template <class E, class Action>
void ExpectMessage(Action&& action, const std::string& description) {
    ExpectFailure<E>(std::forward<Action>(action),
                     [&](const Exception& e) { EXPECT_EQ(InfoOf<TagDescription>(e), description); });
}

/// Where an exception says that it was thrown.
struct Place {
    std::string file;
    int line = 0;

    bool operator==(const Place&) const = default;
    friend void PrintTo(const Place& place, std::ostream* out) { *out << place.file << ":" << place.line; }
};

inline Place PlaceOf(const Exception& exception) {
    return {InfoOf<boost::throw_file>(exception).value_or(""), InfoOf<boost::throw_line>(exception).value_or(0)};
}

}  // namespace Kestro
