#include "EditorFixture.h"

#include "support/NoUserEntry.h"
#include "support/TemporaryDirectory.h"

#include <filesystem>
#include <fstream>

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test

class EditorDialogs : public test::Editor {
protected:
    EditorDialogs() {
        load();
        log.clear();
    }
    UIAlertController* dialog() {
        return dynamic_cast<UIAlertController*>(controller->presentedViewController().get());
    }
    std::vector<std::string> buttons() {
        std::vector<std::string> titles;
        for (const Ref<UIAlertAction>& action : dialog()->actions()) {
            titles.push_back(action->title().value_or(""));
        }
        return titles;
    }
    void press(const std::string& title) {
        headless.settle();
        UIView* button = dialog()->view()->viewWithIdentifier(title);
        ASSERT_NE(button, nullptr);
        headless.click(button->convertPointToWindow({.x = 4.0, .y = 4.0}));
    }
};

} // namespace

TEST_F(EditorDialogs, AnAlertLogsAndRunsItsCompletionWhenItHasAppeared) {
    bool appeared = false;
    controller->alert("Caption", "message", [&] { appeared = true; });
    EXPECT_EQ(lines(), std::vector<std::string>{"Alert: Caption : message"});
    EXPECT_EQ(dialog()->title(), "Caption");
    EXPECT_EQ(dialog()->message(), "message");
    EXPECT_EQ(dialog()->preferredStyle(), UIAlertControllerStyle::alert);
    EXPECT_EQ(buttons(), std::vector<std::string>{"OK"});
    EXPECT_FALSE(appeared);
    headless.settle();
    EXPECT_TRUE(appeared);
    press("OK");
    EXPECT_EQ(lines(), (std::vector<std::string>{"Alert: Caption : message", "Alert was accepted."}));
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(EditorDialogs, AQuestionLogsItsAnswerWhateverTheReason) {
    for (const char* reason : {"", "load preset", "something else"}) {
        controller->reasonForQuestion = reason;
        for (const auto& [title, line] : {std::pair{"Yes", "Answer was YES."}, {"No", "Answer was NO."}}) {
            log.clear();
            controller->alertQuestion("Sure?", "Really?");
            EXPECT_EQ(buttons(), (std::vector<std::string>{"Yes", "No"}));
            press(title);
            EXPECT_EQ(lines(), (std::vector<std::string>{"Alert: Sure? : Really?", line}));
            EXPECT_EQ(controller->reasonForQuestion, reason);
        }
    }
}

TEST_F(EditorDialogs, TheFileNamePromptIsWordedAndConfigured) {
    controller->alertFileName("preset", "My Preset");
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->title(), "File name");
    EXPECT_EQ(dialog()->message(), "Please enter the file name for the current file: ");
    EXPECT_EQ(buttons(), (std::vector<std::string>{"OK", "Cancel"}));
    EXPECT_EQ(dialog()->actions()[1]->style(), UIAlertActionStyle::cancel);
    const auto fields = dialog()->textFields();
    ASSERT_TRUE(fields && fields->size() == 1);
    EXPECT_EQ(fields->front()->placeholder(), "file name");
    EXPECT_EQ(fields->front()->text(), "My Preset");
    headless.key(UIKey::escape);
    EXPECT_EQ(lines(), std::vector<std::string>{"Save action was canceled."});
}

TEST_F(EditorDialogs, CancelOnTheSecondPromptLogsTheSameLine) {
    controller->alertFileName2("preset", "name");
    EXPECT_EQ(dialog()->message(), "The file already exists. Please type in another file name: ");
    press("Cancel");
    EXPECT_EQ(lines(), std::vector<std::string>{"Save action was canceled."});
}

TEST_F(EditorDialogs, ANameThatExistsIsAskedForAgainUntilItIsFree) {
    const test::TemporaryDirectory home;
    const std::filesystem::path documents = home.path() / "Documents";
    std::filesystem::create_directories(documents / "sub");
    std::ofstream(documents / "taken") << "x";
    std::ofstream(documents / "sub" / "inner") << "x";
    const test::ScopedVariable homeVariable("HOME", home.path().string());
    const test::ScopedVariable configVariable("XDG_CONFIG_HOME", std::nullopt);

    const auto answer = [&](const std::string& name) {
        dialog()->textFields()->front()->setText(name);
        headless.key(UIKey::enter);
        return dialog() == nullptr ? std::optional<std::string>() : dialog()->textFields()->front()->text();
    };
    controller->alertFileName("preset", "");
    EXPECT_EQ(answer("taken"), "taken");
    EXPECT_EQ(dialog()->message(), "The file already exists. Please type in another file name: ");
    EXPECT_EQ(answer("sub/inner"), "inner"); // a separator goes in unchanged, the last part comes back
    EXPECT_EQ(answer(""), "Documents");      // the directory itself exists
    EXPECT_EQ(answer("free"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(documents / "free")); // nothing is written
}

TEST_F(EditorDialogs, AMissingDocumentsDirectoryEndsTheProcess) {
    const test::ScopedVariable noHome("HOME", std::nullopt);
    const test::ScopedVariable noConfig("XDG_CONFIG_HOME", std::nullopt);
    const test::NoUserEntry nobody;
    controller->alertFileName("preset", "x");
    EXPECT_DEATH(headless.key(UIKey::enter), "Index out of range");
    headless.key(UIKey::escape);
}

TEST_F(EditorDialogs, APromptWithoutATextFieldTextEndsTheProcess) {
    controller->alertFileName("preset", "x");
    dialog()->textFields()->front()->setText(std::nullopt);
    EXPECT_DEATH(headless.key(UIKey::enter),
                 "Unexpectedly found nil while implicitly unwrapping an Optional value");
    headless.key(UIKey::escape); // an open dialog and its presenter hold each other
}

TEST_F(EditorDialogs, TheFilePickerIsSetUpAsTold) {
    controller->openFilePicker();
    auto* picker = dynamic_cast<UIDocumentPickerViewController*>(controller->presentedViewController().get());
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(picker->documentTypes(), std::vector<std::string>{"public.data"});
    EXPECT_EQ(picker->mode(), UIDocumentPickerMode::import);
    EXPECT_TRUE(picker->allowsMultipleSelection());
    headless.settle();
    headless.key(UIKey::escape);
    EXPECT_EQ(lines(), std::vector<std::string>{"The document picker was canceled."});
}

TEST_F(EditorDialogs, AFilePickedSinglyIsLoggedTwiceOnceAsAnArray) {
    const test::TemporaryDirectory directory;
    std::ofstream(directory.path() / "a b.txt") << "x";
    const auto picker = makeRef<UIDocumentPickerViewController>(std::vector<std::string>{"public.data"},
                                                                UIDocumentPickerMode::import);
    picker->setDelegate(controller.get());
    picker->setDirectory(directory.path().string());
    controller->presentViewController(picker, true);
    headless.settle();
    headless.key(UIKey::end);
    headless.key(UIKey::enter);
    const std::string url = "file://" + directory.path().string() + "/a%20b.txt";
    EXPECT_EQ(lines(), (std::vector<std::string>{"documentPicker: " + url, "documentPicker: [" + url + "]"}));
}

TEST_F(EditorDialogs, SeveralFilesAreLoggedAsOneArray) {
    UIDocumentPickerViewController picker({}, UIDocumentPickerMode::import);
    controller->reasonForImport = "preset";
    controller->documentPicker_didPickDocumentsAt(picker,
                                                  {URL::fileURLWithPath("/a"), URL::fileURLWithPath("/b")});
    EXPECT_EQ(lines(), std::vector<std::string>{"documentPicker: [file:///a, file:///b]"});
}

TEST_F(EditorDialogs, ASegueIsLoggedIfItHasAName) {
    controller->prepare({.identifier = "files"}, nullptr);
    controller->prepare({.identifier = std::nullopt}, nullptr);
    EXPECT_EQ(lines(), std::vector<std::string>{"files"});
    EXPECT_EQ(AudioUnitViewControllerPeer::startFolderForSegue(*controller), "QOR Limiter/");
}
