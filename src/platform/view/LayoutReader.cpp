#include "platform/view/LayoutReader.h"

#include "platform/core/Text.h"

#include <cmath>
#include <utility>

namespace platform {

LayoutReader::LayoutReader(const PropertyList& value, std::string path, LayoutComplaint& complaint)
    : dictionary_(value.asDictionary()), path_(std::move(path)), complaint_(complaint) {
    if (dictionary_ == nullptr) {
        complaint_.say(path_,
                       "a dictionary is needed, not a value of kind " + std::string(kindName(value.kind())));
    }
}

std::string LayoutReader::pathOf(std::string_view key) const {
    return path_.empty() ? std::string(key) : path_ + "." + std::string(key);
}

void LayoutReader::complain(std::string_view key, const std::string& what) {
    complaint_.say(pathOf(key), what);
}

const PropertyList* LayoutReader::find(std::string_view key) {
    asked_.emplace(key);
    return dictionary_ == nullptr ? nullptr : dictionary_->find(key);
}

std::optional<std::string> LayoutReader::text(std::string_view key) {
    const PropertyList* value = find(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (const std::string* found = value->asString()) {
        return *found;
    }
    complain(key, "a text is needed");
    return std::nullopt;
}

std::optional<bool> LayoutReader::boolean(std::string_view key) {
    const PropertyList* value = find(key);
    if (value != nullptr && !value->asBool()) {
        complain(key, "true or false is needed");
    }
    return value == nullptr ? std::nullopt : value->asBool();
}

std::optional<double> LayoutReader::number(std::string_view key) {
    const PropertyList* value = find(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    const std::optional<double> found = value->asNumber();
    if (!found || !std::isfinite(*found)) {
        complain(key, "a finite number is needed");
        return std::nullopt;
    }
    return found;
}

std::optional<std::vector<double>> LayoutReader::numbers(std::string_view key, std::size_t count) {
    const PropertyList* value = find(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    std::vector<double> found;
    if (const PropertyListArray* elements = value->asArray()) {
        for (const PropertyList& element : *elements) {
            const std::optional<double> number = element.asNumber();
            if (number && std::isfinite(*number)) {
                found.push_back(*number);
            }
        }
        if (found.size() == count && elements->size() == count) {
            return found;
        }
    }
    complain(key,
             "a list of " + platform::text(static_cast<std::uint64_t>(count)) + " finite numbers is needed");
    return std::nullopt;
}

std::optional<CGRect> LayoutReader::rect(std::string_view key) {
    const auto found = numbers(key, 4);
    if (!found) {
        return std::nullopt;
    }
    return CGRectMake((*found)[0], (*found)[1], (*found)[2], (*found)[3]);
}

std::optional<UIColor> LayoutReader::color(std::string_view key) {
    const auto found = numbers(key, 4);
    if (!found) {
        return std::nullopt;
    }
    return UIColor((*found)[0], (*found)[1], (*found)[2], (*found)[3]);
}

std::vector<std::pair<const PropertyList*, std::string>> LayoutReader::list(std::string_view key) {
    std::vector<std::pair<const PropertyList*, std::string>> found;
    const PropertyList* value = find(key);
    if (value == nullptr) {
        return found;
    }
    const PropertyListArray* elements = value->asArray();
    if (elements == nullptr) {
        complain(key, "a list is needed");
        return found;
    }
    for (std::size_t i = 0; i < elements->size(); ++i) {
        found.emplace_back(&(*elements)[i],
                           pathOf(key) + "[" + platform::text(static_cast<std::uint64_t>(i)) + "]");
    }
    return found;
}

const PropertyList* LayoutReader::dictionary(std::string_view key) {
    return find(key);
}

std::vector<std::string> LayoutReader::keys() const {
    std::vector<std::string> found;
    if (dictionary_ != nullptr) {
        for (const PropertyListDictionary::Entry& entry : *dictionary_) {
            found.push_back(entry.key);
        }
    }
    return found;
}

void LayoutReader::finish() {
    for (const std::string& key : keys()) {
        if (!asked_.contains(key)) {
            complain(key, "unknown key");
        }
    }
}

} // namespace platform
