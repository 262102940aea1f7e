// Comparisons and the operators that add, remove and repeat.
#include "TOOLS/SOURCES/CString.h"

#include "TOOLS/SOURCES/NumberText.h"

#include <cstring>

namespace RVK {

char& CString::operator[](int i) {
    if (i < 0 || i >= length) {
        nirvana = '\0';
        return nirvana;
    }
    return data[i];
}

bool CString::operator==(char* text) {
    return text != nullptr && std::strcmp(data, text) == 0;
}
bool CString::operator==(CString& other) {
    return std::strcmp(data, other.data) == 0;
}
bool CString::operator!=(CString& other) {
    return std::strcmp(data, other.data) != 0;
}
bool CString::operator!=(char* text) {
    return !(*this == text);
}
bool CString::operator<(CString& other) {
    return std::strcmp(data, other.data) < 0;
}
bool CString::operator>(CString& other) {
    return std::strcmp(data, other.data) > 0;
}
bool CString::operator<=(CString& other) {
    return std::strcmp(data, other.data) <= 0;
}
bool CString::operator>=(CString& other) {
    return std::strcmp(data, other.data) >= 0;
}

CString& CString::append(const char* bytes, std::int64_t size) {
    if (size > 0) {
        splice(length, bytes, size, length);
    }
    return *this;
}

CString& CString::operator+=(CString& other) {
    return append(other.data, other.length);
}
CString& CString::operator+=(char* text) {
    return append(text, StrLen(text));
}
CString& CString::operator+=(char character) {
    return append(&character, 1);
}
CString& CString::operator+=(int number) {
    const NumberText text(number);
    return append(text.text(), StrLen(text.text()));
}
CString& CString::operator+=(double number) {
    const NumberText text(number);
    return append(text.text(), StrLen(text.text()));
}

CString& CString::operator-=(char* text) {
    Replace(text, static_cast<char*>(nullptr), 0, true);
    return *this;
}

CString& CString::operator-=(int n) {
    if (n < 1) {
        return *this;
    }
    if (n < length) {
        length -= n;
        std::memset(data + length, 0, static_cast<std::size_t>(n));
    } else {
        Clear();
    }
    return *this;
}

CString& CString::sum(const char* bytes, std::int64_t size) {
    const std::int64_t whole = length + size;
    auto* const buffer = static_cast<char*>(CAlloc(static_cast<unsigned long>(paddingOf(whole)), 1));
    if (buffer == nullptr) {
        return tempstr = *this;
    }
    std::memcpy(buffer, data, static_cast<std::size_t>(length));
    std::memcpy(buffer + length, bytes, static_cast<std::size_t>(size));
    tempstr.adopt(buffer, static_cast<int>(whole)); // only now: this or the bytes may be its own
    return tempstr;
}

CString& CString::operator+(CString& other) {
    return other.length == 0 ? *this : sum(other.data, other.length);
}
CString& CString::operator+(char* text) {
    const int size = StrLen(text);
    return size == 0 ? *this : sum(text, size);
}
CString& CString::operator+(int number) {
    const NumberText text(number);
    return sum(text.text(), StrLen(text.text()));
}
CString& CString::operator+(double number) {
    const NumberText text(number);
    return sum(text.text(), StrLen(text.text()));
}

CString& CString::operator*(int n) {
    if (n < 2) {
        return *this;
    }
    const std::int64_t whole = static_cast<std::int64_t>(length) * n;
    auto* const buffer = static_cast<char*>(CAlloc(static_cast<unsigned long>(paddingOf(whole)), 1));
    if (buffer == nullptr) {
        return tempstr = *this;
    }
    for (std::int64_t at = 0; at < whole; at += length) {
        std::memcpy(buffer + at, data, static_cast<std::size_t>(length));
    }
    tempstr.adopt(buffer, static_cast<int>(whole));
    return tempstr;
}

CString& CString::operator-(int n) {
    if (n < 1) {
        return *this;
    }
    return sum("", 0) -= n;
}

CString& CString::operator-(char* text) {
    if (text == nullptr) {
        return *this;
    }
    tempstr.Replace(text, static_cast<char*>(nullptr), 0, true);
    return tempstr;
}

} // namespace RVK
