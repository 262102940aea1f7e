#include "hosts/shared/ChoiceMenu.h"

#include "platform/view/DialogView.h"
#include "platform/view/ViewStyle.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qor::host {

namespace {

/// A dialog's cover that a click beside the box ends.
class MenuCover : public DialogView {
public:
    using DialogView::DialogView;
    Block<void()> onOutside;
    void touchesEnded(const UITouchSet& /*touches*/, UIEvent* /*event*/) override {
        if (const auto outside = onOutside) {
            outside();
        }
    }
};

} // namespace

void ChoiceListView::draw(const CGRect& rect) {
    style::drawBox(rect, style::kField, style::kLine);
    unwrap(UIGraphicsGetCurrentContext()).clipToRect(CGRectInset(rect, 1.0, 1.0));
    const UIFont font = UIFont::systemFontOfSize(style::kFontSize);
    for (auto row = static_cast<std::size_t>(top_); row < items.size(); ++row) {
        const CGRect line = CGRectMake(
            rect.origin.x, rect.origin.y + (static_cast<double>(row) - top_) * kRow, rect.size.width, kRow);
        if (line.origin.y > CGRectGetMaxY(rect)) {
            break;
        }
        if (row == current) {
            style::kFocus.colorWithAlphaComponent(0.5).setFill();
            UIBezierPath::bezierPathWithRect(line).fill();
        }
        style::drawText(items[row], CGRectInset(line, 8.0, 0.0), font, style::kText, NSTextAlignment::left);
    }
    drawThumb(rect);
}

void ChoiceListView::drawThumb(const CGRect& rect) const {
    const double whole = static_cast<double>(items.size()) * kRow;
    if (whole <= rect.size.height) {
        return;
    }
    const double share = rect.size.height / whole;
    style::kDimText.setFill();
    UIBezierPath::bezierPathWithRoundedRect(CGRectMake(CGRectGetMaxX(rect) - 6.0,
                                                       rect.origin.y + top_ * kRow * share + 2.0, 3.0,
                                                       rect.size.height * share - 4.0),
                                            1.5)
        .fill();
}

void ChoiceListView::touchesEnded(const UITouchSet& touches, UIEvent* /*event*/) {
    const CGPoint at = touches.empty() ? CGPointZero : touches.front()->locationInView(this);
    const double row = top_ + at.y / kRow;
    if (!pointInside(at, nullptr) || !(row >= 0.0 && row < static_cast<double>(items.size()))) {
        return;
    }
    if (const auto choose = onChoice) {
        choose(static_cast<std::size_t>(row));
    }
}

void ChoiceListView::scrollBy(double rows) {
    const double most = std::max(0.0, static_cast<double>(items.size()) - bounds().size.height / kRow);
    top_ = std::clamp(top_ + rows, 0.0, most);
    setNeedsDisplay();
}

void ChoiceListView::moveTo(std::size_t row) {
    current = std::min(row, items.empty() ? 0 : items.size() - 1);
    const double visible = std::max(1.0, std::floor(bounds().size.height / kRow));
    const auto here = static_cast<double>(current);
    scrollBy(here < top_ ? here - top_ : std::max(0.0, here + 1.0 - visible - top_));
}

bool ChoiceListView::scrollWheel(const UIWheelEvent& event) {
    scrollBy(-event.deltaY * 2.0);
    return true;
}

bool ChoiceListView::keyDown(const UIKeyEvent& event) {
    switch (event.key) {
    case UIKey::up:
        moveTo(current == 0 ? 0 : current - 1);
        return true;
    case UIKey::down:
        moveTo(current + 1);
        return true;
    case UIKey::home:
        moveTo(0);
        return true;
    case UIKey::end:
        moveTo(items.size());
        return true;
    case UIKey::enter:
        if (const auto choose = onChoice; choose && current < items.size()) {
            choose(current);
        }
        return true;
    default:
        return false;
    }
}

ChoiceMenu::ChoiceMenu(std::vector<std::string> items, std::size_t current, Block<void(std::size_t)> onChoice)
    : list_(makeRef<ChoiceListView>()) {
    list_->items = std::move(items);
    list_->current = current;
    list_->identifier = "choices";
    list_->onChoice = [this, onChoice = std::move(onChoice)](std::size_t row) {
        const auto keep = shared_from_this();
        // The dismissal may take this closure with it.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const auto chosen = onChoice;
        dismissViewController(true);
        chosen(row);
    };
}

ChoiceListView& ChoiceMenu::list() {
    return *list_;
}

void ChoiceMenu::loadView() {
    constexpr double kWidth = 240.0;
    const auto cover = makeRef<MenuCover>(
        CGSizeMake(kWidth, static_cast<double>(list_->items.size()) * ChoiceListView::kRow));
    cover->identifier = "menu";
    cover->box().addSubview(list_);
    cover->onLayout = [this](const CGRect& box) { list_->setFrame(box); };
    cover->onOutside = [this] { dismissViewController(true); };
    cover->onKey = [this](const UIKeyEvent& event) {
        if (event.key == UIKey::escape) {
            dismissViewController(true);
        }
        return event.key != UIKey::tab;
    };
    setView(cover);
}

void ChoiceMenu::presentationDidBegin() {
    view()->layoutIfNeeded();
    list_->moveTo(list_->current);
    list_->becomeFirstResponder();
}

} // namespace qor::host
