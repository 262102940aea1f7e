// Everything of the drawing layer, brought into the system's namespace.
#pragma once

#include "platform/draw/CGAffineTransform.h"
#include "platform/draw/CGContext.h"
#include "platform/draw/CGGeometry.h"
#include "platform/draw/NSParagraphStyle.h"
#include "platform/draw/NSStringDrawing.h"
#include "platform/draw/UIBezierPath.h"
#include "platform/draw/UIColor.h"
#include "platform/draw/UIFont.h"
#include "platform/draw/UIImage.h"

namespace qor {
using namespace platform;
} // namespace qor
