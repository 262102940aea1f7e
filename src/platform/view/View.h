// Everything of the view layer, brought into the system's namespace.
#pragma once

#include "platform/draw/Draw.h"
#include "platform/view/LayoutBindings.h"
#include "platform/view/LayoutResource.h"
#include "platform/view/NSLayoutConstraint.h"
#include "platform/view/UIAlertController.h"
#include "platform/view/UIButton.h"
#include "platform/view/UIControl.h"
#include "platform/view/UIDocumentPickerViewController.h"
#include "platform/view/UIEvent.h"
#include "platform/view/UIGestureRecognizer.h"
#include "platform/view/UIImageView.h"
#include "platform/view/UILabel.h"
#include "platform/view/UILongPressGestureRecognizer.h"
#include "platform/view/UIPanGestureRecognizer.h"
#include "platform/view/UIPinchGestureRecognizer.h"
#include "platform/view/UISlider.h"
#include "platform/view/UITapGestureRecognizer.h"
#include "platform/view/UITextField.h"
#include "platform/view/UITouch.h"
#include "platform/view/UIView.h"
#include "platform/view/UIViewController.h"
#include "platform/view/UIWindow.h"

namespace qor {
using namespace platform;
} // namespace qor
