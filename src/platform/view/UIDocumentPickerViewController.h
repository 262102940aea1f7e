// A dialog that lists directories and lets files be chosen.
#pragma once

#include "platform/files/URL.h"
#include "platform/view/FileListView.h"
#include "platform/view/UIButton.h"
#include "platform/view/UILabel.h"
#include "platform/view/UIViewController.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

class UIDocumentPickerViewController;

enum class UIDocumentPickerMode : std::uint64_t { import = 0, open = 1 };

/// Who is told what was chosen: one file by the first operation, several by the second.
class UIDocumentPickerDelegate {
public:
    UIDocumentPickerDelegate() = default;
    UIDocumentPickerDelegate(const UIDocumentPickerDelegate&) = delete;
    UIDocumentPickerDelegate& operator=(const UIDocumentPickerDelegate&) = delete;
    virtual ~UIDocumentPickerDelegate() = default;
    virtual void documentPicker_didPickDocumentAt(UIDocumentPickerViewController& picker, const URL& url) = 0;
    virtual void documentPicker_didPickDocumentsAt(UIDocumentPickerViewController& picker,
                                                   const std::vector<URL>& urls) = 0;
    virtual void documentPickerWasCancelled(UIDocumentPickerViewController& picker) = 0;
};

/// Starts in the user's documents, or in the nearest directory above that exists. Arrow keys, space, enter,
/// tab and escape do what the mouse does.
class UIDocumentPickerViewController : public UIViewController {
public:
    UIDocumentPickerViewController(std::vector<std::string> documentTypes, UIDocumentPickerMode mode);

    /// Not owned; must outlive the dialog.
    void setDelegate(UIDocumentPickerDelegate* delegate) noexcept { delegate_ = delegate; }
    void setAllowsMultipleSelection(bool allows) noexcept { multiple_ = allows; }
    bool allowsMultipleSelection() const noexcept { return multiple_; }
    const std::vector<std::string>& documentTypes() const noexcept { return types_; }
    UIDocumentPickerMode mode() const noexcept { return mode_; }
    /// Where it starts; to be set before it is shown.
    void setDirectory(std::string path) { start_ = std::move(path); }
    FileListView& list();

    void loadView() override;

protected:
    void presentationDidBegin() override;

private:
    void enter(const std::string& path);
    void take();
    void cancel();
    bool keyDown(const UIKeyEvent& event);
    void place(const CGRect& box);

    std::vector<std::string> types_;
    UIDocumentPickerMode mode_;
    UIDocumentPickerDelegate* delegate_ = nullptr;
    bool multiple_ = false;
    std::string start_;
    Ref<UILabel> pathLabel_;
    Ref<UILabel> errorLabel_;
    Ref<FileListView> list_;
    Ref<UIButton> openButton_;
    Ref<UIButton> cancelButton_;
};

} // namespace platform
