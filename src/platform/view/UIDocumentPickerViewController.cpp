#include "platform/view/UIDocumentPickerViewController.h"

#include "platform/files/FileManager.h"
#include "platform/view/DialogView.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace platform {

namespace {

constexpr double kMargin = 12.0;
constexpr double kRow = 24.0;
constexpr double kLabel = 16.0;
constexpr double kGap = 6.0;
constexpr CGSize kBox{.width = 420.0, .height = 320.0};

/// The user's documents, or the nearest directory above that exists.
std::string startDirectory() {
    const std::vector<URL> documents = FileManager::defaultManager().URLsForDirectory(
        SearchPathDirectory::documentDirectory, SearchPathDomainMask::userDomainMask);
    std::filesystem::path path = documents.empty() ? "/" : documents.front().path();
    std::error_code error;
    while (!std::filesystem::is_directory(path, error) && path.has_relative_path()) {
        path = path.parent_path();
    }
    return path.string();
}

} // namespace

UIDocumentPickerViewController::UIDocumentPickerViewController(std::vector<std::string> documentTypes,
                                                               UIDocumentPickerMode mode)
    : types_(std::move(documentTypes)), mode_(mode) {}

FileListView& UIDocumentPickerViewController::list() {
    view();
    return *list_;
}

void UIDocumentPickerViewController::loadView() {
    pathLabel_ = makeRef<UILabel>();
    errorLabel_ = makeRef<UILabel>();
    errorLabel_->setTextColor(style::kAccent);
    list_ = makeRef<FileListView>();
    list_->identifier = "files";
    list_->allowsMultipleSelection = multiple_;
    list_->onTake = [this] { take(); };
    list_->onEnter = [this](const std::string& path) { enter(path); };
    openButton_ = makeRef<UIButton>();
    openButton_->setTitle("Open");
    openButton_->addAction(UIControlEventTouchUpInside, [this](UIControl&) { list_->openCurrent(); });
    cancelButton_ = makeRef<UIButton>();
    cancelButton_->setTitle("Cancel");
    cancelButton_->addAction(UIControlEventTouchUpInside, [this](UIControl&) { cancel(); });
    const auto cover = makeRef<DialogView>(kBox);
    cover->identifier = "documentPicker";
    for (const Ref<UIView>& part :
         std::vector<Ref<UIView>>{pathLabel_, list_, errorLabel_, cancelButton_, openButton_}) {
        cover->box().addSubview(part);
    }
    cover->onKey = [this](const UIKeyEvent& event) { return keyDown(event); };
    cover->onLayout = [this](const CGRect& box) { place(box); };
    setView(cover);
    enter(start_.empty() ? startDirectory() : start_);
}

void UIDocumentPickerViewController::place(const CGRect& box) {
    const double width = std::max(0.0, box.size.width - 2.0 * kMargin);
    const double bottom = box.size.height - kMargin - kRow;
    const double listTop = kMargin + kLabel + kGap;
    pathLabel_->setFrame(CGRectMake(kMargin, kMargin, width, kLabel));
    list_->setFrame(
        CGRectMake(kMargin, listTop, width, std::max(0.0, bottom - kLabel - 2.0 * kGap - listTop)));
    errorLabel_->setFrame(CGRectMake(kMargin, bottom - kLabel - kGap, width, kLabel));
    const double half = std::max(0.0, (width - kGap) / 2.0);
    cancelButton_->setFrame(CGRectMake(kMargin, bottom, half, kRow));
    openButton_->setFrame(CGRectMake(kMargin + half + kGap, bottom, half, kRow));
}

void UIDocumentPickerViewController::presentationDidBegin() {
    view()->layoutIfNeeded();
    list_->becomeFirstResponder();
}

void UIDocumentPickerViewController::enter(const std::string& path) {
    const auto shown = list_->showDirectory(path);
    errorLabel_->setText(shown ? std::optional<std::string>() : shown.error().localizedDescription());
    pathLabel_->setText(list_->directory().empty() ? path : list_->directory());
}

void UIDocumentPickerViewController::take() {
    const std::vector<std::string> paths = list_->selectedPaths();
    if (paths.empty()) {
        return;
    }
    const auto keep = shared_from_this();
    std::vector<URL> urls;
    urls.reserve(paths.size());
    for (const std::string& path : paths) {
        urls.push_back(URL::fileURLWithPath(path));
    }
    dismissViewController(true);
    if (delegate_ == nullptr) {
        return;
    }
    if (urls.size() == 1) {
        delegate_->documentPicker_didPickDocumentAt(*this, urls.front());
    } else {
        delegate_->documentPicker_didPickDocumentsAt(*this, urls);
    }
}

void UIDocumentPickerViewController::cancel() {
    const auto keep = shared_from_this();
    dismissViewController(true);
    if (delegate_ != nullptr) {
        delegate_->documentPickerWasCancelled(*this);
    }
}

bool UIDocumentPickerViewController::keyDown(const UIKeyEvent& event) {
    if (event.key == UIKey::escape) {
        cancel();
        return true;
    }
    return event.key != UIKey::tab;
}

} // namespace platform
