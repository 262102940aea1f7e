// What came back beside the data.
#pragma once

#include "platform/files/URL.h"

#include <cstdint>

namespace platform {

/// A response of any scheme.
class URLResponse {
public:
    explicit URLResponse(URL location) : url(std::move(location)) {}
    URLResponse(const URLResponse&) = delete;
    URLResponse& operator=(const URLResponse&) = delete;
    virtual ~URLResponse() = default;

    URL url;
};

/// A response over HTTP or HTTPS.
class NSHTTPURLResponse : public URLResponse {
public:
    NSHTTPURLResponse(URL location, std::int64_t status)
        : URLResponse(std::move(location)), statusCode(status) {}

    std::int64_t statusCode; // of the last answer, after redirections
};

} // namespace platform
