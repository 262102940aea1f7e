#include "platform/files/PropertyListScanner.h"

#include "platform/files/PropertyListScalars.h"
#include "platform/files/Utf8.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <utility>

namespace platform {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// The name of a start tag, and what kind of tag it is.
struct Tag {
    std::string_view name;
    bool closing = false; // </name>
    bool empty = false;   // <name/>
};

/// Walks the text once. Every operation returns whether all is well; the first fault is kept.
class Scanner {
public:
    Scanner(std::string_view xml, std::size_t maximumDepth) : xml_(xml), maximumDepth_(maximumDepth) {}

    bool document();
    std::string fault() const {
        const auto end = xml_.begin() + static_cast<std::ptrdiff_t>(std::min(faultAt_, xml_.size()));
        return "line " + std::to_string(1 + std::count(xml_.begin(), end, '\n')) + ": " + fault_;
    }

private:
    bool refuse(std::string why) {
        if (fault_.empty()) {
            fault_ = std::move(why);
            faultAt_ = at_;
        }
        return false;
    }
    std::string_view rest() const { return xml_.substr(at_); }
    void skipBlanks() { at_ = std::min(xml_.find_first_not_of(kBlanks, at_), xml_.size()); }
    bool skipUntil(std::string_view end, std::string_view what);
    bool skipMisc();
    bool doctype();
    bool tag(Tag& result);
    bool value(const Tag& opened, std::size_t depth);
    bool container(bool isDictionary, std::size_t depth);
    bool plainText(const Tag& opened, std::string_view& content);
    bool characterData(const Tag& opened);
    bool reference();

    std::string_view xml_;
    std::size_t maximumDepth_;
    std::size_t at_ = 0;
    std::size_t faultAt_ = 0;
    std::string fault_;
};

bool Scanner::skipUntil(std::string_view end, std::string_view what) {
    const std::size_t found = xml_.find(end, at_);
    if (found == std::string_view::npos) {
        return refuse(std::string(what) + " is not closed");
    }
    at_ = found + end.size();
    return true;
}

/// Blanks, comments and processing instructions.
bool Scanner::skipMisc() {
    for (skipBlanks(); at_ < xml_.size(); skipBlanks()) {
        if (rest().starts_with("<!--")) {
            at_ += 4;
            if (!skipUntil("-->", "a comment")) {
                return false;
            }
        } else if (rest().starts_with("<?")) {
            if (!skipUntil("?>", "a processing instruction")) {
                return false;
            }
        } else {
            return true;
        }
    }
    return true;
}

bool Scanner::doctype() {
    if (!rest().starts_with("<!DOCTYPE")) {
        return true;
    }
    const std::size_t end = xml_.find_first_of("[>", at_);
    if (end == std::string_view::npos) {
        return refuse("the document type is not closed");
    }
    if (xml_[end] == '[') {
        return refuse("the document type holds declarations (entities); a property list has none");
    }
    at_ = end + 1;
    return skipMisc();
}

bool Scanner::tag(Tag& result) {
    if (!rest().starts_with("<")) {
        return refuse(at_ >= xml_.size() ? "the text ends too early" : "there is text where a tag belongs");
    }
    const std::size_t end = xml_.find('>', at_);
    if (end == std::string_view::npos) {
        return refuse("a tag is not closed");
    }
    std::string_view inside = xml_.substr(at_ + 1, end - at_ - 1);
    result = {};
    if (inside.starts_with("/")) {
        result.closing = true;
        inside.remove_prefix(1);
    } else if (inside.ends_with("/")) {
        result.empty = true;
        inside.remove_suffix(1);
    }
    const std::size_t nameEnd = std::min(inside.find_first_of(kBlanks), inside.size());
    result.name = inside.substr(0, nameEnd);
    const bool attributes = inside.find_first_not_of(kBlanks, nameEnd) != std::string_view::npos;
    if (attributes && (result.name != "plist" || result.closing)) {
        return refuse("the tag <" + std::string(result.name) + "> has attributes");
    }
    at_ = end + 1;
    return true;
}

/// The plain text of a scalar, its end tag included.
bool Scanner::plainText(const Tag& opened, std::string_view& content) {
    content = {};
    if (opened.empty) {
        return true;
    }
    const std::size_t end = std::min(xml_.find('<', at_), xml_.size());
    content = xml_.substr(at_, end - at_);
    at_ = end;
    Tag closing;
    if (!tag(closing)) {
        return false;
    }
    return (closing.closing && closing.name == opened.name) ||
           refuse("<" + std::string(opened.name) + "> is not closed by its own tag");
}

/// "&lt;" and its like, or a character by its number.
bool Scanner::reference() {
    constexpr std::array<std::string_view, 5> kNames = {"lt", "gt", "amp", "quot", "apos"};
    constexpr std::size_t kLongest = 10;
    const std::size_t end = xml_.find(';', at_);
    if (end == std::string_view::npos || end - at_ > kLongest) {
        return refuse("a character reference is not closed");
    }
    const std::string_view name = xml_.substr(at_ + 1, end - at_ - 1);
    if (std::find(kNames.begin(), kNames.end(), name) == kNames.end() && !isCharacterNumber(name)) {
        return refuse("the entity &" + std::string(name) + "; is unknown");
    }
    at_ = end + 1;
    return true;
}

/// The text of a string or key: references, comments and CDATA allowed, up to its end tag.
bool Scanner::characterData(const Tag& opened) {
    if (opened.empty) {
        return true;
    }
    while (true) {
        at_ = std::min(xml_.find_first_of("<&", at_), xml_.size());
        if (rest().starts_with("&")) {
            if (!reference()) {
                return false;
            }
        } else if (rest().starts_with("<![CDATA[")) {
            if (!skipUntil("]]>", "a CDATA section")) {
                return false;
            }
        } else if (rest().starts_with("<!--")) {
            at_ += 4;
            if (!skipUntil("-->", "a comment")) {
                return false;
            }
        } else {
            break;
        }
    }
    std::string_view nothing;
    return plainText(opened, nothing);
}

bool Scanner::container(bool isDictionary, std::size_t depth) {
    if (depth > maximumDepth_) {
        return refuse("values are nested deeper than " + std::to_string(maximumDepth_) + " levels");
    }
    const std::string_view name = isDictionary ? "dict" : "array";
    while (true) {
        Tag next;
        if (!skipMisc() || !tag(next)) {
            return false;
        }
        if (next.closing) {
            return next.name == name || refuse("<" + std::string(name) + "> is not closed by its own tag");
        }
        if (isDictionary) {
            if (next.name != "key") {
                return refuse("<" + std::string(next.name) + "> stands where a key belongs");
            }
            if (!characterData(next) || !skipMisc() || !tag(next)) {
                return false;
            }
            if (next.closing || next.name == "key") {
                return refuse("a key has no value");
            }
        }
        if (!value(next, depth)) {
            return false;
        }
    }
}

bool Scanner::value(const Tag& opened, std::size_t depth) {
    const std::string_view name = opened.name;
    if (opened.closing) {
        return refuse("</" + std::string(name) + "> stands where a value belongs");
    }
    if (name == "dict" || name == "array") {
        return opened.empty || container(name == "dict", depth + 1);
    }
    if (name == "string") {
        return characterData(opened);
    }
    std::string_view content;
    const std::size_t start = at_;
    if (!plainText(opened, content)) {
        return false;
    }
    const auto check = scalarCheck(name);
    if (check == nullptr) {
        at_ = start;
        return refuse("the tag <" + std::string(name) + "> is unknown");
    }
    if (!check(content)) {
        at_ = start;
        constexpr std::size_t kShown = 40;
        return refuse("<" + std::string(name) + "> holds '" + std::string(content.substr(0, kShown)) +
                      "', which is not " + std::string(scalarWords(name)));
    }
    return true;
}

bool Scanner::document() {
    if (rest().starts_with("\xEF\xBB\xBF")) {
        at_ += 3;
    }
    if (rest().starts_with("<?xml")) {
        const std::string_view declaration = rest().substr(0, rest().find("?>"));
        const std::size_t encoding = declaration.find("encoding");
        if (encoding != std::string_view::npos) {
            std::string given(declaration.substr(encoding));
            std::transform(given.begin(), given.end(), given.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
            if (given.find("utf-8") == std::string::npos && given.find("us-ascii") == std::string::npos) {
                return refuse("the encoding is not UTF-8");
            }
        }
    }
    Tag opened;
    if (!skipMisc() || !doctype() || !tag(opened)) {
        return false;
    }
    if (opened.name != "plist" || opened.closing || opened.empty) {
        return refuse("the outermost tag is not <plist> with a value in it");
    }
    Tag first;
    Tag closing;
    if (!skipMisc() || !tag(first) || !value(first, 0) || !skipMisc() || !tag(closing)) {
        return false;
    }
    if (!closing.closing || closing.name != "plist") {
        return refuse("<plist> holds more than one value");
    }
    return skipMisc() && (at_ == xml_.size() || refuse("something follows behind </plist>"));
}

} // namespace

std::optional<std::string> findPropertyListFault(std::string_view xml, const PropertyListLimits& limits) {
    if (xml.size() > limits.bytes) {
        return "it is " + std::to_string(xml.size()) + " bytes long; the limit is " +
               std::to_string(limits.bytes);
    }
    if (xml.starts_with("bplist")) {
        return std::string("it is a binary property list; only the XML form is read");
    }
    if (xml.find('\0') != std::string_view::npos || findBadUtf8(xml) != std::string_view::npos) {
        return std::string("it is not a text in UTF-8");
    }
    Scanner scanner(xml, limits.depth);
    if (scanner.document()) {
        return std::nullopt;
    }
    return scanner.fault();
}

} // namespace platform
