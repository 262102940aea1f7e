// A location: a file's path, or a text with a scheme.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A value. The path operations work on the text alone: nothing here looks at the file system.
class URL {
public:
    URL() = default;

    /// The location of a file. A slash at the end says that it is a directory.
    static URL fileURLWithPath(std::string path);
    /// From a text such as "https://host/name" or "file:///a%20b"; nothing if there is no scheme or a percent
    /// code is broken.
    static std::optional<URL> initWithString(std::string_view text);

    bool isFileURL() const noexcept { return scheme_ == "file"; }
    /// Lower case, without the colon.
    const std::string& scheme() const noexcept { return scheme_; }
    /// The path without a slash at its end (the root apart), percent codes decoded.
    std::string path() const;
    bool hasDirectoryPath() const noexcept { return !path_.empty() && path_.back() == '/'; }
    /// The whole location as a text, with percent codes.
    std::string absoluteString() const;

    /// Adds a name, or several with slashes between, behind exactly one slash.
    void appendPathComponent(std::string_view component);
    URL appendingPathComponent(std::string_view component) const;
    /// "a.txt" of "/tmp/a.txt"; "tmp" of "/tmp/"; "/" of the root.
    std::string lastPathComponent() const;
    /// What stands behind the last point of the last component: "txt"; empty for "a", "a." and ".a".
    std::string pathExtension() const;
    /// The same location without extension and point.
    URL deletingPathExtension() const;

    friend bool operator==(const URL&, const URL&) = default;

private:
    std::string scheme_ = "file";
    std::string authority_; // with its two slashes, of other schemes only
    std::string path_;
    std::string rest_; // query and fragment as they came
};

} // namespace platform
