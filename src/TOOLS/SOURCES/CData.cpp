#include "TOOLS/SOURCES/CData.h"

#include "TOOLS/SOURCES/HexTable.h"
#include "TOOLS/SOURCES/KeptBuffers.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

namespace RVK {

namespace {

constexpr const char* kOutOfMemory = "(out of memory)";
constexpr const char* kUndefinedXml = "<CData>\n\tundefined</CData>";

char* put(char* to, std::string_view text) {
    std::memcpy(to, text.data(), text.size());
    return to + text.size();
}

char* putTabs(char* to, int number) {
    std::memset(to, '\t', static_cast<std::size_t>(number));
    return to + number;
}

char* putByte(char* to, char byte) {
    return put(to, {&hextable[std::size_t{2} * static_cast<unsigned char>(byte)], 2});
}

} // namespace

CData::CData() : data(unsetData()) {
    ++count;
}

CData::~CData() {
    Clear();
    if (ownsData()) {
        keepUntilExit(data);
    }
    --count;
    if (count <= 0) {
        std::free(tempBase_);
        std::free(wtemp);
        std::free(err);
        tempBase_ = nullptr;
        temp = nullptr;
        wtemp = nullptr;
        err = nullptr;
    }
}

void CData::Clear() {}

const char* CData::ClassName() const {
    return classname;
}
int CData::ClassCount() const {
    return count;
}
int CData::Length() const {
    return length;
}
bool CData::Empty() const {
    return length == 0;
}
int CData::DataSize() const {
    return Padding(length);
}
int CData::ObjectSize() const {
    return static_cast<int>(sizeof(CData));
}
const char* CData::String() const {
    return Hex5();
}

const char* CData::Hex2() const {
    return length == 0 ? "00" : hexText("", false);
}
const char* CData::Hex3() const {
    return length == 0 ? "00" : hexText("", true);
}
const char* CData::Hex4() const {
    return length == 0 ? "#00" : hexText("#", true);
}
const char* CData::Hex5() const {
    return length == 0 ? "0x00" : hexText("0x", true);
}

const char* CData::hexText(const char* prefix, bool blank) const {
    const std::string_view mark = prefix;
    const auto perByte = static_cast<std::int64_t>(mark.size() + 2 + (blank ? 1 : 0));
    char* const text = newTemp(paddingOf(length * perByte));
    if (text == nullptr) {
        return kOutOfMemory;
    }
    char* to = text;
    for (std::int32_t i = 0; i < length; ++i) {
        to = putByte(put(to, mark), data[i]);
        if (blank) {
            *to++ = ' ';
        }
    }
    if (blank) {
        to[-1] = '\0';
    }
    return text;
}

const char* CData::ColorRGB() const {
    if (length == 0) {
        return "#000000";
    }
    // The padding counts no room for the "#", and the zero goes seven places behind the last digit: slack for
    // both.
    constexpr int kSlack = 8;
    const int padded = paddingOf(2 * static_cast<std::int64_t>(length));
    char* const text = newTemp(padded == 0 ? 0 : static_cast<std::int64_t>(padded) + kSlack);
    if (text == nullptr) {
        return kOutOfMemory;
    }
    char* to = put(text, "#");
    for (std::int32_t i = 0; i < length; ++i) {
        to = putByte(to, data[i]);
    }
    to[-1 + 7] = '\0';
    return text;
}

const char* CData::XML(int indent) const {
    if (data == nullptr || length == 0) {
        return kUndefinedXml;
    }
    const std::string_view text = String();
    const int tabs = indent > 0 ? indent : 0;
    const auto size = paddingOf(std::int64_t{tabs} * 3 + static_cast<std::int64_t>(text.size()) + 34 + 1);
    auto* const buffer = static_cast<char*>(CAlloc(static_cast<unsigned long>(size), 1));
    if (buffer == nullptr) {
        return kUndefinedXml;
    }
    char* to = put(putTabs(buffer, tabs), "<CData encoding='HEX5'>\n\t");
    to = put(put(putTabs(to, tabs), text), "\n");
    char* const closing = putTabs(to, tabs);
    put(closing, "</CData>\n");
    return adoptTemp(buffer, closing);
}

void* CData::CAlloc(unsigned long number, unsigned long size) {
    return number == 0 || size == 0 ? nullptr : std::calloc(number, size);
}

int CData::Padding(int n) {
    return paddingOf(n);
}

int CData::paddingOf(std::int64_t n) {
    if (n < 1) {
        return 0;
    }
    const std::int64_t padded = (n + 1 + 3) / 4 * 4;
    return padded > std::numeric_limits<int>::max() ? 0 : static_cast<int>(padded);
}

int CData::StrLen(const char* text) {
    return text == nullptr ? 0 : static_cast<int>(std::strlen(text));
}

bool CData::ownsData() const {
    return data != nullptr && data != nullText;
}

char* CData::unsetData() {
    return const_cast<char*>(nullText);
}

char* CData::newTemp(std::int64_t size) {
    std::free(tempBase_);
    tempBase_ = static_cast<char*>(CAlloc(static_cast<unsigned long>(size), 1));
    temp = tempBase_;
    return temp;
}

const char* CData::adoptTemp(char* buffer, char* text) {
    std::free(tempBase_);
    tempBase_ = buffer;
    temp = text;
    return temp;
}

} // namespace RVK
