// What to load and how patiently.
#pragma once

#include "platform/files/URL.h"

namespace platform {

struct URLRequest {
    URL url;
    double timeoutInterval = 60.0; // seconds without any progress

    explicit URLRequest(URL location) : url(std::move(location)) {}
};

} // namespace platform
