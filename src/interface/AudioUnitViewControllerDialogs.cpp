// Alerts, the file-name prompt and the document picker. They end where the logic behind them would begin.
#include "interface/AudioUnitViewController.h"

#include "platform/files/Files.h"

#include <utility>

namespace qor {

namespace {

void addButton(UIAlertController& dialog, const char* title, UIAlertActionStyle style,
               Block<void()> handler) {
    dialog.addAction(
        makeRef<UIAlertAction>(title, style, [handler = std::move(handler)](UIAlertAction&) { handler(); }));
}

} // namespace

void AudioUnitViewController::alert(const std::string& caption, const std::string& message,
                                    Block<void()> completion) {
    print("Alert: " + caption + " : " + message);
    const auto dialog = makeRef<UIAlertController>(caption, message, UIAlertControllerStyle::alert);
    addButton(*dialog, "OK", UIAlertActionStyle::default_, [] { print("Alert was accepted."); });
    presentViewController(dialog, true, std::move(completion));
}

void AudioUnitViewController::alertQuestion(const std::string& caption, const std::string& question,
                                            Block<void()> completion) {
    print("Alert: " + caption + " : " + question);
    const auto dialog = makeRef<UIAlertController>(caption, question, UIAlertControllerStyle::alert);
    // Whatever the reason for the question: nothing hangs on the answer yet.
    addButton(*dialog, "Yes", UIAlertActionStyle::default_, [] { print("Answer was YES."); });
    addButton(*dialog, "No", UIAlertActionStyle::default_, [] { print("Answer was NO."); });
    presentViewController(dialog, true, std::move(completion));
}

void AudioUnitViewController::alertFileName(const std::string& _for, const std::string& defaultName) {
    askForFileName("Please enter the file name for the current file: ", _for, defaultName);
}

void AudioUnitViewController::alertFileName2(const std::string& _for, const std::string& defaultName) {
    askForFileName("The file already exists. Please type in another file name: ", _for, defaultName);
}

void AudioUnitViewController::askForFileName(const std::string& message, const std::string& _for,
                                             const std::string& defaultName) {
    const auto dialog = makeRef<UIAlertController>("File name", message, UIAlertControllerStyle::alert);
    dialog->addTextFieldWithConfigurationHandler([defaultName](UITextField& field) {
        field.setPlaceholder("file name");
        field.setText(defaultName);
    });
    const Weak<UIAlertController> weak = dialog; // its own button must not keep it
    addButton(*dialog, "OK", UIAlertActionStyle::default_, [strong = self(), weak, _for, defaultName] {
        if (const auto answered = weak.lock()) {
            strong->onFileName(*answered, _for, defaultName);
        }
    });
    addButton(*dialog, "Cancel", UIAlertActionStyle::cancel, [] { print("Save action was canceled."); });
    presentViewController(dialog, true);
}

void AudioUnitViewController::onFileName(const UIAlertController& dialog, const std::string& _for,
                                         const std::string& /*defaultName*/) {
    const auto fields = dialog.textFields();
    if (!fields) {
        return;
    }
    const std::string& name = unwrapImplicit(fields->front()->text());
    const std::vector<URL> documents = FileManager::defaultManager().URLsForDirectory(
        SearchPathDirectory::documentDirectory, SearchPathDomainMask::userDomainMask);
    if (documents.empty()) {
        fatalError(kIndexMessage);
    }
    URL url = documents.front();
    url.appendPathComponent(name);
    if (FileManager::defaultManager().fileExistsAtPath(url.path())) {
        alertFileName2(_for, url.lastPathComponent());
    }
}

void AudioUnitViewController::openFilePicker() {
    const auto picker = makeRef<UIDocumentPickerViewController>(std::vector<std::string>{"public.data"},
                                                                UIDocumentPickerMode::import);
    picker->setDelegate(this);
    picker->setAllowsMultipleSelection(true);
    presentViewController(picker, true, [] {});
}

void AudioUnitViewController::documentPicker_didPickDocumentAt(UIDocumentPickerViewController& picker,
                                                               const URL& url) {
    print("documentPicker: " + url.absoluteString());
    documentPicker_didPickDocumentsAt(picker, {url});
}

void AudioUnitViewController::documentPicker_didPickDocumentsAt(UIDocumentPickerViewController& /*picker*/,
                                                                const std::vector<URL>& urls) {
    std::string list;
    for (const URL& url : urls) {
        list += (list.empty() ? "" : ", ") + url.absoluteString();
    }
    print("documentPicker: [" + list + "]");
}

void AudioUnitViewController::documentPickerWasCancelled(UIDocumentPickerViewController& /*picker*/) {
    print("The document picker was canceled.");
}

void AudioUnitViewController::prepare(const UIStoryboardSegue& segue, void* sender) {
    AUViewController::prepare(segue, sender);
    if (segue.identifier) {
        print(*segue.identifier);
    }
}

} // namespace qor
