#include "hosts/clap/ClapEditor.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace qor::clap {

namespace {

constexpr CGSize kPreferred = host::EditorHost::kPreferredSize;
constexpr double kLeast = 0.5; // of the preferred size
constexpr double kMost = 4.0;

std::uint32_t pixels(double points, double scale) {
    return static_cast<std::uint32_t>(std::lround(points * scale));
}

} // namespace

ClapEditor::ClapEditor(host::UnitHost& unit, ClapHost& host, ClapEditQueue& edits, ClapPulse& pulse)
    : host_(host), edits_(edits), pulse_(pulse), model_(unit) {
    unit.setOnUnitReplaced([this] { unitReplaced(); });
}

ClapEditor::~ClapEditor() {
    destroy();
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
        editor_ = std::move(made).value();
        editor_->setEditSink([this](AUParameterAddress address, host::EditPhase phase, float value) {
            tell(address, phase, value);
        });
    }
    options_ = {};
    options_.title = "QOR Limiter";
    options_.size = kPreferred;
    options_.minimumSize = {.width = kPreferred.width * kLeast, .height = kPreferred.height * kLeast};
    options_.scale = scale_;
    options_.keyboardOnDemand = isFloating; // otherwise the host's space bar would end in this window
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
    scale_ = scale;
    options_.scale = scale;
    if (window_ != nullptr) {
        const host::EditorHost::Turn turn(*editor_);
        window_->native().setScale(scale);
    }
    return true;
}

void ClapEditor::size(std::uint32_t& width, std::uint32_t& height) const {
    if (window_ != nullptr) {
        const CGSize size = window_->native().pixelSize();
        width = pixels(size.width, 1.0);
        height = pixels(size.height, 1.0);
        return;
    }
    const double scale = scale_ > 0.0 ? scale_ : 1.0;
    width = pixels(options_.size.width, scale);
    height = pixels(options_.size.height, scale);
}

void ClapEditor::adjust(std::uint32_t& width, std::uint32_t& height) {
    const double wanted = std::min(width / kPreferred.width, height / kPreferred.height);
    const double factor = std::clamp(wanted, kLeast, kMost);
    width = pixels(kPreferred.width, factor);
    height = pixels(kPreferred.height, factor);
}

bool ClapEditor::setSize(std::uint32_t width, std::uint32_t height) {
    const double scale = window_ != nullptr ? window_->native().scale() : (scale_ > 0.0 ? scale_ : 1.0);
    options_.size = {.width = width / scale, .height = height / scale};
    if (window_ != nullptr) {
        const host::EditorHost::Turn turn(*editor_);
        window_->native().setSize(options_.size);
    }
    return true;
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
    auto opened = host::EditorWindow::open(*editor_, options_);
    if (!opened) {
        host_.log(LogSeverity::error,
                  ("QOR Limiter's editor: " + opened.error().localizedDescription()).c_str());
        return false;
    }
    window_ = std::move(opened).value();
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
