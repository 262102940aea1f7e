// The display's server ends while the editor is open: a server of the test's own.
#include "ClapGuiFixture.h"

#include <cstdlib>
#include <optional>
#include <string>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace test;

namespace {

/// Another display, which new connections take while this lives.
class OwnServer {
public:
    OwnServer() {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        const std::string number = std::to_string(ends[1]);
        process_ = ::fork();
        if (process_ == 0) {
            ::close(ends[0]);
            const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
            ::dup2(nowhere, STDERR_FILENO);
            ::execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", "800x600x24", "-noreset",
                     "-nolisten", "tcp", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(ends[1]);
        std::string name = ":";
        for (char digit = 0; ::read(ends[0], &digit, 1) == 1 && digit != '\n';) {
            name += digit;
        }
        ::close(ends[0]);
        EXPECT_GT(name.size(), 1U) << "Xvfb does not come up";
        ::setenv("DISPLAY", name.c_str(), 1);
    }
    ~OwnServer() {
        end();
        ::setenv("DISPLAY", before_.c_str(), 1);
    }
    OwnServer(const OwnServer&) = delete;
    OwnServer& operator=(const OwnServer&) = delete;

    void end() {
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            ::waitpid(process_, nullptr, 0);
            process_ = -1;
        }
    }

private:
    const std::string before_ = std::getenv("DISPLAY");
    pid_t process_ = -1;
};

class ClapGuiLostServer : public ClapGuiTest, public ::testing::WithParamInterface<Offer> {};

} // namespace

TEST_P(ClapGuiLostServer, IsToldAndTheHostLivesOnWithItsSound) {
    ClapEditorUnderTest editor(GetParam());
    turned = {&editor};
    std::optional<OwnServer> server;
    server.emplace();
    ASSERT_TRUE(editor.gui->create(editor.plugin->get(), CLAP_WINDOW_API_X11, true));
    ASSERT_TRUE(editor.gui->show(editor.plugin->get()));
    turn(20);
    server->end();
    EXPECT_TRUE(turnUntil([&] { return !editor.host.closed.empty(); }));
    turn(5);
    EXPECT_EQ(editor.host.closed, std::vector<bool>{true});
    EXPECT_TRUE(editor.host.descriptors.empty());
    editor.close();

    // Another attempt is refused with a reason.
    ASSERT_TRUE(editor.gui->create(editor.plugin->get(), CLAP_WINDOW_API_X11, true));
    EXPECT_FALSE(editor.gui->show(editor.plugin->get()));
    ASSERT_FALSE(editor.host.logged.empty());
    EXPECT_NE(editor.host.logged.back().find("cannot be opened"), std::string::npos);
    editor.close();

    ASSERT_TRUE(editor.plugin->activate());
    float samples[2][64] = {{0.25F}, {0.25F}};
    float* const places[2] = {samples[0], samples[1]};
    EXPECT_EQ(editor.plugin->process(places, places, 64), CLAP_PROCESS_CONTINUE);
    EXPECT_GT(samples[0][0], 0.1F);

    // With a display again, the editor opens again.
    server.reset();
    const Window parent = makeParent();
    ASSERT_TRUE(editor.openIn(parent));
    EXPECT_TRUE(turnUntil([&] { return children(parent).size() == 1 && isDrawn(children(parent).front()); }));
    editor.close();
    XDestroyWindow(display, parent);
}

INSTANTIATE_TEST_SUITE_P(Hosts, ClapGuiLostServer,
                         ::testing::Values(Offer::timers, Offer::timersAndDescriptors, Offer::descriptors,
                                           Offer::nothing),
                         [](const auto& tested) { return nameOf(tested.param); });
