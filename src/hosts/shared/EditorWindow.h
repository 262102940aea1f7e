// An editor in a native window, embedded or free-standing.
#pragma once

#include "hosts/shared/EditorHost.h"
#include "platform/window/Window.h"

namespace qor::host {

/// Open from its making to its end; the editor itself lives on. Main thread. The editor must outlive it.
class EditorWindow {
public:
    /// Hidden at first. Fails without a display or the parent.
    static Result<std::unique_ptr<EditorWindow>> open(EditorHost& editor, const NativeWindowOptions& options);
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    /// From the host's idle call, timer or loop, some fifty times a second and when the window's descriptor
    /// is readable: the editor's tasks and timers, input, and what has changed. Returns false once the window
    /// is gone. `onClose` and `onResize` of the native window are called from here, and must not destroy this
    /// object.
    bool pump();
    NativeWindow& native() noexcept { return *native_; }

private:
    explicit EditorWindow(EditorHost& editor)
        : editor_(editor), content_(makeRef<UIWindow>(EditorHost::kPreferredSize)) {}

    EditorHost& editor_;
    Ref<UIWindow> content_;
    std::unique_ptr<NativeWindow> native_;
};

} // namespace qor::host
