// The rows of a directory.
#pragma once

#include "platform/core/Result.h"
#include "platform/view/UIView.h"

#include <set>
#include <string>
#include <vector>

namespace platform {

/// Shows a directory's entries, directories first, each group by name; entries whose names begin with a point
/// are left out. Arrow keys move, space marks, enter or a double click opens; the wheel scrolls.
class FileListView : public UIView {
public:
    struct Entry {
        std::string name;
        bool isDirectory = false;
    };

    /// Reads a directory. On failure the list stays as it was.
    Result<void> showDirectory(const std::string& path);
    const std::string& directory() const noexcept { return directory_; }
    const std::vector<Entry>& entries() const noexcept { return entries_; }
    bool allowsMultipleSelection = false;
    /// Full paths of the marked files, in the order of the rows; without marks the current row's file.
    std::vector<std::string> selectedPaths() const;
    /// Enters the current row's directory, or asks for its file to be taken.
    void openCurrent();
    Block<void()> onTake;                    // a file is to be taken
    Block<void(const std::string&)> onEnter; // a directory is to be shown
    Block<void()> onSelectionChange;

    void draw(const CGRect& rect) override;
    void touchesBegan(const UITouchSet& touches, UIEvent* event) override;
    void touchesEnded(const UITouchSet& touches, UIEvent* event) override;
    bool scrollWheel(const UIWheelEvent& event) override;
    bool keyDown(const UIKeyEvent& event) override;
    bool canBecomeFirstResponder() const override { return true; }

private:
    /// A click or the space bar: with `marks` the row's mark is turned over, otherwise all marks go.
    void select(std::size_t row, bool marks);
    void goTo(std::size_t row);
    void scrollToCurrent();
    void scrollBy(double rows);
    std::string pathOf(std::size_t row) const;

    std::string directory_;
    std::vector<Entry> entries_;
    std::set<std::size_t> marked_;
    std::size_t current_ = 0;
    double top_ = 0.0; // rows above the visible part
};

} // namespace platform
