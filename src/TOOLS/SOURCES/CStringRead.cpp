// Operations that look at the text, search it or give another form of it.
#include "TOOLS/SOURCES/CString.h"

#include <cctype>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace RVK {

namespace {

/// The "C" locale for number texts: the process's own may use another decimal sign.
locale_t cLocale() {
    static locale_t const locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

} // namespace

int CString::At(int i) const {
    return i < 0 || i >= length ? 0 : static_cast<signed char>(data[i]);
}
int CString::First() const {
    return At(0);
}
int CString::Last() const {
    return At(length - 1);
}

int CString::Find(char* text, int from) const {
    const auto size = static_cast<std::size_t>(StrLen(text));
    if (size == 0 || length == 0) {
        return -1;
    }
    const std::string_view whole(data, static_cast<std::size_t>(length));
    const auto found = whole.find({text, size}, static_cast<std::size_t>(from < 0 ? 0 : from));
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

const char* CString::SubStr(int i, int n) const {
    if (i < 0 || i >= length) {
        return nullptr;
    }
    const int size = n < length - i ? n : length - i;
    if (size < 1) {
        return nullptr;
    }
    char* const text = newTemp(paddingOf(size));
    if (text != nullptr) {
        std::memcpy(text, data + i, static_cast<std::size_t>(size));
    }
    return text;
}

int CString::Integer() const {
    return hasText() ? static_cast<int>(std::strtol(data, nullptr, 10)) : 0;
}
int CString::HexToInt() const {
    return hasText() ? static_cast<int>(std::strtol(data, nullptr, 16)) : 0;
}
float CString::Float() const {
    return static_cast<float>(Double());
}
double CString::Double() const {
    return hasText() ? ::strtod_l(data, nullptr, cLocale()) : 0.0;
}
bool CString::ToBool() const {
    return hasText();
}

const char32_t* CString::Unicode() const {
    if (!hasText()) {
        return nullptr;
    }
    std::free(wtemp);
    wtemp = static_cast<char32_t*>(CAlloc(static_cast<unsigned long>(Padding(length)), sizeof(char32_t)));
    for (int i = 0; wtemp != nullptr && i < length; ++i) {
        wtemp[i] = static_cast<unsigned char>(data[i]);
    }
    return wtemp;
}

bool CString::IsASCII() const {
    for (const char c : std::string_view(c_str())) {
        if ((static_cast<unsigned char>(c) & 0x80U) != 0) {
            return false;
        }
    }
    return true;
}

bool CString::IsKeyword() const {
    for (int i = 0; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(data[i]);
        if (std::isalnum(byte) == 0 || (i == 0 && std::isdigit(byte) != 0)) {
            return false;
        }
    }
    return true;
}

} // namespace RVK
