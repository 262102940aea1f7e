#include "hosts/clap/ClapPulse.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using namespace qor;
using qor::clap::ClapHost;
using qor::clap::ClapPulse;

namespace {

/// A host without timers and descriptors that answers when it is told to.
class ClapPulses : public ::testing::Test {
protected:
    ClapPulses() {
        table.clap_version = CLAP_VERSION;
        table.host_data = this;
        table.get_extension = [](const clap_host_t*, const char* id) -> const void* {
            static const qor::clap::HostLog log{[](const clap_host_t* from, std::int32_t, const char* line) {
                static_cast<ClapPulses*>(from->host_data)->lines.emplace_back(line);
            }};
            return std::string_view(id) == qor::clap::kExtLog ? &log : nullptr;
        };
        table.request_callback = [](const clap_host_t* from) {
            ++static_cast<ClapPulses*>(from->host_data)->asked;
        };
        host.askForExtensions();
    }

    clap_host_t table{};
    int asked = 0;
    std::vector<std::string> lines;
    ClapHost host{&table};
    std::unique_ptr<qor::host::UnitHost> unit = qor::host::UnitHost::create({.serviced = false}).value();
    ClapPulse pulse{host, *unit};
};

} // namespace

TEST_F(ClapPulses, AskAgainAtEachTurnThatFollowsAnAnswer) {
    for (int i = 1; i <= 200; ++i) {
        pulse.tick();
        EXPECT_EQ(asked, i);
        pulse.answered();
    }
    EXPECT_TRUE(lines.empty());
}

TEST_F(ClapPulses, RepeatAnUnansweredRequestEachSecondAndSayOnceThatTheHostIsSilent) {
    pulse.tick();
    EXPECT_EQ(asked, 1);
    for (int i = 1; i < ClapPulse::kTicksUntilRepeat; ++i) {
        pulse.tick();
    }
    EXPECT_EQ(asked, 1);
    pulse.tick();
    EXPECT_EQ(asked, 2);
    for (int i = ClapPulse::kTicksUntilRepeat + 1; i < ClapPulse::kTicksUntilTold; ++i) {
        pulse.tick();
    }
    EXPECT_TRUE(lines.empty());
    for (int i = 0; i < 1000; ++i) {
        pulse.tick();
    }
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("has not answered request_callback for two seconds"), std::string::npos);
    pulse.answered();
    asked = 0;
    pulse.tick();
    EXPECT_EQ(asked, 1) << "it is taken at its word again";
}

TEST_F(ClapPulses, ARequestOfTheRenderThreadCountsForBoth) {
    pulse.ask();
    pulse.ask();
    EXPECT_EQ(asked, 1);
    pulse.tick();
    EXPECT_EQ(asked, 1);
    pulse.answered();
    pulse.ask();
    EXPECT_EQ(asked, 2);
}
