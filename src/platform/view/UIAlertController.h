// A dialog with a title, a message, text fields and buttons.
#pragma once

#include "platform/view/UIButton.h"
#include "platform/view/UILabel.h"
#include "platform/view/UITextField.h"
#include "platform/view/UIViewController.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

enum class UIAlertControllerStyle : std::int64_t { actionSheet = 0, alert = 1 };
enum class UIAlertActionStyle : std::int64_t { default_ = 0, cancel = 1, destructive = 2 };

/// One answer. Its handler runs when the dialog is gone.
class UIAlertAction {
public:
    UIAlertAction(std::optional<std::string> title, UIAlertActionStyle style,
                  Block<void(UIAlertAction&)> handler = nullptr);

    const std::optional<std::string>& title() const noexcept { return title_; }
    UIAlertActionStyle style() const noexcept { return style_; }
    const Block<void(UIAlertAction&)>& handler() const noexcept { return handler_; }

private:
    std::optional<std::string> title_;
    UIAlertActionStyle style_;
    Block<void(UIAlertAction&)> handler_;
};

/// Tab moves the focus, enter presses the focused button or the first one that is not for cancelling, escape
/// the one for cancelling (the only one, if there is but one).
class UIAlertController : public UIViewController {
public:
    UIAlertController(std::optional<std::string> title, std::optional<std::string> message,
                      UIAlertControllerStyle preferredStyle);

    const std::optional<std::string>& title() const noexcept { return title_; }
    const std::optional<std::string>& message() const noexcept { return message_; }
    UIAlertControllerStyle preferredStyle() const noexcept { return style_; }
    void addAction(Ref<UIAlertAction> action);
    const std::vector<Ref<UIAlertAction>>& actions() const noexcept { return actions_; }
    void addTextFieldWithConfigurationHandler(const Block<void(UITextField&)>& handler);
    /// Absent if none was added.
    std::optional<std::vector<Ref<UITextField>>> textFields() const;

    void loadView() override;

protected:
    void presentationDidBegin() override;

private:
    void choose(const Ref<UIAlertAction>& action);
    bool keyDown(const UIKeyEvent& event);
    void place(const CGRect& box);
    CGSize boxSize() const;

    std::optional<std::string> title_;
    std::optional<std::string> message_;
    UIAlertControllerStyle style_;
    std::vector<Ref<UIAlertAction>> actions_;
    std::vector<Ref<UITextField>> fields_;
    std::vector<Ref<UIButton>> buttons_; // one an action
    Ref<UILabel> titleLabel_;
    Ref<UILabel> messageLabel_;
};

} // namespace platform
