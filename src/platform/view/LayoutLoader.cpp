#include "platform/view/LayoutLoader.h"

#include "platform/view/UIButton.h"
#include "platform/view/UILabel.h"
#include "platform/view/UILongPressGestureRecognizer.h"
#include "platform/view/UIPanGestureRecognizer.h"
#include "platform/view/UIPinchGestureRecognizer.h"
#include "platform/view/UISlider.h"
#include "platform/view/UITapGestureRecognizer.h"
#include "platform/view/UITextField.h"

#include <array>
#include <utility>

namespace platform {

namespace {

template <class Map>
std::string namesOf(const Map& map) {
    std::string names;
    for (const auto& entry : map) {
        names += (names.empty() ? "" : ", ") + entry.first;
    }
    return names.empty() ? "none" : names;
}

template <class Map>
std::string unknown(const std::string& what, const std::string& name, const Map& known) {
    return "unknown " + what + " \"" + name + "\"; known are: " + namesOf(known);
}

const std::map<std::string, UIControlEvents> kEvents = {
    {"touchDown", UIControlEventTouchDown},
    {"touchUpInside", UIControlEventTouchUpInside},
    {"touchUpOutside", UIControlEventTouchUpOutside},
    {"touchCancel", UIControlEventTouchCancel},
    {"valueChanged", UIControlEventValueChanged},
    {"editingDidBegin", UIControlEventEditingDidBegin},
    {"editingChanged", UIControlEventEditingChanged},
    {"editingDidEnd", UIControlEventEditingDidEnd},
    {"editingDidEndOnExit", UIControlEventEditingDidEndOnExit},
};

const std::map<std::string, NSTextAlignment> kAlignments = {
    {"left", NSTextAlignment::left}, {"center", NSTextAlignment::center}, {"right", NSTextAlignment::right}};

} // namespace

Ref<UIView> LayoutLoader::makeView(const PropertyList& source, const std::string& path) {
    LayoutReader reader(source, path, complaint_);
    const std::string name = reader.text("class").value_or("UIView");
    const auto made = bindings_.viewClasses.find(name);
    if (made == bindings_.viewClasses.end()) {
        reader.complain("class", unknown("class", name, bindings_.viewClasses));
        return nullptr;
    }
    Ref<UIView> view = made->second();
    readLooks(reader, *view);
    readContent(reader, *view);
    readOutlet(reader, view);
    readActions(reader, *view);
    for (const auto& [recognizer, place] : reader.list("gestureRecognizers")) {
        readRecognizer(*recognizer, place, *view);
    }
    for (const auto& [child, place] : reader.list("subviews")) {
        if (const Ref<UIView> below = makeView(*child, place)) {
            view->addSubview(below);
            LayoutReader childReader(*child, place, complaint_);
            readPins(childReader, *below, *view);
        }
    }
    reader.dictionary("pin"); // read by the view above
    reader.finish();
    return view;
}

void LayoutLoader::readLooks(LayoutReader& reader, UIView& view) {
    view.identifier = reader.text("identifier").value_or("");
    view.setFrame(reader.rect("frame").value_or(CGRectZero));
    view.setHidden(reader.boolean("hidden").value_or(false));
    view.setAlpha(reader.number("alpha").value_or(1.0));
    view.setClipsToBounds(reader.boolean("clipsToBounds").value_or(false));
    view.userInteractionEnabled =
        reader.boolean("userInteractionEnabled").value_or(view.userInteractionEnabled);
    if (const auto color = reader.color("backgroundColor")) {
        view.setBackgroundColor(*color);
    }
}

void LayoutLoader::readContent(LayoutReader& reader, UIView& view) {
    const auto size = [&] { return reader.number("fontSize"); };
    const auto alignment = [&]() -> std::optional<NSTextAlignment> {
        const auto name = reader.text("alignment");
        if (!name) {
            return std::nullopt;
        }
        const auto found = kAlignments.find(*name);
        if (found == kAlignments.end()) {
            reader.complain("alignment", unknown("alignment", *name, kAlignments));
            return std::nullopt;
        }
        return found->second;
    };
    const auto common = [&](auto& texted) {
        if (const auto points = size()) {
            texted.setFont(UIFont::systemFontOfSize(*points));
        }
        if (const auto aligned = alignment()) {
            texted.setTextAlignment(*aligned);
        }
    };
    if (auto* label = dynamic_cast<UILabel*>(&view)) {
        common(*label);
        label->setText(reader.text("text"));
        if (const auto color = reader.color("textColor")) {
            label->setTextColor(*color);
        }
        label->setWraps(reader.boolean("wraps").value_or(false));
    } else if (auto* button = dynamic_cast<UIButton*>(&view)) {
        common(*button);
        button->setTitle(reader.text("title").value_or(""));
        button->focusable = reader.boolean("focusable").value_or(true);
        if (const auto color = reader.color("tintColor")) {
            button->setTintColor(*color);
        }
    } else if (auto* field = dynamic_cast<UITextField*>(&view)) {
        common(*field);
        field->setText(reader.text("text"));
        field->setPlaceholder(reader.text("placeholder"));
    } else if (auto* slider = dynamic_cast<UISlider*>(&view)) {
        const double minimum = reader.number("minimumValue").value_or(0.0);
        const double maximum = reader.number("maximumValue").value_or(1.0);
        const double value = reader.number("value").value_or(minimum);
        if (!(minimum < maximum && minimum <= value && value <= maximum)) {
            reader.complain("value", "the range must not be empty and must hold the value");
        }
        slider->setRange(static_cast<float>(minimum), static_cast<float>(maximum));
        slider->setValue(static_cast<float>(value));
        slider->focusable = reader.boolean("focusable").value_or(true);
    }
}

bool LayoutLoader::claim(const std::string& outlet, LayoutReader& reader) {
    if (connected_.insert(outlet).second) {
        return true;
    }
    reader.complain("outlet", "the outlet \"" + outlet + "\" is connected already");
    return false;
}

void LayoutLoader::readOutlet(LayoutReader& reader, const Ref<UIView>& view) {
    const auto name = reader.text("outlet");
    if (!name) {
        return;
    }
    const auto found = bindings_.viewOutlets.find(*name);
    if (found == bindings_.viewOutlets.end()) {
        reader.complain("outlet", unknown("outlet", *name, bindings_.viewOutlets));
    } else if (claim(*name, reader) && !found->second(view)) {
        reader.complain("outlet", "the outlet \"" + *name + "\" needs a view of another class");
    }
}

void LayoutLoader::readActions(LayoutReader& reader, UIView& view) {
    const PropertyList* source = reader.dictionary("actions");
    if (source == nullptr) {
        return;
    }
    auto* control = dynamic_cast<UIControl*>(&view);
    if (control == nullptr) {
        reader.complain("actions", "only a control has actions");
        return;
    }
    LayoutReader actions(*source, reader.pathOf("actions"), complaint_);
    for (const std::string& key : actions.keys()) {
        const std::string name = actions.text(key).value_or("");
        const auto event = kEvents.find(key);
        const auto action = bindings_.controlActions.find(name);
        if (event == kEvents.end()) {
            actions.complain(key, unknown("event", key, kEvents));
        } else if (action == bindings_.controlActions.end()) {
            actions.complain(key, unknown("action", name, bindings_.controlActions));
        } else {
            control->addAction(event->second, action->second);
        }
    }
}

void LayoutLoader::readRecognizer(const PropertyList& source, const std::string& path, UIView& view) {
    LayoutReader reader(source, path, complaint_);
    const std::string name = reader.text("class").value_or("");
    const auto made = bindings_.recognizerClasses.find(name);
    if (made == bindings_.recognizerClasses.end()) {
        reader.complain("class", unknown("class", name, bindings_.recognizerClasses));
        return;
    }
    const Ref<UIGestureRecognizer> recognizer = made->second();
    recognizer->identifier = reader.text("identifier").value_or("");
    recognizer->cancelsTouchesInView = reader.boolean("cancelsTouchesInView").value_or(true);
    if (auto* pan = dynamic_cast<UIPanGestureRecognizer*>(recognizer.get())) {
        pan->minimumDistance = reader.number("minimumDistance").value_or(pan->minimumDistance);
    } else if (auto* pinch = dynamic_cast<UIPinchGestureRecognizer*>(recognizer.get())) {
        pinch->minimumDistance = reader.number("minimumDistance").value_or(pinch->minimumDistance);
        pinch->wheelPause = reader.number("wheelPause").value_or(pinch->wheelPause);
    } else if (auto* tap = dynamic_cast<UITapGestureRecognizer*>(recognizer.get())) {
        tap->numberOfTapsRequired = static_cast<int>(reader.number("numberOfTapsRequired").value_or(1.0));
        tap->allowableMovement = reader.number("allowableMovement").value_or(tap->allowableMovement);
    } else if (auto* press = dynamic_cast<UILongPressGestureRecognizer*>(recognizer.get())) {
        press->minimumPressDuration =
            reader.number("minimumPressDuration").value_or(press->minimumPressDuration);
        press->allowableMovement = reader.number("allowableMovement").value_or(press->allowableMovement);
    }
    if (const auto outlet = reader.text("outlet")) {
        const auto found = bindings_.recognizerOutlets.find(*outlet);
        if (found == bindings_.recognizerOutlets.end()) {
            reader.complain("outlet", unknown("outlet", *outlet, bindings_.recognizerOutlets));
        } else if (claim(*outlet, reader) && !found->second(recognizer)) {
            reader.complain("outlet", "the outlet \"" + *outlet + "\" needs a recognizer of another class");
        }
    }
    if (const auto action = reader.text("action")) {
        const auto found = bindings_.gestureActions.find(*action);
        if (found == bindings_.gestureActions.end()) {
            reader.complain("action", unknown("action", *action, bindings_.gestureActions));
        } else {
            recognizer->addAction(found->second);
        }
    }
    reader.finish();
    view.addGestureRecognizer(recognizer);
}

void LayoutLoader::readPins(LayoutReader& reader, UIView& view, UIView& parent) {
    const PropertyList* source = reader.dictionary("pin");
    if (source == nullptr) {
        return;
    }
    LayoutReader pins(*source, reader.pathOf("pin"), complaint_);
    std::vector<Ref<NSLayoutConstraint>> constraints;
    const auto pin = [&](const char* key, const NSLayoutAnchor& own, const NSLayoutAnchor& other,
                         double sign) {
        if (const auto constant = pins.number(key)) {
            constraints.push_back(own.constraintEqualToAnchor(other, sign * *constant));
        }
    };
    // Distances are counted inwards from the edges.
    pin("top", view.topAnchor(), parent.topAnchor(), 1.0);
    pin("leading", view.leadingAnchor(), parent.leadingAnchor(), 1.0);
    pin("bottom", view.bottomAnchor(), parent.bottomAnchor(), -1.0);
    pin("trailing", view.trailingAnchor(), parent.trailingAnchor(), -1.0);
    pin("centerX", view.centerXAnchor(), parent.centerXAnchor(), 1.0);
    pin("centerY", view.centerYAnchor(), parent.centerYAnchor(), 1.0);
    if (const auto width = pins.number("width")) {
        constraints.push_back(view.widthAnchor().constraintEqualToConstant(*width));
    }
    if (const auto height = pins.number("height")) {
        constraints.push_back(view.heightAnchor().constraintEqualToConstant(*height));
    }
    pins.finish();
    view.translatesAutoresizingMaskIntoConstraints = false;
    NSLayoutConstraint::activateConstraints(constraints);
}

void LayoutLoader::finish(const std::string& path) {
    const auto check = [&](const auto& outlets) {
        for (const auto& entry : outlets) {
            if (!connected_.contains(entry.first)) {
                complaint_.say(path, "the outlet \"" + entry.first + "\" is connected to nothing");
            }
        }
    };
    check(bindings_.viewOutlets);
    check(bindings_.recognizerOutlets);
}

} // namespace platform
