// Pictures as files: PNG, SVG or PDF by the name's ending.
#pragma once

#include "hosts/cli/OutputFile.h"
#include "platform/draw/Draw.h"

#include <functional>
#include <memory>
#include <string>

namespace qor::cli {

/// A picture that appears under its name in `commit`.
class PictureFile {
public:
    /// Fails for another ending than .png, .svg or .pdf (in any case), and where the file can't be made.
    static Result<std::unique_ptr<PictureFile>> create(const std::string& file);

    /// Runs `draw` with a context of this size in points as the current one, then writes what was
    /// drawn and brings it to the disk. `scale`: pixels per point of a PNG, enlargement of the others.
    Result<void> write(const CGSize& points, double scale, const std::function<void()>& draw);
    /// Gives the file its name.
    Result<void> commit() { return file_->commit(); }

private:
    enum class Format : std::uint8_t { png, svg, pdf };
    PictureFile(std::unique_ptr<OutputFile> file, Format format) : file_(std::move(file)), format_(format) {}
    Result<std::string> bytesOf(const CGSize& points, double scale, const std::function<void()>& draw) const;

    std::unique_ptr<OutputFile> file_;
    Format format_;
};

} // namespace qor::cli
