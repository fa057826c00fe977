#pragma once

#include <cstdint>

#include "Kestro/Export.h"

namespace Kestro {

/// An object that lives as long as its handles (`boost::intrusive_ptr`).
///
/// Counting is const, so that handles to const objects can be copied. Implementations keep the count in a RefCountImpl
/// and usually derive from RefCounted, which writes the three operations once.
class KESTRO_COREINT_API IRefCountable {
public:
    virtual ~IRefCountable();

    /// Adds a reference; returns the new count.
    virtual int32_t AddRef() const = 0;
    /// The present count; only a hint while other threads hold handles.
    virtual int32_t GetRefCount() const = 0;
    /// Drops a reference and destroys the object with the last one; returns the new count.
    virtual int32_t Release() const = 0;

protected:
    IRefCountable() = default;
    IRefCountable(const IRefCountable&) = default;
    IRefCountable& operator=(const IRefCountable&) = default;
};

/// Connect the counting to boost::intrusive_ptr.
inline void intrusive_ptr_add_ref(const IRefCountable* object) { object->AddRef(); }
inline void intrusive_ptr_release(const IRefCountable* object) { object->Release(); }

}  // namespace Kestro
