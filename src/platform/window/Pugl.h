// pugl's C interface for C++; private to this library.
#pragma once

extern "C" {
#include <pugl/cairo.h>
#include <pugl/pugl.h>
}
