#include "platform/draw/UIColor.h"

#include "platform/draw/CGContext.h"

namespace platform {

void UIColor::setStroke() const {
    if (CGContext* context = UIGraphicsGetCurrentContext()) {
        context->setStrokeColor(*this);
    }
}

void UIColor::setFill() const {
    if (CGContext* context = UIGraphicsGetCurrentContext()) {
        context->setFillColor(*this);
    }
}

} // namespace platform
