// What a layout's names mean: classes, outlets and actions.
#pragma once

#include "platform/view/UIControl.h"
#include "platform/view/UIGestureRecognizer.h"
#include "platform/view/UIView.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace platform {

/// Filled by the owner of a layout before it is loaded. Outlets are the owner's fields: each must be
/// connected by the layout exactly once. The fields must outlive the loading.
class LayoutBindings {
public:
    /// Knows the view layer's own classes.
    LayoutBindings();

    template <class View>
    void viewClass(std::string name) {
        viewClasses[std::move(name)] = [] { return makeRef<View>(); };
    }
    template <class T>
    void outlet(std::string name, Ref<T>& field) {
        const auto assign = [&field](const auto& object) {
            const auto fitting = std::dynamic_pointer_cast<T>(object);
            if (fitting) {
                field = fitting;
            }
            return fitting != nullptr;
        };
        if constexpr (std::is_base_of_v<UIView, T>) {
            viewOutlets[std::move(name)] = assign;
        } else {
            recognizerOutlets[std::move(name)] = assign;
        }
    }
    void controlAction(std::string name, Block<void(UIControl&)> action) {
        controlActions[std::move(name)] = std::move(action);
    }
    void gestureAction(std::string name, Block<void(UIGestureRecognizer&)> action) {
        gestureActions[std::move(name)] = std::move(action);
    }

    // Each gives false for an object of another class than the field's.
    std::map<std::string, std::function<Ref<UIView>()>> viewClasses;
    std::map<std::string, std::function<Ref<UIGestureRecognizer>()>> recognizerClasses;
    std::map<std::string, std::function<bool(const Ref<UIView>&)>> viewOutlets;
    std::map<std::string, std::function<bool(const Ref<UIGestureRecognizer>&)>> recognizerOutlets;
    std::map<std::string, Block<void(UIControl&)>> controlActions;
    std::map<std::string, Block<void(UIGestureRecognizer&)>> gestureActions;
};

} // namespace platform
