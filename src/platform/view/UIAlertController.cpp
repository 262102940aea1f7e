#include "platform/view/UIAlertController.h"

#include "platform/view/DialogView.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {
constexpr double kWidth = 300.0;
constexpr double kMargin = 14.0;
constexpr double kRow = 26.0;
constexpr double kGap = 8.0;
constexpr double kTitleHeight = 20.0;
constexpr double kTitleSize = 13.0;
} // namespace

UIAlertAction::UIAlertAction(std::optional<std::string> title, UIAlertActionStyle style,
                             Block<void(UIAlertAction&)> handler)
    : title_(std::move(title)), style_(style), handler_(std::move(handler)) {}

UIAlertController::UIAlertController(std::optional<std::string> title, std::optional<std::string> message,
                                     UIAlertControllerStyle preferredStyle)
    : title_(std::move(title)), message_(std::move(message)), style_(preferredStyle) {}

void UIAlertController::addAction(Ref<UIAlertAction> action) {
    if (action) {
        actions_.push_back(std::move(action));
    }
}

void UIAlertController::addTextFieldWithConfigurationHandler(const Block<void(UITextField&)>& handler) {
    auto field = makeRef<UITextField>();
    field->setText("");
    field->keepsFocusOnEnter = true; // enter is an answer
    fields_.push_back(field);
    if (handler) {
        handler(*field);
    }
}

std::optional<std::vector<Ref<UITextField>>> UIAlertController::textFields() const {
    if (fields_.empty()) {
        return std::nullopt;
    }
    return fields_;
}

CGSize UIAlertController::boxSize() const {
    double height = 2.0 * kMargin + kRow;
    if (title_) {
        height += kTitleHeight + kGap;
    }
    if (message_) {
        height += messageLabel_->heightForWidth(kWidth - 2.0 * kMargin) + kGap;
    }
    return {.width = kWidth, .height = height + static_cast<double>(fields_.size()) * (kRow + kGap)};
}

void UIAlertController::loadView() {
    titleLabel_ = makeRef<UILabel>();
    titleLabel_->setText(title_);
    titleLabel_->setFont(UIFont::systemFontOfSize(kTitleSize));
    titleLabel_->setTextAlignment(NSTextAlignment::center);
    messageLabel_ = makeRef<UILabel>();
    messageLabel_->setText(message_);
    messageLabel_->setWraps(true);
    messageLabel_->setTextAlignment(NSTextAlignment::center);
    const auto cover = makeRef<DialogView>(boxSize());
    cover->identifier = "alert";
    cover->box().addSubview(titleLabel_);
    cover->box().addSubview(messageLabel_);
    for (const Ref<UITextField>& field : fields_) {
        cover->box().addSubview(field);
    }
    for (const Ref<UIAlertAction>& action : actions_) {
        const auto button = makeRef<UIButton>();
        button->setTitle(action->title().value_or(""));
        button->identifier = button->title();
        button->setSelected(action->style() == UIAlertActionStyle::destructive);
        button->addAction(UIControlEventTouchUpInside, [this, action](UIControl&) { choose(action); });
        buttons_.push_back(button);
        cover->box().addSubview(button);
    }
    // The view belongs to this object, so that it never outlives it in use.
    cover->onKey = [this](const UIKeyEvent& event) { return keyDown(event); };
    cover->onLayout = [this](const CGRect& box) { place(box); };
    setView(cover);
}

void UIAlertController::place(const CGRect& box) {
    const double width = std::max(0.0, box.size.width - 2.0 * kMargin);
    double y = kMargin;
    titleLabel_->setFrame(CGRectMake(kMargin, y, width, title_ ? kTitleHeight : 0.0));
    y += title_ ? kTitleHeight + kGap : 0.0;
    const double lines = message_ ? messageLabel_->heightForWidth(width) : 0.0;
    messageLabel_->setFrame(CGRectMake(kMargin, y, width, lines));
    y += message_ ? lines + kGap : 0.0;
    for (const Ref<UITextField>& field : fields_) {
        field->setFrame(CGRectMake(kMargin, y, width, kRow));
        y += kRow + kGap;
    }
    const auto count = static_cast<double>(std::max<std::size_t>(buttons_.size(), 1));
    const double each = std::max(0.0, (width - kGap * (count - 1.0)) / count);
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        buttons_[i]->setFrame(CGRectMake(kMargin + static_cast<double>(i) * (each + kGap), y, each, kRow));
    }
}

void UIAlertController::presentationDidBegin() {
    view()->layoutIfNeeded();
    if (!fields_.empty()) {
        fields_.front()->becomeFirstResponder();
    } else if (!buttons_.empty()) {
        buttons_.front()->becomeFirstResponder();
    }
}

bool UIAlertController::keyDown(const UIKeyEvent& event) {
    if (event.key != UIKey::enter && event.key != UIKey::escape) {
        return event.key != UIKey::tab;
    }
    const bool cancels = event.key == UIKey::escape;
    for (const Ref<UIAlertAction>& action : actions_) {
        if ((action->style() == UIAlertActionStyle::cancel) == cancels || actions_.size() == 1) {
            choose(action);
            break;
        }
    }
    return true;
}

void UIAlertController::choose(const Ref<UIAlertAction>& action) {
    const auto keep = shared_from_this();
    // The argument may lie in the closure of the button that goes with the dialog.
    const Ref<UIAlertAction> chosen = action; // NOLINT(performance-unnecessary-copy-initialization)
    dismissViewController(true);
    if (const auto handler = chosen->handler()) {
        handler(*chosen);
    }
}

} // namespace platform
