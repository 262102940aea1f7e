#include "hosts/lv2/Lv2Editor.h"

#include <mutex>

namespace qor::lv2 {

Result<std::unique_ptr<Lv2Editor>> Lv2Editor::open(std::uintptr_t parent, double scale,
                                                   Lv2EditorActions actions) {
    auto loop = std::make_unique<RunLoop>();
    Ref<MeterUnit> unit;
    {
        const std::lock_guard process(host::wholeProcessMutex());
        const RunLoop::Scope scope(*loop);
        auto made = MeterUnit::make();
        if (!made) {
            return made.error();
        }
        unit = std::move(made).value();
    }
    std::unique_ptr<Lv2Editor> editor(new Lv2Editor(std::move(unit), std::move(loop), std::move(actions)));
    auto hosted = host::EditorHost::create(editor->model_);
    if (!hosted) {
        return hosted.error();
    }
    editor->editor_ = std::move(hosted).value();
    editor->editor_->setEditSink([self = editor.get()](AUParameterAddress address, host::EditPhase phase,
                                                       float value) { self->tell(address, phase, value); });
    platform::NativeWindowOptions options;
    options.parent = parent;
    options.title = "QOR Limiter";
    options.size = host::EditorHost::kPreferredSize;
    options.scale = scale;
    auto window = host::EditorWindow::open(*editor->editor_, options);
    if (!window) {
        return window.error();
    }
    editor->window_ = std::move(window).value();
    const host::EditorHost::Turn turn(*editor->editor_);
    editor->window_->native().show();
    return editor;
}

Lv2Editor::~Lv2Editor() {
    window_.reset();
    editor_.reset();
    const std::lock_guard process(host::wholeProcessMutex());
}

void Lv2Editor::setSize(double width, double height) {
    const host::EditorHost::Turn turn(*editor_);
    const double scale = window_->native().scale();
    window_->native().setSize({.width = width / scale, .height = height / scale});
}

// Outside the editor's turns, so that nobody takes it for a person's move and sends it back.
void Lv2Editor::portIs(std::uint32_t port, float value) {
    const std::lock_guard lock(model_.mutex());
    const RunLoop::Scope scope(*unitLoop_);
    model_.portIs(port, value);
    unitLoop_->pump();
}

void Lv2Editor::tell(AUParameterAddress address, host::EditPhase phase, float value) {
    const std::uint32_t port = kFirstParameter + static_cast<std::uint32_t>(address);
    if (phase == host::EditPhase::value) {
        actions_.write(port, value);
    } else if (actions_.touch) {
        actions_.touch(port, phase == host::EditPhase::begin);
    }
}

} // namespace qor::lv2
