// Makes views from their dictionaries.
#pragma once

#include "platform/view/LayoutBindings.h"
#include "platform/view/LayoutReader.h"

#include <set>
#include <string>

namespace platform {

/// One loading: makes the tree, connects it, and remembers what was connected.
class LayoutLoader {
public:
    LayoutLoader(const LayoutBindings& bindings, LayoutComplaint& complaint)
        : bindings_(bindings), complaint_(complaint) {}

    /// Absent after a complaint.
    Ref<UIView> makeView(const PropertyList& source, const std::string& path);
    /// Complains of outlets that nothing was connected to.
    void finish(const std::string& path);

private:
    void readLooks(LayoutReader& reader, UIView& view);
    void readContent(LayoutReader& reader, UIView& view);
    void readOutlet(LayoutReader& reader, const Ref<UIView>& view);
    void readActions(LayoutReader& reader, UIView& view);
    void readRecognizer(const PropertyList& source, const std::string& path, UIView& view);
    void readPins(LayoutReader& reader, UIView& view, UIView& parent);
    bool claim(const std::string& outlet, LayoutReader& reader);

    const LayoutBindings& bindings_;
    LayoutComplaint& complaint_;
    std::set<std::string> connected_;
};

} // namespace platform
