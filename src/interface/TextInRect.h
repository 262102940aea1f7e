// The panel's one way to set a text: centred on both axes of a rectangle and cut off at its edges.
#pragma once

#include "platform/draw/Draw.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qor {

void drawTextInRect(CGContext& context, std::string_view text, const CGRect& rect, const UIFont& font,
                    const UIColor& color);

/// The value times 100 as a whole number, halves away from zero. A product that is not finite or doesn't fit
/// a 64-bit signed integer stops the process.
std::string knobValueText(double value);

} // namespace qor
