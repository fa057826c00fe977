#include "Kestro/Core/ChildIndex.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>

namespace Kestro::Core {

namespace {

uint64_t DrawKey() noexcept {
    try {
        std::random_device device;
        return (uint64_t{device()} << 32) | device();
    } catch (const std::exception&) {
        return 0x9E37'79B9'7F4A'7C15;  // without a source of chance it is fast, only not against everybody
    }
}

}  // namespace

std::size_t ChildIndex::Hash::operator()(std::string_view name) const noexcept {
    // The name as a polynomial of the key, modulo the prime 2^61 - 1: two names fall together for few keys alone.
    __extension__ using Wide = unsigned __int128;
    constexpr uint64_t kPrime = (uint64_t{1} << 61) - 1;
    static const uint64_t key = DrawKey() % kPrime;
    uint64_t hash = name.size();
    while (!name.empty()) {
        uint64_t block = 0;
        const std::size_t size = std::min<std::size_t>(name.size(), 7);
        std::memcpy(&block, name.data(), size);
        name.remove_prefix(size);
        const Wide product = static_cast<Wide>(hash) * key + block;
        hash = static_cast<uint64_t>(product & kPrime) + static_cast<uint64_t>(product >> 61);
        if (hash >= kPrime) hash -= kPrime;
    }
    return hash;
}

ChildIndex::ChildIndex(Property* first, std::size_t count) {
    byName_.reserve(count);
    places_.reserve(count);
    for (Property* child = first; child != nullptr; child = child->next_) Append(child);
}

Property* ChildIndex::Find(std::string_view name) const noexcept {
    const auto found = byName_.find(name);
    return found != byName_.end() ? found->second : nullptr;
}

void ChildIndex::Append(Property* child) {
    byName_.emplace(child->Name(), child);
    places_.push_back(child);
}

Property* ChildIndex::Remove(const Property* child) noexcept {
    byName_.erase(child->Name());
    const auto place = std::find(places_.begin(), places_.end(), child);
    Property* const before = place != places_.begin() ? *(place - 1) : nullptr;
    places_.erase(place);
    return before;
}

}  // namespace Kestro::Core
