#include "platform/view/UIViewController.h"

#include "platform/core/Log.h"
#include "platform/core/RunLoop.h"
#include "platform/view/UIWindow.h"

#include <utility>

namespace platform {

UIViewController::~UIViewController() {
    if (presented_) {
        presented_->presenting_ = nullptr;
        if (presented_->view_) {
            presented_->view_->removeFromSuperview();
        }
    }
    if (view_) {
        view_->controller_ = nullptr;
    }
}

const Ref<UIView>& UIViewController::view() {
    if (!view_) {
        loadView();
        viewDidLoad();
    }
    return view_;
}

void UIViewController::loadView() {
    setView(makeRef<UIView>());
}

void UIViewController::setView(Ref<UIView> view) {
    if (view_) {
        view_->controller_ = nullptr;
    }
    view_ = std::move(view);
    if (view_) {
        view_->controller_ = this;
    }
}

void UIViewController::prepare(const UIStoryboardSegue& /*segue*/, void* /*sender*/) {}

void UIViewController::presentViewController(const Ref<UIViewController>& controller, bool /*animated*/,
                                             Block<void()> completion) {
    if (!controller) {
        return;
    }
    UIViewController* top = this;
    while (top->presented_) {
        top = top->presented_.get();
    }
    UIWindow* window = top->isViewLoaded() ? top->view_->window() : nullptr;
    if (window == nullptr || !window->rootView()) {
        print("WARNING: A dialog can't be shown: its presenter is in no window.");
        return;
    }
    top->presented_ = controller;
    controller->presenting_ = top;
    const Ref<UIView>& cover = controller->view();
    const Ref<UIView>& content = window->rootView();
    content->addSubview(cover);
    cover->setFrame(content->bounds());
    controller->presentationDidBegin();
    if (completion) {
        dispatchAsyncMain(std::move(completion));
    }
}

void UIViewController::dismissViewController(bool animated, Block<void()> completion) {
    if (presenting_ == nullptr) {
        return;
    }
    const Ref<UIViewController> keep = shared_from_this();
    if (presented_) {
        presented_->dismissViewController(animated);
    }
    presentationWillEnd();
    view_->removeFromSuperview();
    presenting_->presented_.reset();
    presenting_ = nullptr;
    if (completion) {
        dispatchAsyncMain(std::move(completion));
    }
}

} // namespace platform
