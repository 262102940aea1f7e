// Operations that change the text in place or rebuild it.
#include "TOOLS/SOURCES/CString.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

namespace RVK {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

char upper(char c) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}
char lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}
char reverted(char c) {
    return std::isupper(static_cast<unsigned char>(c)) != 0 ? lower(c) : upper(c);
}

/// A copy of an argument, which may lie in the very buffer that an operation frees.
class OwnText {
public:
    explicit OwnText(const char* text)
        : wanted_(text != nullptr), copy_(text != nullptr ? ::strdup(text) : nullptr) {}
    ~OwnText() { std::free(copy_); }
    OwnText(const OwnText&) = delete;
    OwnText& operator=(const OwnText&) = delete;

    /// False if there was no room.
    bool complete() const { return wanted_ == (copy_ != nullptr); }
    /// Absent if the argument was.
    char* text() const { return copy_; }

private:
    bool wanted_;
    char* copy_;
};

} // namespace

bool CString::Replace(char* search, char* replacement, int from, bool all) {
    if (length == 0 || search == nullptr) {
        return false;
    }
    if (replacement != nullptr && std::strcmp(search, replacement) == 0) {
        return false;
    }
    const int at = Find(search, from);
    if (at < 0) {
        return false;
    }
    const OwnText ownSearch(search);
    const OwnText ownReplacement(replacement);
    const int width = StrLen(search);
    const int size = StrLen(replacement);
    if (!ownSearch.complete() || !ownReplacement.complete() ||
        !splice(at, ownReplacement.text(), size, at + width)) {
        return false;
    }
    if (all) {
        Replace(ownSearch.text(), ownReplacement.text(), at + size, true);
    }
    return true;
}

CString& CString::Insert(int i, char* text) {
    const int size = StrLen(text);
    if (i >= 0 && i < length && size > 0) {
        splice(i, text, size, i);
    }
    return *this;
}

CString& CString::Trim() {
    TrimLeft();
    return TrimRight();
}

CString& CString::TrimLeft() {
    int blanks = 0;
    while (blanks < length && isSpace(data[blanks])) {
        ++blanks;
    }
    if (blanks == length) {
        reassign(0);
    } else if (blanks > 0) {
        length -= blanks;
        std::memmove(data, data + blanks, static_cast<std::size_t>(length));
        std::memset(data + length, 0, static_cast<std::size_t>(blanks));
    }
    return *this;
}

CString& CString::TrimRight() {
    int blanks = 0;
    while (blanks < length && isSpace(data[length - 1 - blanks])) {
        ++blanks;
    }
    if (blanks == length) {
        reassign(0);
    } else {
        *this -= blanks;
    }
    return *this;
}

CString& CString::Uppercase() {
    for (int i = 0; i < length; ++i) {
        data[i] = upper(data[i]);
    }
    return *this;
}

CString& CString::Lowercase() {
    for (int i = 0; i < length; ++i) {
        data[i] = lower(data[i]);
    }
    return *this;
}

CString& CString::Revertcase() {
    for (int i = 0; i < length; ++i) {
        data[i] = reverted(data[i]);
    }
    return *this;
}

void CString::Decode() {}

void CString::Encode() {
    if (hasText()) {
        const int size = length;
        const char* const digits = Hex2();
        if (temp == digits) { // otherwise there was no room for them
            splice(0, digits, 2 * static_cast<std::int64_t>(size), size);
        }
    }
}

} // namespace RVK
