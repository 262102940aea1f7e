// A view tree written down in a property list.
#pragma once

#include "platform/core/Result.h"
#include "platform/files/PropertyList.h"
#include "platform/files/URL.h"
#include "platform/view/LayoutBindings.h"

#include <string>
#include <string_view>

namespace platform {

inline constexpr const char* LayoutErrorDomain = "LayoutErrorDomain";

/// The file holds one dictionary; each of its keys is a view tree. Anything that the loader doesn't know (a
/// key, a class, an outlet, an action) and any value of the wrong kind is refused with file and key path,
/// such as "EditorLayout.plist: panel.subviews[2].class: ...".
class LayoutResource {
public:
    /// Reads a file.
    static Result<LayoutResource> load(const URL& file);
    /// From a list in memory; `name` stands for the file in messages.
    LayoutResource(std::string name, PropertyList content);

    /// Makes the tree under a key and connects it. Fails if an outlet is left over.
    Result<Ref<UIView>> instantiate(std::string_view key, const LayoutBindings& bindings) const;

private:
    std::string name_;
    PropertyList content_;
};

} // namespace platform
