#include "platform/net/URLContents.h"

#include "platform/core/Text.h"
#include "platform/net/Transfer.h"

namespace platform {

Result<Data> dataWithContentsOfURL(const URL& url) {
    Result<Transferred> loaded = transfer(URLRequest(url), {});
    if (!loaded) {
        return loaded.error();
    }
    const auto* const http = dynamic_cast<const NSHTTPURLResponse*>(loaded.value().response.get());
    if (http != nullptr && http->statusCode >= 400) {
        return NSError(
            NSURLErrorDomain, static_cast<long>(http->statusCode),
            {{NSLocalizedDescriptionKey,
              url.absoluteString() + ": the server answered with status " + text(http->statusCode)}});
    }
    return std::move(loaded).value().data;
}

} // namespace platform
