#pragma once

#include <cstdint>

#include "Kestro/IRefCountable.h"
#include "Kestro/RefCountImpl.h"

namespace Kestro {

/// Implements the counting of an interface that derives from IRefCountable: `class Rule final : public
/// RefCounted<IRule>`. Objects are created by a static Create and handed out as boost::intrusive_ptr.
template <class Interface>
class RefCounted : public Interface {
public:
    int32_t AddRef() const final { return refCount_.AddRefImpl(); }
    int32_t GetRefCount() const final { return refCount_.GetRefCountImpl(); }
    int32_t Release() const final {
        const int32_t count = refCount_.ReleaseImpl();
        if (count == 0) delete this;
        return count;
    }

private:
    RefCountImpl refCount_;
};

}  // namespace Kestro
