#include "platform/files/PropertyListSerialization.h"

#include "platform/core/Text.h"
#include "platform/files/NumericLocale.h"
#include "platform/files/Utf8.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <plist/plist.h>
#include <string>
#include <string_view>
#include <utility>

namespace platform {
namespace {

struct NodeDeleter {
    void operator()(void* node) const noexcept { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

struct MallocDeleter {
    void operator()(void* memory) const noexcept {
        std::free(memory);
    } // NOLINT: the library allocates with malloc
};
template <class T>
using Malloced = std::unique_ptr<T, MallocDeleter>;

/// Opens the text that stands for a real until the XML is there. The library writes reals in the locale's
/// manner and drops the sign of zero, so they go through it as strings; no other string may hold this byte.
constexpr char kRealMark = '\x01';
constexpr double kLastSecond = 2145916799.0;   // of 2068
constexpr double kFirstSecond = -2114380800.0; // of 1934

NSError cocoaError(long code, std::string description) {
    return {NSCocoaErrorDomain, code, {{NSLocalizedDescriptionKey, std::move(description)}}};
}

/// Makes the library's tree. An empty node means failure, and `fault` says why.
class NodeWriter {
public:
    Node node(const PropertyList& value);
    std::string fault;

private:
    Node string(const std::string& value);
    Node date(double seconds);
    Node array(const PropertyListArray& items);
    Node dictionary(const PropertyListDictionary& entries);
};

Node NodeWriter::string(const std::string& value) {
    if (!isXmlText(value)) {
        fault = "a text is not valid UTF-8 or holds control characters";
        return nullptr;
    }
    return Node(plist_new_string(value.c_str()));
}

Node NodeWriter::date(double seconds) {
    if (!(seconds >= kFirstSecond && seconds <= kLastSecond)) {
        fault = "a date lies outside 1934 to 2068";
        return nullptr;
    }
    return Node(plist_new_date(static_cast<std::int32_t>(std::floor(seconds)), 0));
}

Node NodeWriter::array(const PropertyListArray& items) {
    Node result(plist_new_array());
    for (const PropertyList& item : items) {
        Node child = node(item);
        if (!child) {
            return nullptr;
        }
        plist_array_append_item(result.get(), child.release());
    }
    return result;
}

Node NodeWriter::dictionary(const PropertyListDictionary& entries) {
    Node result(plist_new_dict());
    for (const auto& [key, value] : entries) {
        if (!isXmlText(key)) {
            fault = "a key is not valid UTF-8 or holds control characters";
            return nullptr;
        }
        Node child = node(value);
        if (!child) {
            return nullptr;
        }
        plist_dict_set_item(result.get(), key.c_str(), child.release());
    }
    return result;
}

Node NodeWriter::node(const PropertyList& value) {
    switch (value.kind()) {
    case PropertyList::Kind::boolean:
        return Node(plist_new_bool(*value.asBool() ? 1 : 0));
    case PropertyList::Kind::integer:
        return Node(plist_new_uint(static_cast<std::uint64_t>(*value.asInteger())));
    case PropertyList::Kind::real:
        return Node(plist_new_string((kRealMark + text(*value.asNumber())).c_str()));
    case PropertyList::Kind::string:
        return string(*value.asString());
    case PropertyList::Kind::data: {
        const std::string_view bytes = textView(*value.asData());
        return Node(plist_new_data(bytes.empty() ? "" : bytes.data(), bytes.size()));
    }
    case PropertyList::Kind::date:
        return date(value.asDate()->secondsSince2001);
    case PropertyList::Kind::array:
        return array(*value.asArray());
    case PropertyList::Kind::dictionary:
        break;
    }
    return dictionary(*value.asDictionary());
}

/// Turns the strings that stand for reals into reals.
std::string withReals(std::string_view xml) {
    constexpr std::string_view kOpen = "<string>\x01";
    constexpr std::string_view kClose = "</string>";
    std::string result;
    result.reserve(xml.size());
    while (true) {
        const std::size_t open = xml.find(kOpen);
        if (open == std::string_view::npos) {
            return result.append(xml);
        }
        const std::size_t number = open + kOpen.size();
        const std::size_t close = xml.find(kClose, number);
        result.append(xml.substr(0, open)).append("<real>");
        result.append(xml.substr(number, close - number)).append("</real>");
        xml.remove_prefix(close + kClose.size());
    }
}

PropertyList readNode(plist_t node);

PropertyList readDictionary(plist_t node) {
    PropertyListDictionary result;
    plist_dict_iter opaque = nullptr;
    plist_dict_new_iter(node, &opaque);
    const Malloced<void> iterator(opaque);
    while (true) {
        char* key = nullptr;
        plist_t child = nullptr;
        plist_dict_next_item(node, iterator.get(), &key, &child);
        const Malloced<char> owned(key);
        if (child == nullptr) {
            return result;
        }
        result.append(owned ? owned.get() : "", readNode(child)); // the library keeps keys unique
    }
}

PropertyList readArray(plist_t node) {
    PropertyListArray result;
    plist_array_iter opaque = nullptr;
    plist_array_new_iter(node, &opaque);
    const Malloced<void> iterator(opaque);
    while (true) {
        plist_t child = nullptr;
        plist_array_next_item(node, iterator.get(), &child);
        if (child == nullptr) {
            return result;
        }
        result.push_back(readNode(child));
    }
}

PropertyList readNode(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return static_cast<std::int64_t>(value);
    }
    case PLIST_REAL: {
        double value = 0.0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_DATA: {
        std::uint64_t length = 0;
        char* bytes = nullptr;
        plist_get_data_val(node, &bytes, &length);
        const Malloced<char> owned(bytes);
        return owned ? Data(owned.get(), owned.get() + length) : Data();
    }
    case PLIST_DATE: {
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return PropertyListDate{static_cast<double>(seconds)};
    }
    case PLIST_ARRAY:
        return readArray(node);
    case PLIST_DICT:
        return readDictionary(node);
    default:
        break;
    }
    char* value = nullptr;
    plist_get_string_val(node, &value);
    const Malloced<char> owned(value);
    return std::string(owned ? owned.get() : "");
}

} // namespace

Result<Data> PropertyListSerialization::dataWithPropertyList(const PropertyList& list,
                                                             NSPropertyListFormat format,
                                                             NSPropertyListOptions /*options*/) {
    if (format != NSPropertyListXMLFormat_v1_0) {
        return cocoaError(NSPropertyListWriteInvalidError,
                          "Only the XML form of property lists can be written.");
    }
    NodeWriter writer;
    const Node root = writer.node(list);
    char* xml = nullptr;
    std::uint32_t length = 0;
    if (root) {
        plist_to_xml(root.get(), &xml, &length);
    }
    const Malloced<char> owned(xml);
    if (!owned) {
        return cocoaError(NSPropertyListWriteInvalidError,
                          "The property list can't be written: " +
                              (writer.fault.empty() ? std::string("the library refused it") : writer.fault) +
                              ".");
    }
    return dataFromText(withReals({owned.get(), length}));
}

Result<PropertyList> PropertyListSerialization::propertyListWithData(const Data& data,
                                                                     NSPropertyListOptions /*options*/,
                                                                     NSPropertyListFormat& format,
                                                                     const PropertyListLimits& limits) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    std::string_view xml = textView(data);
    if (const auto fault = findPropertyListFault(xml, limits)) {
        return cocoaError(NSPropertyListReadCorruptError, "The property list can't be read: " + *fault + ".");
    }
    if (xml.starts_with(kByteOrderMark)) {
        xml.remove_prefix(kByteOrderMark.size());
    }
    plist_t parsed = nullptr;
    {
        const NumericLocale pointAsDecimalSeparator;
        plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &parsed);
    }
    const Node root(parsed);
    if (!root) {
        return cocoaError(NSPropertyListReadCorruptError, "The property list can't be read: it is damaged.");
    }
    format = NSPropertyListXMLFormat_v1_0;
    return readNode(root.get());
}

} // namespace platform
