// Shared and weak ownership under the project's names.
#pragma once

#include <memory>
#include <utility>

namespace platform {

/// Shared ownership of an object; empty means absent.
template <class T>
using Ref = std::shared_ptr<T>;

/// A reference that does not keep the object alive; `lock()` gives a `Ref`, empty if the object is gone.
template <class T>
using Weak = std::weak_ptr<T>;

template <class T, class... Args>
Ref<T> makeRef(Args&&... args) {
    return std::make_shared<T>(std::forward<Args>(args)...);
}

} // namespace platform
