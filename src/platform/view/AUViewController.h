// The controller of a plug-in's view.
#pragma once

#include "platform/view/UIViewController.h"

namespace platform {

class AUViewController : public UIViewController {};

} // namespace platform
