// Pictures as files: PNG, SVG or PDF by the name's ending.
#pragma once

#include "hosts/cli/AtomicFile.h"
#include "platform/draw/Draw.h"

#include <functional>
#include <memory>
#include <string>

namespace qor::cli {

/// A picture that appears under its name when it is written.
class PictureFile {
public:
    /// Fails for another ending than .png, .svg or .pdf (in any case), and where the file can't be made.
    static Result<std::unique_ptr<PictureFile>> create(const std::string& file);

    /// Runs `draw` with a context of this size in points as the current one, then writes and names the file.
    /// `scale`: pixels per point of a PNG, enlargement of the others.
    Result<void> write(const CGSize& points, double scale, const std::function<void()>& draw);

private:
    enum class Format : std::uint8_t { png, svg, pdf };
    PictureFile(std::unique_ptr<AtomicFile> file, Format format) : file_(std::move(file)), format_(format) {}
    Result<std::string> bytesOf(const CGSize& points, double scale, const std::function<void()>& draw) const;

    std::unique_ptr<AtomicFile> file_;
    Format format_;
};

} // namespace qor::cli
