#include "platform/net/Transfer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <curl/curl.h>
#include <memory>
#include <string>

namespace platform {

namespace {

struct EasyCleanup {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
using Easy = std::unique_ptr<CURL, EasyCleanup>;

Easy makeHandle() {
    // Once for the process, ahead of all threads' handles.
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready ? Easy(curl_easy_init()) : nullptr;
}

NSError transferError(const URL& url, long code, const std::string& why) {
    return {NSURLErrorDomain, code, {{NSLocalizedDescriptionKey, url.absoluteString() + ": " + why}}};
}

/// Less than what was given ends the transfer.
std::size_t receive(char* bytes, std::size_t one, std::size_t count, void* user) noexcept {
    auto& data = *static_cast<Data*>(user);
    if (data.size() + count > kMostBytes) {
        return 0;
    }
    try {
        data.insert(data.end(), bytes, bytes + count);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return one * count;
}

/// Anything but 0 ends the transfer.
int progress(void* user, curl_off_t /*downTotal*/, curl_off_t /*down*/, curl_off_t /*upTotal*/,
             curl_off_t /*up*/) {
    return static_cast<const std::stop_token*>(user)->stop_requested() ? 1 : 0;
}

bool isHttp(const URL& url) {
    return url.scheme() == "http" || url.scheme() == "https";
}

} // namespace

Result<Transferred> transfer(const URLRequest& request, const std::stop_token& stop) {
    const Easy handle = makeHandle();
    if (handle == nullptr) {
        return transferError(request.url, CURLE_FAILED_INIT, "the transfer library could not be started");
    }
    Transferred result;
    std::array<char, CURL_ERROR_SIZE> message{};
    const std::string location = request.url.absoluteString();
    const long patience = std::clamp(std::lround(request.timeoutInterval), 1L, 86400L);
    CURL* const easy = handle.get();
    curl_easy_setopt(easy, CURLOPT_URL, location.c_str());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https,file");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https"); // never from the net to a file
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, 16L);
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, ""); // all that the library can undo
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, patience);
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME, patience);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L); // signals are the program's own
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, message.data());
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &receive);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &result.data);
    curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &progress);
    curl_easy_setopt(easy, CURLOPT_XFERINFODATA, &stop);

    const CURLcode code = curl_easy_perform(easy);
    if (code != CURLE_OK) {
        const std::string why = message[0] != '\0' ? message.data() : curl_easy_strerror(code);
        return transferError(request.url, code, why);
    }
    if (isHttp(request.url)) {
        long status = 0;
        curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
        result.response = makeRef<NSHTTPURLResponse>(request.url, status);
    } else {
        result.response = makeRef<URLResponse>(request.url);
    }
    return result;
}

} // namespace platform
