// One sitting at the editor from opening to closing; its log is kept line by line. With QOR_SESSION_PICTURES
// set to a directory, a picture of each station is written there.
#include "EditorHostFixture.h"

#include "hosts/shared/ChoiceMenu.h"
#include "support/Golden.h"

#include <cstdlib>
#include <fstream>

namespace {

using namespace qor;       // NOLINT(google-build-using-namespace): the system under test
using namespace qor::host; // NOLINT(google-build-using-namespace)

class Session : public test::HostedEditor {
protected:
    void station(const std::string& name) {
        headless->settle();
        log_ += "# " + name + "\n";
        for (const std::string& line : editorLines()) {
            log_ += line + "\n";
        }
        log.clear();
        pictures_.push_back(headless->picture().pixels());
        const char* folder = std::getenv("QOR_SESSION_PICTURES");
        if (folder != nullptr) {
            const auto png = UIImagePNGRepresentation(headless->picture());
            ASSERT_TRUE(png);
            const std::string number = (pictures_.size() < 10 ? "0" : "") + std::to_string(pictures_.size());
            std::ofstream(std::string(folder) + "/" + number + "-" + name + ".png", std::ios::binary)
                << png.value();
        }
    }
    void drag(const CGPoint& from, double dx, double dy) {
        headless->down(from);
        headless->move({.x = from.x + dx / 2.0, .y = from.y + dy / 2.0});
        headless->move({.x = from.x + dx, .y = from.y + dy});
        turn();
    }
    void release(const CGPoint& at) {
        headless->up(at);
        turn();
        run(1.0); // the next touch is no double tap
    }
    /// The log without what names this machine's directories.
    std::string portableLog() const {
        std::string text = log_;
        for (const char* label : {"Audio Unit's documents path is: ", "Audio Unit's resources path is: "}) {
            const std::size_t at = text.find(label);
            if (at != std::string::npos) {
                const std::size_t from = at + std::string(label).size();
                text.replace(from, text.find('\n', from) - from, "...");
            }
        }
        return text;
    }
    bool changedSince(std::size_t back) const {
        return pictures_.back() != pictures_[pictures_.size() - 1 - back];
    }

    std::string log_;
    std::vector<std::vector<std::uint32_t>> pictures_;
};

} // namespace

TEST_F(Session, LogsLineByLineWhatItShows) {
    open();
    station("opened");

    const std::array<std::pair<const char*, CGPoint>, 6> knobs{{{"attack", {.x = 83.0, .y = 94.0}},
                                                                {"release", {.x = 182.0, .y = 94.0}},
                                                                {"threshold", {.x = 329.0, .y = 94.0}},
                                                                {"knee", {.x = 428.0, .y = 94.0}},
                                                                {"gain", {.x = 83.0, .y = 201.0}},
                                                                {"mix", {.x = 428.0, .y = 201.0}}}};
    for (const auto& [name, at] : knobs) {
        drag(at, 10.0, name == std::string("mix") ? 50.0 : -20.0);
        station(std::string("drag-") + name);
        EXPECT_TRUE(changedSince(1));
        release({.x = at.x + 10.0, .y = at.y});
    }
    station("knobs-released");

    headless->down({.x = 88.0, .y = 284.0});
    station("bypass-down");
    EXPECT_TRUE(base().isBypassSelected);
    release({.x = 88.0, .y = 284.0});
    headless->down({.x = 424.0, .y = 282.0});
    release({.x = 424.0, .y = 282.0});
    station("both-buttons-on");
    EXPECT_EQ(units->parameter(kLimiterAudition), 1.0F);
    headless->click({.x = 88.0, .y = 284.0});
    turn();
    run(1.0);
    headless->click({.x = 424.0, .y = 282.0});
    turn();
    run(1.0);

    play(0.5, 0.9F);
    run(0.1);
    station("music");
    EXPECT_LT(controller().displayView->baseClass->value1, 1.0);

    headless->down({.x = 250.0, .y = 8.0});
    run(0.7);
    release({.x = 250.0, .y = 8.0});
    station("long-press");
    EXPECT_FALSE(controller().contrastButton->isHidden());
    click("contrast");
    headless->drag(middle("brightness"), {.x = middle("brightness").x + 120.0, .y = middle("brightness").y});
    turn();
    station("bright");
    EXPECT_GT(controller().pluginFrame->contrast, 0.5F);
    headless->click({.x = 101.0, .y = middle("brightness").y});
    run(1.0);
    click("contrast");
    click("freeze");
    station("frozen");
    EXPECT_FALSE(controller().isSizeable);
    headless->drag({.x = 250.0, .y = 14.0}, {.x = 350.0, .y = 60.0});
    EXPECT_EQ(controller().pluginView->frame().origin, CGPointZero);
    click("freeze");
    run(1.0);

    headless->drag({.x = 5.0, .y = 100.0}, {.x = 65.0, .y = 140.0});
    station("panned");
    EXPECT_EQ(controller().pluginView->frame(), CGRectMake(60.0, 40.0, 512.0, 340.0));
    headless->wheel({.x = 30.0, .y = 20.0}, -6.0, UIKeyModifierControl);
    run(0.5);
    station("pinched");
    EXPECT_NEAR(controller().pluginView->frame().size.width, 512.0 * std::pow(1.1, -6.0), 1e-6);
    headless->doubleClick({.x = 30.0, .y = 20.0});
    run(1.0);
    station("double-tapped");
    EXPECT_EQ(controller().pluginView->frame(), CGRectMake(0.0, 0.0, 512.0, 340.0));

    click("mode");
    station("mode-menu");
    headless->key(UIKey::down);
    headless->key(UIKey::down);
    headless->key(UIKey::enter);
    turn();
    station("mode-chosen");
    EXPECT_EQ(units->parameter(kLimiterMode), 2.0F);
    click("preset");
    station("preset-menu");
    headless->key(UIKey::home);
    headless->key(UIKey::enter);
    turn();
    turn();
    station("preset-loaded");

    headless->click({.x = 329.0, .y = 132.0});
    headless->type("42");
    station("typing");
    headless->key(UIKey::enter);
    turn();
    run(1.0);
    station("typed");
    EXPECT_EQ(units->parameter(kLimiterThreshold), 0.42F);

    // Automation moves other knobs, and the dragged one too, which the next move takes back.
    headless->down(knobs[1].second);
    headless->move({.x = knobs[1].second.x, .y = knobs[1].second.y - 10.0});
    set(kLimiterMix, 0.25F);
    set(kLimiterRelease, 0.0F);
    turn();
    station("automation-while-dragging");
    EXPECT_EQ(base().valueRelease, 0.0);
    EXPECT_EQ(base().valueMix, 0.25);
    headless->move({.x = knobs[1].second.x, .y = knobs[1].second.y - 20.0});
    EXPECT_GT(base().valueRelease, 0.5);
    release({.x = knobs[1].second.x, .y = knobs[1].second.y - 20.0});

    {
        const EditorHost::Turn turn(*editor);
        controller().showInfo("Preset loaded");
    }
    run(1.0);
    station("banner");
    EXPECT_FALSE(controller().infoView->isHidden());
    run(4.0);
    station("banner-gone");
    EXPECT_TRUE(controller().infoView->isHidden());

    headless->resize({.width = 800.0, .height = 400.0});
    turn();
    station("resized");
    headless->resize(EditorHost::kPreferredSize);
    editor->close();
    turn();
    station("closed");
    test::expectGolden("editor/session.log", portableLog());
}
