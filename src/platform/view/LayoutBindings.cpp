#include "platform/view/LayoutBindings.h"

#include "platform/view/UIButton.h"
#include "platform/view/UIImageView.h"
#include "platform/view/UILabel.h"
#include "platform/view/UILongPressGestureRecognizer.h"
#include "platform/view/UIPanGestureRecognizer.h"
#include "platform/view/UIPinchGestureRecognizer.h"
#include "platform/view/UISlider.h"
#include "platform/view/UITapGestureRecognizer.h"
#include "platform/view/UITextField.h"

namespace platform {

LayoutBindings::LayoutBindings() {
    viewClass<UIView>("UIView");
    viewClass<UIControl>("UIControl");
    viewClass<UILabel>("UILabel");
    viewClass<UIButton>("UIButton");
    viewClass<UISlider>("UISlider");
    viewClass<UITextField>("UITextField");
    viewClass<UIImageView>("UIImageView");
    recognizerClasses["UIPanGestureRecognizer"] = [] { return makeRef<UIPanGestureRecognizer>(); };
    recognizerClasses["UIPinchGestureRecognizer"] = [] { return makeRef<UIPinchGestureRecognizer>(); };
    recognizerClasses["UITapGestureRecognizer"] = [] { return makeRef<UITapGestureRecognizer>(); };
    recognizerClasses["UILongPressGestureRecognizer"] = [] {
        return makeRef<UILongPressGestureRecognizer>();
    };
}

} // namespace platform
