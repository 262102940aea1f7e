// One transfer from a location into memory; used inside this library only.
#pragma once

#include "platform/core/Ref.h"
#include "platform/core/Result.h"
#include "platform/files/Data.h"
#include "platform/net/URLRequest.h"
#include "platform/net/URLResponse.h"

#include <stop_token>

namespace platform {

inline constexpr const char* NSURLErrorDomain = "NSURLErrorDomain";

struct Transferred {
    Data data;
    Ref<URLResponse> response;
};

/// Loads on the calling thread; schemes http, https and file. An answer with any HTTP status is no failure; a
/// body above `kMostBytes` is. Returns early, failed, when the token asks for a stop.
Result<Transferred> transfer(const URLRequest& request, const std::stop_token& stop);

inline constexpr std::size_t kMostBytes = std::size_t{256} << 20;

} // namespace platform
