// A list to choose one thing from.
#pragma once

#include "platform/core/Core.h"
#include "platform/view/View.h"

#include <string>
#include <vector>

namespace qor::host {

/// Rows of text; a click or enter chooses, arrow keys move, the wheel scrolls.
class ChoiceListView : public UIView {
public:
    static constexpr double kRow = 20.0; // points

    std::vector<std::string> items;
    std::size_t current = 0;
    Block<void(std::size_t)> onChoice;

    /// Makes a row the current one, the last for any behind it, and scrolls until it is seen.
    void moveTo(std::size_t row);

    void draw(const CGRect& rect) override;
    void touchesEnded(const UITouchSet& touches, UIEvent* event) override;
    bool scrollWheel(const UIWheelEvent& event) override;
    bool keyDown(const UIKeyEvent& event) override;
    bool canBecomeFirstResponder() const override { return true; }

private:
    /// Which part of a list that doesn't fit is seen.
    void drawThumb(const CGRect& rect) const;
    void scrollBy(double rows);

    double top_ = 0.0; // rows above the visible part
};

/// Shown over the editor like a dialog; escape or a click beside it ends it without a choice.
class ChoiceMenu : public UIViewController {
public:
    ChoiceMenu(std::vector<std::string> items, std::size_t current, Block<void(std::size_t)> onChoice);

    void loadView() override;
    ChoiceListView& list();

protected:
    void presentationDidBegin() override;

private:
    Ref<ChoiceListView> list_;
};

} // namespace qor::host
