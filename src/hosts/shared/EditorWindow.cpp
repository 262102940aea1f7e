#include "hosts/shared/EditorWindow.h"

namespace qor::host {

Result<std::unique_ptr<EditorWindow>> EditorWindow::open(EditorHost& editor,
                                                         const NativeWindowOptions& options) {
    std::unique_ptr<EditorWindow> made(new EditorWindow(editor));
    {
        const EditorHost::Turn turn(editor);
        auto native = NativeWindow::open(made->content_, options);
        if (!native) {
            return native.error();
        }
        made->native_ = std::move(native).value();
    }
    editor.open(*made->content_);
    return made;
}

EditorWindow::~EditorWindow() {
    if (native_ != nullptr) {
        const EditorHost::Turn turn(editor_);
        native_.reset();
    }
    if (editor_.isOpen()) {
        editor_.close();
    }
}

bool EditorWindow::pump() {
    editor_.pump();
    const EditorHost::Turn turn(editor_);
    return native_->pump();
}

} // namespace qor::host
