#include "hosts/cli/PictureFile.h"

#include "platform/draw/BitmapContext.h"
#include "platform/draw/VectorContext.h"

#include <algorithm>
#include <filesystem>

namespace qor::cli {

Result<std::unique_ptr<PictureFile>> PictureFile::create(const std::string& file) {
    std::string ending = std::filesystem::path(file).extension().string();
    std::ranges::transform(ending, ending.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    Format format = Format::png;
    if (ending == ".svg") {
        format = Format::svg;
    } else if (ending == ".pdf") {
        format = Format::pdf;
    } else if (ending != ".png") {
        return wrongUsage("The picture " + shown(file) + " has no known ending. Name it .png, .svg or .pdf.");
    }
    Result<std::unique_ptr<OutputFile>> made = OutputFile::create(file);
    if (!made) {
        return made.error();
    }
    return std::unique_ptr<PictureFile>(new PictureFile(std::move(made).value(), format));
}

Result<std::string> PictureFile::bytesOf(const CGSize& points, double scale,
                                         const std::function<void()>& draw) const {
    if (format_ == Format::png) {
        const auto context = BitmapContext::make(points, scale);
        if (!context) {
            return context.error();
        }
        const GraphicsScope scope(*context.value());
        draw();
        return UIImagePNGRepresentation(context.value()->image());
    }
    const auto context = VectorContext::make(
        format_ == Format::svg ? VectorContext::Format::svg : VectorContext::Format::pdf, points, scale);
    if (!context) {
        return context.error();
    }
    const GraphicsScope scope(*context.value());
    draw();
    return context.value()->finish();
}

Result<void> PictureFile::write(const CGSize& points, double scale, const std::function<void()>& draw) {
    const Result<std::string> bytes = bytesOf(points, scale, draw);
    if (!bytes) {
        return workFailed(quotedName(file_->target()) + ": " + bytes.error().localizedDescription());
    }
    if (Result<void> written = file_->write(bytes.value()); !written) {
        return written;
    }
    return file_->sync();
}

} // namespace qor::cli
