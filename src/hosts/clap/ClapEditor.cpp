#include "hosts/clap/ClapEditor.h"

#include "hosts/shared/EditorSizes.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <utility>

namespace qor::clap {

namespace {

constexpr CGSize kPreferred = host::EditorHost::kPreferredSize;

std::uint32_t wholePixels(double length) {
    return static_cast<std::uint32_t>(length);
}

} // namespace

ClapEditor::ClapEditor(host::UnitHost& unit, ClapHost& host, ClapEditQueue& edits, ClapPulse& pulse)
    : unit_(unit), host_(host), edits_(edits), pulse_(pulse), model_(unit) {
    const std::lock_guard lock(unit_.mutex());
    unit_.setOnUnitReplaced([this] { unitReplaced(); });
}

ClapEditor::~ClapEditor() {
    destroy();
    const std::lock_guard lock(unit_.mutex());
    unit_.setOnUnitReplaced(nullptr);
}

bool ClapEditor::isSupported(const char* api, bool /*isFloating*/) noexcept {
    return api != nullptr && std::strcmp(api, CLAP_WINDOW_API_X11) == 0;
}

bool ClapEditor::create(bool isFloating) {
    if (created_) {
        return false;
    }
    if (editor_ == nullptr) {
        auto made = host::EditorHost::create(model_);
        if (!made) {
            host_.log(LogSeverity::error,
                      ("QOR Limiter's editor: " + made.error().localizedDescription()).c_str());
            return false;
        }
        const std::lock_guard lock(unit_.mutex()); // the service thread may put a fresh unit in place
        editor_ = std::move(made).value();
        editor_->setEditSink([this](AUParameterAddress address, host::EditPhase phase, float value) {
            tell(address, phase, value);
        });
    }
    options_ = {};
    options_.title = "QOR Limiter";
    options_.size = kPreferred; // whose aspect is kept
    options_.minimumSize = host::kLeastEditorSize;
    options_.keyboardOnDemand = isFloating; // otherwise the host's space bar would end in this window
    scale_ = hostScale_ ? *hostScale_ : platform::desktopScale();
    pixels_ = host::editorPixels(scale_, scale_);
    floating_ = isFloating;
    created_ = true;
    return true;
}

void ClapEditor::destroy() {
    close();
    created_ = false;
}

bool ClapEditor::setScale(double scale) {
    if (!(scale >= 0.25 && scale <= 8.0)) {
        return false;
    }
    hostScale_ = scale;
    pixels_ = host::scaledSize(size(), scale / std::exchange(scale_, scale));
    if (window_ != nullptr) {
        {
            const host::EditorHost::Turn turn(*editor_);
            window_->native().setScale(scale);
            resizeWindow();
        }
        if (!floating_) {
            host_.requestResize(wholePixels(pixels_.width), wholePixels(pixels_.height));
        }
    }
    return true;
}

CGSize ClapEditor::size() const {
    // A floating window is its user's to resize.
    return window_ != nullptr && floating_ ? window_->native().pixelSize() : pixels_;
}

CGSize ClapEditor::adjusted(const CGSize& pixels) const {
    return host::editorPixels(std::min(pixels.width / kPreferred.width, pixels.height / kPreferred.height),
                              scale_);
}

void ClapEditor::setSize(const CGSize& pixels) {
    pixels_ = pixels;
    if (window_ != nullptr) {
        const host::EditorHost::Turn turn(*editor_);
        resizeWindow();
    }
}

void ClapEditor::resizeWindow() {
    window_->native().setSize({.width = pixels_.width / scale_, .height = pixels_.height / scale_});
}

bool ClapEditor::setParent(std::uintptr_t window) {
    if (floating_ || window_ != nullptr) {
        return false;
    }
    options_.parent = window;
    return open();
}

bool ClapEditor::setTransient(std::uintptr_t window) {
    options_.transientFor = window;
    if (window_ != nullptr) {
        const host::EditorHost::Turn turn(*editor_);
        window_->native().setTransientFor(window);
    }
    return floating_;
}

void ClapEditor::suggestTitle(const char* title) {
    options_.title = title;
    if (window_ != nullptr) {
        const host::EditorHost::Turn turn(*editor_);
        window_->native().setTitle(options_.title);
    }
}

bool ClapEditor::open() {
    options_.scale = scale_;
    auto opened = host::EditorWindow::open(*editor_, options_);
    if (!opened) {
        host_.log(LogSeverity::error,
                  ("QOR Limiter's editor: " + opened.error().localizedDescription()).c_str());
        return false;
    }
    window_ = std::move(opened).value();
    {
        const host::EditorHost::Turn turn(*editor_);
        resizeWindow();
    }
    pulse_.beginWindow(window_->native().fileDescriptor());
    return true;
}

void ClapEditor::close() {
    if (window_ != nullptr) {
        pulse_.endWindow(); // first, as the window closes the descriptor
        window_.reset();
    }
}

bool ClapEditor::show() {
    if (window_ == nullptr && (!floating_ || !open())) {
        return false;
    }
    const host::EditorHost::Turn turn(*editor_);
    window_->native().show();
    return true;
}

bool ClapEditor::hide() {
    if (window_ == nullptr) {
        return false;
    }
    const host::EditorHost::Turn turn(*editor_);
    window_->native().hide();
    return true;
}

void ClapEditor::pump() {
    if (window_ == nullptr) {
        return;
    }
    bool isClosed = false;
    window_->native().onClose = [&isClosed] { isClosed = true; };
    const bool isThere = window_->pump();
    window_->native().onClose = nullptr;
    if (!isThere) {
        close();
        host_.guiClosed(true);
    } else if (isClosed) {
        hide();
        host_.guiClosed(false);
    }
}

void ClapEditor::unitReplaced() {
    if (editor_ != nullptr) {
        editor_->unitReplaced();
    }
}

void ClapEditor::tell(AUParameterAddress address, host::EditPhase phase, float value) {
    if (edits_.push({static_cast<clap_id>(address), phase, static_cast<double>(value)})) {
        host_.requestFlush();
    }
}

} // namespace qor::clap
