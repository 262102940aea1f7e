// Whoever owns a view tree and knows what it is for.
#pragma once

#include "platform/view/UIView.h"

#include <memory>
#include <optional>
#include <string>

namespace platform {

/// A passage from one controller to another, as a layout names it.
struct UIStoryboardSegue {
    std::optional<std::string> identifier;
};

/// Lives in a `Ref`. Its view is loaded on first use. Main thread only.
class UIViewController : public std::enable_shared_from_this<UIViewController> {
public:
    UIViewController() = default;
    UIViewController(const UIViewController&) = delete;
    UIViewController& operator=(const UIViewController&) = delete;
    virtual ~UIViewController();

    /// The root view; loads it if that has not happened yet.
    const Ref<UIView>& view();
    bool isViewLoaded() const noexcept { return view_ != nullptr; }

    /// Makes the view tree; here an empty view. Must call `setView`.
    virtual void loadView();
    virtual void viewDidLoad() {}
    /// Behind each layout pass of the root view, before that of its subviews.
    virtual void viewDidLayoutSubviews() {}
    virtual void prepare(const UIStoryboardSegue& segue, void* sender);

    /// Shows another controller's view over the window's whole content, above what is presented already.
    /// `completion` runs from the main queue once it is shown. Without a window nothing happens but a line in
    /// the log. An animation plays no part here.
    void presentViewController(const Ref<UIViewController>& controller, bool animated,
                               Block<void()> completion = nullptr);
    /// Takes this controller away if it is presented, with all that it presents.
    void dismissViewController(bool animated, Block<void()> completion = nullptr);
    const Ref<UIViewController>& presentedViewController() const noexcept { return presented_; }
    UIViewController* presentingViewController() const noexcept { return presenting_; }

protected:
    void setView(Ref<UIView> view);
    /// Its view has been put over the content or is about to go.
    virtual void presentationDidBegin() {}
    virtual void presentationWillEnd() {}

private:
    Ref<UIView> view_;
    Ref<UIViewController> presented_;
    UIViewController* presenting_ = nullptr;
};

} // namespace platform
