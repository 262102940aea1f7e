// The text on the standard output, in files and as an element.
#include "TOOLS/SOURCES/CString.h"

#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <string_view>

namespace RVK {

namespace {

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

File open(const char* path, const char* mode) {
    return File(path != nullptr ? std::fopen(path, mode) : nullptr);
}

const char* shown(const char* path) {
    return path != nullptr ? path : nullText;
}

/// The rest of a file; false if it can't be read or is too long for a string.
bool readAll(std::FILE* file, std::string& bytes) try {
    constexpr std::size_t kMost = std::numeric_limits<int>::max() - 8; // leaves room for the padding
    char block[16384];
    std::size_t got = 0;
    while ((got = std::fread(block, 1, sizeof block, file)) > 0) {
        if (bytes.size() + got > kMost) {
            return false;
        }
        bytes.append(block, got);
    }
    return std::ferror(file) == 0;
} catch (const std::bad_alloc&) {
    return false;
}

} // namespace

CString& CString::operator>>(int n) {
    for (int i = 0; hasText() && i < n; ++i) {
        std::printf("%s", data);
    }
    return *this;
}

int CString::operator<<(char* path) {
    const File file = open(path, "rb");
    if (file == nullptr) {
        std::printf("\nERROR: File '%s' could not be opened for loading.", shown(path));
        return length;
    }
    std::string bytes;
    if (!readAll(file.get(), bytes)) {
        std::printf("\nERROR: While reading file.");
    } else if (bytes.empty()) {
        reassign(0);
    } else {
        splice(0, bytes.data(), static_cast<std::int64_t>(bytes.size()), length);
    }
    return length;
}

int CString::operator>>(char* path) {
    if (!hasText()) {
        std::printf("\nError: String object is empty.");
        return 0;
    }
    const File file = open(path, "wb");
    if (file == nullptr) {
        std::printf("\nERROR: File '%s' could not be opened for saving.", shown(path));
        return 0;
    }
    const std::size_t written = std::fwrite(data, 1, static_cast<std::size_t>(length), file.get());
    if (written != static_cast<std::size_t>(length) || std::fflush(file.get()) != 0) {
        std::printf("\nERROR: While writing file.");
    }
    return static_cast<int>(written);
}

const char* CString::XML(int indent) const {
    if (!hasText()) {
        return CData::XML(indent);
    }
    constexpr std::string_view kOpening = "<CString encoding='UTF8'>\n\t";
    constexpr std::string_view kClosing = "</CString>\n";
    const std::size_t tabs = indent > 0 ? static_cast<std::size_t>(indent) : 0;
    const std::string_view text = data; // an element ends at a zero byte
    auto* const buffer = static_cast<char*>(CAlloc(
        static_cast<unsigned long>(paddingOf(static_cast<std::int64_t>(tabs) * 3 + length + 38 + 1)), 1));
    if (buffer == nullptr) {
        return "<CData>\n\tundefined</CData>";
    }
    char* to = buffer;
    const auto put = [&to](std::string_view piece) {
        std::memcpy(to, piece.data(), piece.size());
        to += piece.size();
    };
    const auto putTabs = [&to, tabs] {
        std::memset(to, '\t', tabs);
        to += tabs;
    };
    putTabs();
    put(kOpening);
    putTabs();
    put(text);
    put("\n");
    putTabs();
    put(kClosing);
    return adoptTemp(buffer, buffer);
}

} // namespace RVK
