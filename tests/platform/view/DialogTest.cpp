#include "platform/view/HeadlessWindow.h"
#include "platform/view/View.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace platform; // NOLINT(google-build-using-namespace): the library under test

namespace {

class Dialogs : public testing::Test {
protected:
    Dialogs() { headless.show(controller->view()); }
    Ref<UIAlertController> makeAlert() {
        const auto alert = makeRef<UIAlertController>("Title", "A message", UIAlertControllerStyle::alert);
        for (const auto& [title, kind] : {std::pair{"OK", UIAlertActionStyle::default_},
                                          std::pair{"Cancel", UIAlertActionStyle::cancel}}) {
            alert->addAction(makeRef<UIAlertAction>(
                title, kind, [this, alert = Weak<UIAlertController>(alert)](UIAlertAction& action) {
                    EXPECT_EQ(alert.lock()->presentingViewController(), nullptr); // gone before the answer
                    answers.push_back(action.title().value_or(""));
                }));
        }
        return alert;
    }
    void press(UIView& root, const std::string& identifier) {
        UIView* button = root.viewWithIdentifier(identifier);
        ASSERT_NE(button, nullptr);
        headless.click(button->convertPointToWindow({.x = 5.0, .y = 5.0}));
    }
    HeadlessWindow headless{{.width = 400.0, .height = 300.0}};
    Ref<UIViewController> controller = makeRef<UIViewController>();
    std::vector<std::string> answers;
};

class Chosen : public UIDocumentPickerDelegate {
public:
    void documentPicker_didPickDocumentAt(UIDocumentPickerViewController& /*picker*/,
                                          const URL& url) override {
        calls.push_back("one " + url.lastPathComponent());
    }
    void documentPicker_didPickDocumentsAt(UIDocumentPickerViewController& /*picker*/,
                                           const std::vector<URL>& urls) override {
        std::string call = "several";
        for (const URL& url : urls) {
            call += " " + url.lastPathComponent();
        }
        calls.push_back(call);
    }
    void documentPickerWasCancelled(UIDocumentPickerViewController& /*picker*/) override {
        calls.emplace_back("cancelled");
    }
    std::vector<std::string> calls;
};

class Picker : public Dialogs {
protected:
    Picker() {
        std::string pattern = (std::filesystem::temp_directory_path() / "pickerXXXXXX").string();
        directory = mkdtemp(pattern.data());
        std::filesystem::create_directory(directory / "sub");
        std::ofstream(directory / "a.txt") << "a";
        std::ofstream(directory / "b.txt") << "b";
        std::ofstream(directory / ".hidden") << "c";
        std::ofstream(directory / "sub" / "inner.txt") << "d";
        picker->setDelegate(&chosen);
        picker->setAllowsMultipleSelection(true);
        picker->setDirectory(directory.string());
        controller->presentViewController(picker, true);
        headless.settle();
    }
    ~Picker() override { std::filesystem::remove_all(directory); }
    std::vector<std::string> names() {
        std::vector<std::string> found;
        for (const FileListView::Entry& entry : picker->list().entries()) {
            found.push_back(entry.name);
        }
        return found;
    }
    std::filesystem::path directory;
    Chosen chosen;
    Ref<UIDocumentPickerViewController> picker = makeRef<UIDocumentPickerViewController>(
        std::vector<std::string>{"public.data"}, UIDocumentPickerMode::import);
};

} // namespace

TEST_F(Dialogs, AnAlertIsShownInsideTheRootViewAndRunsItsCompletionWhenItHasAppeared) {
    const auto alert = makeAlert();
    bool appeared = false;
    const RunLoop::Scope scope(headless.loop());
    controller->presentViewController(alert, true, [&] { appeared = true; });
    EXPECT_FALSE(appeared);
    EXPECT_EQ(alert->view()->superview(), controller->view().get());
    headless.settle();
    EXPECT_TRUE(appeared);
    EXPECT_TRUE(answers.empty());
    press(*controller->view(), "OK");
    EXPECT_EQ(answers, std::vector<std::string>{"OK"});
    EXPECT_EQ(controller->view()->viewWithIdentifier("alert"), nullptr);
    EXPECT_EQ(controller->presentedViewController(), nullptr);
}

TEST_F(Dialogs, EnterAndEscapeAnswerAnAlert) {
    controller->presentViewController(makeAlert(), true);
    headless.key(UIKey::enter);
    controller->presentViewController(makeAlert(), true);
    headless.key(UIKey::escape);
    controller->presentViewController(makeAlert(), true);
    headless.key(UIKey::tab);
    headless.key(UIKey::enter);
    EXPECT_EQ(answers, (std::vector<std::string>{"OK", "Cancel", "Cancel"}));
}

TEST_F(Dialogs, ATextFieldOfAnAlertHasTheFocusAndKeepsItsText) {
    const auto alert = makeAlert();
    EXPECT_FALSE(alert->textFields());
    alert->addTextFieldWithConfigurationHandler([](UITextField& field) {
        field.setPlaceholder("file name");
        field.setText("old");
    });
    controller->presentViewController(alert, true);
    headless.type("new");
    EXPECT_EQ(alert->textFields()->front()->text(), "new");
    headless.key(UIKey::enter);
    EXPECT_EQ(answers, std::vector<std::string>{"OK"});
}

TEST_F(Dialogs, AnAlertKeepsInputFromWhatLiesBehind) {
    const auto button = makeRef<UIButton>(CGRectMake(0.0, 0.0, 50.0, 20.0));
    int pressed = 0;
    button->addAction(UIControlEventTouchUpInside, [&](UIControl&) { ++pressed; });
    controller->view()->addSubview(button);
    int taps = 0;
    const auto tap = makeRef<UITapGestureRecognizer>();
    tap->addAction([&](UIGestureRecognizer&) { ++taps; });
    controller->view()->addGestureRecognizer(tap);
    controller->presentViewController(makeAlert(), true);
    headless.click({.x = 10.0, .y = 10.0});
    for (int i = 0; i < 4; ++i) {
        headless.key(UIKey::tab);
        EXPECT_FALSE(button->isFirstResponder());
    }
    EXPECT_TRUE(headless.wheel({.x = 10.0, .y = 10.0}, 1.0));
    EXPECT_EQ(pressed, 0);
    EXPECT_EQ(taps, 0);
}

TEST_F(Dialogs, ADialogOverADialogIsAnsweredFirst) {
    controller->presentViewController(makeAlert(), true);
    const auto above = makeRef<UIAlertController>("Above", std::nullopt, UIAlertControllerStyle::alert);
    above->addAction(makeRef<UIAlertAction>("Fine", UIAlertActionStyle::default_,
                                            [this](UIAlertAction&) { answers.emplace_back("Fine"); }));
    controller->presentViewController(above, true);
    headless.key(UIKey::enter);
    headless.key(UIKey::enter);
    EXPECT_EQ(answers, (std::vector<std::string>{"Fine", "OK"}));
}

TEST_F(Dialogs, AnAlertFollowsTheWindowsSize) {
    const auto alert = makeAlert();
    controller->presentViewController(alert, true);
    headless.resize({.width = 120.0, .height = 60.0});
    EXPECT_EQ(alert->view()->frame(), CGRectMake(0.0, 0.0, 120.0, 60.0));
    const CGRect box = alert->view()->subviews().front()->frame();
    EXPECT_LE(box.origin.x + box.size.width, 120.0);
    EXPECT_LE(box.origin.y + box.size.height, 60.0);
}

TEST_F(Dialogs, WithoutAWindowNothingIsShownAndTheLogSaysSo) {
    const test::CapturedLog log;
    const auto lonely = makeRef<UIViewController>();
    lonely->presentViewController(makeAlert(), true);
    EXPECT_EQ(lonely->presentedViewController(), nullptr);
    EXPECT_EQ(log.lines().size(), 1u);
}

TEST_F(Picker, ListsTheDirectoryWithDirectoriesFirstAndWithoutHiddenFiles) {
    EXPECT_EQ(names(), (std::vector<std::string>{"..", "sub", "a.txt", "b.txt"}));
    EXPECT_TRUE(picker->list().isFirstResponder());
}

TEST_F(Picker, OpensDirectoriesAndTakesAFileByTheKeyboard) {
    headless.key(UIKey::down);
    headless.key(UIKey::enter);
    EXPECT_EQ(names(), (std::vector<std::string>{"..", "inner.txt"}));
    headless.key(UIKey::enter);
    EXPECT_EQ(names(), (std::vector<std::string>{"..", "sub", "a.txt", "b.txt"}));
    headless.key(UIKey::end);
    headless.key(UIKey::enter);
    EXPECT_EQ(chosen.calls, std::vector<std::string>{"one b.txt"});
    EXPECT_EQ(controller->presentedViewController(), nullptr);
}

TEST_F(Picker, TakesSeveralMarkedFiles) {
    headless.key(UIKey::end);
    headless.type(" ");
    headless.key(UIKey::up);
    headless.type(" ");
    headless.key(UIKey::enter);
    EXPECT_EQ(chosen.calls, std::vector<std::string>{"several a.txt b.txt"});
}

TEST_F(Picker, TakesADoubleClickedFile) {
    const CGPoint row = picker->list().convertPointToWindow({.x = 20.0, .y = 18.0 * 2.5});
    headless.doubleClick(row);
    EXPECT_EQ(chosen.calls, std::vector<std::string>{"one a.txt"});
}

TEST_F(Picker, IsCancelledByEscape) {
    headless.key(UIKey::escape);
    EXPECT_EQ(chosen.calls, std::vector<std::string>{"cancelled"});
}

TEST_F(Picker, SaysWhyADirectoryCannotBeShownAndStays) {
    std::filesystem::remove_all(directory / "sub");
    headless.key(UIKey::down);
    headless.key(UIKey::enter);
    EXPECT_EQ(picker->list().directory(), directory.string());
    EXPECT_EQ(names().size(), 4u);
}
