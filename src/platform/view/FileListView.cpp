#include "platform/view/FileListView.h"

#include "platform/draw/CGContext.h"
#include "platform/draw/UIBezierPath.h"
#include "platform/files/FileManager.h"
#include "platform/view/ViewStyle.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <tuple>

namespace platform {

namespace {

constexpr double kRow = 18.0;
constexpr double kMargin = 6.0;

bool isDirectory(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

std::string joined(const std::string& directory, const std::string& name) {
    return directory.ends_with('/') ? directory + name : directory + "/" + name;
}

} // namespace

Result<void> FileListView::showDirectory(const std::string& path) {
    auto names = FileManager::defaultManager().contentsOfDirectoryAtPath(path);
    if (!names) {
        return names.error();
    }
    directory_ = path;
    entries_.clear();
    for (std::string& name : names.value()) {
        if (!name.starts_with('.')) {
            const bool directory = isDirectory(joined(path, name));
            entries_.push_back({.name = std::move(name), .isDirectory = directory});
        }
    }
    std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return std::tie(b.isDirectory, a.name) < std::tie(a.isDirectory, b.name);
    });
    if (path != "/") {
        entries_.insert(entries_.begin(), {.name = "..", .isDirectory = true});
    }
    marked_.clear();
    current_ = 0;
    top_ = 0.0;
    setNeedsDisplay();
    return {};
}

std::string FileListView::pathOf(std::size_t row) const {
    const std::string& name = entries_[row].name;
    if (name == "..") {
        return std::filesystem::path(directory_).parent_path().string();
    }
    return joined(directory_, name);
}

std::vector<std::string> FileListView::selectedPaths() const {
    std::vector<std::string> paths;
    for (const std::size_t row : marked_) {
        paths.push_back(pathOf(row));
    }
    if (paths.empty() && current_ < entries_.size() && !entries_[current_].isDirectory) {
        paths.push_back(pathOf(current_));
    }
    return paths;
}

void FileListView::openCurrent() {
    if (current_ >= entries_.size()) {
        return;
    }
    if (entries_[current_].isDirectory && marked_.empty()) {
        if (const auto enter = onEnter) {
            enter(pathOf(current_));
        }
    } else if (const auto take = onTake) {
        take();
    }
}

void FileListView::select(std::size_t row, bool marks) {
    current_ = row;
    if (marks && allowsMultipleSelection && !entries_[row].isDirectory) {
        if (marked_.erase(row) == 0) {
            marked_.insert(row);
        }
    } else if (!marks) {
        marked_.clear();
    }
    scrollToCurrent();
    setNeedsDisplay();
    if (const auto changed = onSelectionChange) {
        changed();
    }
}

void FileListView::goTo(std::size_t row) {
    current_ = row;
    scrollToCurrent();
    setNeedsDisplay();
}

void FileListView::draw(const CGRect& rect) {
    style::drawBox(rect, style::kField, isFirstResponder() ? style::kFocus : style::kLine);
    CGContext* context = UIGraphicsGetCurrentContext();
    if (context == nullptr) {
        return;
    }
    context->clipToRect(CGRectInset(rect, 1.0, 1.0));
    const UIFont font = UIFont::systemFontOfSize(style::kFontSize);
    const auto first = static_cast<std::size_t>(std::max(0.0, std::floor(top_)));
    for (std::size_t row = first; row < entries_.size(); ++row) {
        const double y = rect.origin.y + (static_cast<double>(row) - top_) * kRow;
        if (y > rect.origin.y + rect.size.height) {
            break;
        }
        const CGRect line = CGRectMake(rect.origin.x, y, rect.size.width, kRow);
        if (marked_.contains(row) || row == current_) {
            (marked_.contains(row) ? style::kAccent.colorWithAlphaComponent(0.6) : style::kPressed).setFill();
            UIBezierPath::bezierPathWithRect(line).fill();
        }
        const Entry& entry = entries_[row];
        style::drawText(entry.isDirectory ? entry.name + "/" : entry.name, CGRectInset(line, kMargin, 0.0),
                        font, entry.isDirectory ? style::kText : style::kText.colorWithAlphaComponent(0.85),
                        NSTextAlignment::left);
    }
}

void FileListView::touchesBegan(const UITouchSet& touches, UIEvent* event) {
    becomeFirstResponder();
    if (touches.empty()) {
        return;
    }
    const double row = top_ + touches.front()->locationInView(this).y / kRow;
    if (row >= 0.0 && row < static_cast<double>(entries_.size())) {
        const bool marks = event != nullptr && (event->modifierFlags & UIKeyModifierControl) != 0;
        select(static_cast<std::size_t>(row), marks);
    }
}

void FileListView::touchesEnded(const UITouchSet& touches, UIEvent* /*event*/) {
    if (!touches.empty() && touches.front()->tapCount() == 2) {
        openCurrent();
    }
}

void FileListView::scrollBy(double rows) {
    const double visible = bounds().size.height / kRow;
    const double most = std::max(0.0, static_cast<double>(entries_.size()) - visible);
    top_ = std::clamp(top_ + rows, 0.0, most);
    setNeedsDisplay();
}

void FileListView::scrollToCurrent() {
    const double visible = std::max(1.0, std::floor(bounds().size.height / kRow));
    const auto here = static_cast<double>(current_);
    if (here < top_) {
        scrollBy(here - top_);
    } else if (here + 1.0 > top_ + visible) {
        scrollBy(here + 1.0 - visible - top_);
    }
}

bool FileListView::scrollWheel(const UIWheelEvent& event) {
    constexpr double kRowsPerNotch = 3.0;
    scrollBy(-event.deltaY * kRowsPerNotch);
    return true;
}

bool FileListView::keyDown(const UIKeyEvent& event) {
    if (entries_.empty()) {
        return false;
    }
    const std::size_t last = entries_.size() - 1;
    const auto page = static_cast<std::size_t>(std::max(1.0, bounds().size.height / kRow - 1.0));
    switch (event.key) {
    case UIKey::up:
        goTo(current_ == 0 ? 0 : current_ - 1);
        return true;
    case UIKey::down:
        goTo(std::min(current_ + 1, last));
        return true;
    case UIKey::pageUp:
        goTo(current_ < page ? 0 : current_ - page);
        return true;
    case UIKey::pageDown:
        goTo(std::min(current_ + page, last));
        return true;
    case UIKey::home:
        goTo(0);
        return true;
    case UIKey::end:
        goTo(last);
        return true;
    case UIKey::enter:
        openCurrent();
        return true;
    case UIKey::text:
        if (event.text == " ") {
            select(current_, true);
            return true;
        }
        return false;
    default:
        return false;
    }
}

} // namespace platform
