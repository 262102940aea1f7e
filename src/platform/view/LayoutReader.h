// A dictionary of a layout with its place, for reading with exact complaints.
#pragma once

#include "platform/core/Result.h"
#include "platform/draw/CGGeometry.h"
#include "platform/draw/UIColor.h"
#include "platform/files/PropertyList.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The first complaint of a loading; later ones are dropped.
class LayoutComplaint {
public:
    void say(const std::string& path, const std::string& what) {
        if (!text_) {
            text_ = path + ": " + what;
        }
    }
    const std::optional<std::string>& text() const noexcept { return text_; }

private:
    std::optional<std::string> text_;
};

/// Reads one dictionary. Each operation says the complaint itself and gives nothing for an absent key or a
/// value of another kind; `finish` complains of keys that were never asked for.
class LayoutReader {
public:
    LayoutReader(const PropertyList& value, std::string path, LayoutComplaint& complaint);

    bool valid() const noexcept { return dictionary_ != nullptr; }
    std::optional<std::string> text(std::string_view key);
    std::optional<bool> boolean(std::string_view key);
    /// Finite.
    std::optional<double> number(std::string_view key);
    std::optional<CGRect> rect(std::string_view key);
    std::optional<UIColor> color(std::string_view key);
    /// The elements, each with its path.
    std::vector<std::pair<const PropertyList*, std::string>> list(std::string_view key);
    const PropertyList* dictionary(std::string_view key);
    /// The keys in order, for dictionaries with free keys.
    std::vector<std::string> keys() const;
    void finish();
    void complain(std::string_view key, const std::string& what);
    std::string pathOf(std::string_view key) const;

private:
    const PropertyList* find(std::string_view key);
    std::optional<std::vector<double>> numbers(std::string_view key, std::size_t count);

    const PropertyListDictionary* dictionary_ = nullptr;
    std::string path_;
    LayoutComplaint& complaint_;
    std::set<std::string, std::less<>> asked_;
};

} // namespace platform
