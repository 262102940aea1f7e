// Everything of the platform's net library, brought into the system's namespace.
#pragma once

#include "platform/net/ImageDecoding.h"
#include "platform/net/NSURLSession.h"
#include "platform/net/URLContents.h"
#include "platform/net/URLRequest.h"
#include "platform/net/URLResponse.h"

namespace qor {
using namespace platform;
} // namespace qor
