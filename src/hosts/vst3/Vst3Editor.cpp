#include "hosts/vst3/Vst3Editor.h"

#include "hosts/shared/EditorSizes.h"
#include "hosts/vst3/Vst3View.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace qor::vst3 {

namespace {

constexpr CGSize kPreferred = host::EditorHost::kPreferredSize;

/// The windows of all instances share what Xlib has per process. Taken before an instance's own lock.
std::recursive_mutex& windows() {
    static std::recursive_mutex mutex;
    return mutex;
}

} // namespace

Result<std::shared_ptr<Vst3Editor>> Vst3Editor::create(host::UnitHost& unit, Actions actions) {
    std::shared_ptr<Vst3Editor> made(new Vst3Editor(unit, std::move(actions)));
    auto editor = host::EditorHost::create(made->model_);
    if (!editor) {
        return editor.error();
    }
    made->editor_ = std::move(editor).value();
    made->editor_->setEditSink(
        [self = made.get()](AUParameterAddress address, host::EditPhase phase, float value) {
            self->actions_.edited(address, phase, value);
            self->edits_.push_back({address, phase, value});
        });
    return made;
}

Vst3Editor::Vst3Editor(host::UnitHost& unit, Actions actions)
    : model_(unit), actions_(std::move(actions)), scale_(platform::desktopScale()),
      pixels_(host::editorPixels(scale_, scale_)) {
    options_.title = "QOR Limiter";
    options_.minimumSize = host::kLeastEditorSize;
}

Vst3Editor::~Vst3Editor() {
    end();
}

void Vst3Editor::end() {
    stopService();
    const std::lock_guard lock(windows());
    window_.reset();
    editor_.reset();
    actions_ = {};
}

void Vst3Editor::setView(Vst3View* view) {
    if (Vst3View* const before = std::exchange(view_, view); before != nullptr && view != nullptr) {
        before->loseController();
    }
}

Result<void> Vst3Editor::open(std::uintptr_t parent) {
    const std::lock_guard lock(windows());
    if (editor_ == nullptr || window_ != nullptr) {
        return NSError(platform::kWindowErrorDomain, platform::WindowFailed,
                       {{NSLocalizedDescriptionKey, "its window is open already, or the instance is gone."}});
    }
    options_.parent = parent;
    options_.scale = scale_;
    options_.size = kPreferred; // whose aspect is kept
    auto opened = host::EditorWindow::open(*editor_, options_);
    if (!opened) {
        return opened.error();
    }
    window_ = std::move(opened).value();
    setSize(pixels_);
    const host::EditorHost::Turn turn(*editor_);
    window_->native().show();
    return {};
}

void Vst3Editor::close() {
    const std::lock_guard lock(windows());
    window_.reset();
}

void Vst3Editor::setScale(double scale) {
    const std::lock_guard lock(windows());
    pixels_ = host::scaledSize(pixels_, scale / std::exchange(scale_, scale));
    if (window_ != nullptr) {
        const host::EditorHost::Turn turn(*editor_);
        window_->native().setScale(scale);
        setSize(pixels_);
    }
}

void Vst3Editor::setSize(const CGSize& pixels) {
    const std::lock_guard lock(windows());
    pixels_ = pixels;
    if (window_ != nullptr) {
        const host::EditorHost::Turn turn(*editor_);
        window_->native().setSize({.width = pixels.width / scale_, .height = pixels.height / scale_});
    }
}

CGSize Vst3Editor::adjusted(const CGSize& pixels) const noexcept {
    const double byWidth = pixels.width / kPreferred.width;
    const double byHeight = pixels.height / kPreferred.height;
    double factor = std::min(byWidth, byHeight);
    if (pixels.height == pixels_.height) {
        factor = byWidth;
    } else if (pixels.width == pixels_.width) {
        factor = byHeight;
    }
    return host::editorPixels(factor, scale_);
}

// A service thread must not wait for a main thread that may be waiting for it; the next call comes soon.
void Vst3Editor::pump() {
    const std::unique_lock lock(windows(), std::try_to_lock);
    if (lock.owns_lock() && window_ != nullptr) {
        window_->pump();
    }
}

void Vst3Editor::startService(Block<void()> call) {
    serviceCall_ = std::move(call);
    serviceThread_ = host::ServiceThread::acquire();
    serviceThread_->add(*this);
}

void Vst3Editor::stopService() {
    if (serviceThread_ != nullptr) {
        serviceThread_->remove(*this);
        serviceThread_.reset();
        serviceCall_ = nullptr;
    }
}

void Vst3Editor::service() {
    serviceCall_();
}

std::vector<Vst3Editor::Edit> Vst3Editor::takeEdits() {
    const std::unique_lock lock(windows(), std::try_to_lock);
    return lock.owns_lock() ? std::exchange(edits_, {}) : std::vector<Edit>{};
}

void Vst3Editor::told(const Edit& edit) const {
    if (edit.phase == host::EditPhase::end && actions_.gestureTold) {
        actions_.gestureTold(edit.address);
    }
}

void Vst3Editor::unitReplaced() {
    if (editor_ != nullptr) {
        editor_->unitReplaced();
    }
}

} // namespace qor::vst3
