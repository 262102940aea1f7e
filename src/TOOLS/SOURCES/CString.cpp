// Construction, assignment and the buffer that all other operations work on.
#include "TOOLS/SOURCES/CString.h"

#include "TOOLS/SOURCES/Data.h" // this library's own globals
#include "TOOLS/SOURCES/KeptBuffers.h"
#include "TOOLS/SOURCES/NumberText.h"

#include <cstdlib>
#include <cstring>

namespace RVK {

CString CString::tempstr;

CString::CString() {
    init();
}

CString::CString(char* text) {
    init();
    if (text != nullptr) {
        assign(text, StrLen(text));
    }
}

CString::CString(const CString& other)
    : CData() { // NOLINT(readability-redundant-member-init): -Wextra asks for it
    init();
    assign(other.data, other.length);
}

CString::~CString() {
    Clear();
    --count;
}

void CString::init() {
    ++count;
    classname = "CString";
}

int CString::ClassCount() const {
    return count;
}

const char* CString::String() const {
    return hasText() ? data : nullText;
}
const char* CString::c_str() const {
    return hasText() ? data : nullText;
}
const char* CString::Data() const {
    return hasText() ? data : nullText;
}

void CString::reassign(int n) {
    adopt(nullptr, 0);
    if (n > 0) {
        adopt(static_cast<char*>(CAlloc(static_cast<unsigned long>(Padding(n)), 1)), n);
    }
}

void CString::adopt(char* buffer, int size) {
    if (ownsData()) {
        std::free(data);
    }
    data = buffer != nullptr ? buffer : unsetData();
    length = buffer != nullptr ? size : 0;
}

CString& CString::assign(const char* bytes, std::int64_t size) {
    char* buffer = nullptr;
    if (size > 0) {
        buffer = static_cast<char*>(CAlloc(static_cast<unsigned long>(paddingOf(size)), 1));
        if (buffer == nullptr) {
            return *this;
        }
        std::memcpy(buffer, bytes, static_cast<std::size_t>(size));
    }
    if (ownsData()) {
        keepUntilExit(data);
    }
    data = buffer != nullptr ? buffer : unsetData();
    length = static_cast<std::int32_t>(size);
    return *this;
}

CString& CString::operator=(CString& other) {
    Clear();
    return this == &other ? *this : assign(other.data, other.length);
}

CString& CString::operator=(char* text) {
    Clear();
    return text == nullptr ? *this : assign(text, StrLen(text));
}

CString& CString::operator=(const char* text) {
    return *this = const_cast<char*>(text);
}

CString& CString::operator=(int number) {
    return *this = NumberText(number).text();
}

CString& CString::operator=(double number) {
    return *this = NumberText(number).text();
}

bool CString::splice(int ahead, const char* middle, std::int64_t size, int behind) {
    const std::int64_t whole = ahead + size + (length - behind);
    auto* const buffer = static_cast<char*>(CAlloc(static_cast<unsigned long>(paddingOf(whole)), 1));
    if (buffer == nullptr) {
        return false;
    }
    std::memcpy(buffer, data, static_cast<std::size_t>(ahead));
    if (size > 0) {
        std::memcpy(buffer + ahead, middle, static_cast<std::size_t>(size));
    }
    std::memcpy(buffer + ahead + size, data + behind, static_cast<std::size_t>(length - behind));
    adopt(buffer, static_cast<int>(whole));
    return true;
}

} // namespace RVK
