#pragma once

#include <atomic>
#include <utility>

namespace Kestro {

namespace Unloading {

struct Held {
    Held() = default;
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    virtual ~Held() = default;

    Held* next = nullptr;
};

template <class T>
struct HeldValue final : Held {
    explicit HeldValue(T&& object) : value(std::move(object)) {}

    T value;
};

/// One list for each library, which shows it to no other.
[[gnu::visibility("hidden")]] inline std::atomic<Held*> held = nullptr;

/// The loader calls it after the destructors of all global objects, at the end of the program as well as before.
[[gnu::destructor]] static void End() noexcept {
    Held* object = held.exchange(nullptr);
    while (object != nullptr) delete std::exchange(object, object->next);
}

}  // namespace Unloading

/// Keeps the object until the library that calls this is unloaded: longer than every global object of the program,
/// whose destructor may still ask for it. `static const Table& table = UntilUnload(MakeTable());`
template <class T>
#if __has_cpp_attribute(gnu::no_dangling)
[[gnu::no_dangling]]  // what it refers to is not what it was given
#endif
T& UntilUnload(T object) {
    auto* made = new Unloading::HeldValue<T>(std::move(object));
    made->next = Unloading::held.load();
    while (!Unloading::held.compare_exchange_weak(made->next, made)) {
    }
    return made->value;
}

}  // namespace Kestro
