#include "platform/files/URL.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <utility>

namespace platform {
namespace {

constexpr std::string_view kHex = "0123456789ABCDEF";

bool isUnreserved(unsigned char c) {
    return (std::isalnum(c) != 0 && c < 0x80) ||
           std::string_view("-._~/!$&'()*+,;=:@").find(static_cast<char>(c)) != std::string_view::npos;
}

std::string percentEncoded(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (isUnreserved(byte)) {
            result += c;
        } else {
            result += '%';
            result += kHex[byte >> 4];
            result += kHex[byte & 15];
        }
    }
    return result;
}

int hexDigit(char c) {
    const auto found = kHex.find(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i];
            continue;
        }
        if (i + 2 >= text.size()) {
            return std::nullopt;
        }
        const int high = hexDigit(text[i + 1]);
        const int low = hexDigit(text[i + 2]);
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        result += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return result;
}

bool isSchemeCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '-' || c == '.';
}

/// Where the extension's point stands in a path without a slash at its end.
std::optional<std::size_t> extensionPoint(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t nameStart = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t point = path.rfind('.');
    if (point == std::string::npos || point <= nameStart || point + 1 == path.size()) {
        return std::nullopt;
    }
    return point;
}

} // namespace

URL URL::fileURLWithPath(std::string path) {
    URL url;
    url.path_ = std::move(path);
    return url;
}

std::optional<URL> URL::initWithString(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 ||
        std::isalpha(static_cast<unsigned char>(text[0])) == 0 ||
        !std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon), isSchemeCharacter)) {
        return std::nullopt;
    }
    URL url;
    url.scheme_.assign(text.substr(0, colon));
    std::transform(url.scheme_.begin(), url.scheme_.end(), url.scheme_.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    std::string_view rest = text.substr(colon + 1);
    if (rest.starts_with("//")) {
        const std::size_t end = std::min(rest.find_first_of("/?#", 2), rest.size());
        if (!url.isFileURL()) {
            url.authority_.assign(rest.substr(0, end));
        }
        rest.remove_prefix(end);
    }
    const std::size_t pathEnd = std::min(rest.find_first_of("?#"), rest.size());
    auto path = percentDecoded(rest.substr(0, pathEnd));
    if (!path || (url.isFileURL() && path->empty())) {
        return std::nullopt;
    }
    url.path_ = std::move(*path);
    url.rest_.assign(rest.substr(pathEnd));
    return url;
}

std::string URL::path() const {
    const std::size_t last = path_.find_last_not_of('/');
    if (last == std::string::npos) {
        return path_.empty() ? "" : "/";
    }
    return path_.substr(0, last + 1);
}

std::string URL::absoluteString() const {
    if (isFileURL()) {
        return "file://" + percentEncoded(path_);
    }
    return scheme_ + ":" + authority_ + percentEncoded(path_) + rest_;
}

void URL::appendPathComponent(std::string_view component) {
    const std::size_t first = component.find_first_not_of('/');
    if (first == std::string_view::npos) {
        return;
    }
    if (!path_.empty() && path_.back() != '/') {
        path_ += '/';
    }
    path_ += path_.empty() ? component : component.substr(first);
}

URL URL::appendingPathComponent(std::string_view component) const {
    URL result = *this;
    result.appendPathComponent(component);
    return result;
}

std::string URL::lastPathComponent() const {
    const std::string whole = path();
    const std::size_t slash = whole.rfind('/');
    return slash == std::string::npos || whole.size() == 1 ? whole : whole.substr(slash + 1);
}

std::string URL::pathExtension() const {
    const std::string whole = path();
    const auto point = extensionPoint(whole);
    return point ? whole.substr(*point + 1) : "";
}

URL URL::deletingPathExtension() const {
    URL result = *this;
    const std::string whole = path();
    if (const auto point = extensionPoint(whole)) {
        result.path_ = whole.substr(0, *point) + (hasDirectoryPath() ? "/" : "");
    }
    return result;
}

} // namespace platform
