#include "platform/view/HeadlessWindow.h"

#include "platform/draw/RecordingContext.h"

#include <utility>

namespace platform {

HeadlessWindow::HeadlessWindow(const CGSize& size, double scale)
    : own_(std::make_unique<Time>()), loop_(own_->loop), clock_(own_->clock),
      window_(makeRef<UIWindow>(size, scale)) {}

HeadlessWindow::HeadlessWindow(const CGSize& size, RunLoop& loop, ManualClock& clock, double scale)
    : loop_(loop), clock_(clock), window_(makeRef<UIWindow>(size, scale)) {}

HeadlessWindow::~HeadlessWindow() {
    const RunLoop::Scope scope(loop_);
    window_.reset();
}

void HeadlessWindow::show(Ref<UIView> rootView) {
    const RunLoop::Scope scope(loop_);
    window_->setRootView(std::move(rootView));
    settle();
}

void HeadlessWindow::resize(const CGSize& size) {
    const RunLoop::Scope scope(loop_);
    window_->setSize(size);
    settle();
}

void HeadlessWindow::run(double seconds) {
    const double end = clock_.now() + seconds;
    settle();
    for (auto due = loop_.nextDue(); due && *due <= end; due = loop_.nextDue()) {
        clock_.set(*due > clock_.now() ? *due : clock_.now());
        settle();
    }
    clock_.set(end);
    settle();
}

void HeadlessWindow::settle() {
    const RunLoop::Scope scope(loop_);
    loop_.pump();
    if (!window_->display().isEmpty()) {
        ++passes_;
    }
}

void HeadlessWindow::down(const CGPoint& at, int touch) {
    const RunLoop::Scope scope(loop_);
    window_->touchDown(touch, at);
    settle();
}

void HeadlessWindow::move(const CGPoint& to, int touch) {
    const RunLoop::Scope scope(loop_);
    window_->touchMoved(touch, to);
    settle();
}

void HeadlessWindow::up(const CGPoint& at, int touch) {
    const RunLoop::Scope scope(loop_);
    window_->touchUp(touch, at);
    settle();
}

void HeadlessWindow::cancel() {
    const RunLoop::Scope scope(loop_);
    window_->cancelTouches();
    settle();
}

void HeadlessWindow::drag(const CGPoint& from, const CGPoint& to, int steps) {
    down(from);
    for (int step = 1; step <= steps; ++step) {
        const double part = static_cast<double>(step) / steps;
        move(step == steps
                 ? to
                 : CGPoint{.x = from.x + (to.x - from.x) * part, .y = from.y + (to.y - from.y) * part});
    }
    up(to);
}

void HeadlessWindow::click(const CGPoint& at) {
    down(at);
    up(at);
}

void HeadlessWindow::doubleClick(const CGPoint& at) {
    click(at);
    run(0.1);
    click(at);
}

bool HeadlessWindow::wheel(const CGPoint& at, double notches, std::uint32_t modifierFlags) {
    const RunLoop::Scope scope(loop_);
    const bool used = window_->wheel(at, 0.0, notches, modifierFlags);
    settle();
    return used;
}

bool HeadlessWindow::key(UIKey key, std::uint32_t modifierFlags) {
    const RunLoop::Scope scope(loop_);
    const bool used = window_->key({.key = key, .text = "", .modifierFlags = modifierFlags});
    settle();
    return used;
}

void HeadlessWindow::type(std::string_view text) {
    const RunLoop::Scope scope(loop_);
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + 1;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            ++end;
        }
        window_->key({.key = UIKey::text, .text = std::string(text.substr(i, end - i))});
        i = end;
    }
    settle();
}

UIImage HeadlessWindow::picture() {
    settle();
    return window_->picture().image(window_->scale());
}

std::uint32_t HeadlessWindow::pixel(int x, int y) {
    return picture().pixel(x, y);
}

std::vector<std::string> HeadlessWindow::recordedOperations() {
    settle();
    RecordingContext record;
    window_->drawHierarchy(record);
    return record.lines();
}

} // namespace platform
