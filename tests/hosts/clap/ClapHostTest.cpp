#include "hosts/clap/ClapHost.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using qor::clap::ClapHost;
using qor::clap::Promised;

namespace {

struct Told {
    bool isMain = true;
    bool isAudio = false;
    bool tells = true;
    std::vector<std::string> lines;
    std::vector<std::int32_t> severities;
};

Told& toldOf(const clap_host_t* host) {
    return *static_cast<Told*>(host->host_data);
}

const clap_host_thread_check_t kThreads{[](const clap_host_t* host) { return toldOf(host).isMain; },
                                        [](const clap_host_t* host) { return toldOf(host).isAudio; }};
const qor::clap::HostLog kLog{[](const clap_host_t* host, std::int32_t severity, const char* message) {
    toldOf(host).severities.push_back(severity);
    toldOf(host).lines.emplace_back(message);
}};

clap_host_t tableOf(Told& told) {
    clap_host_t table{};
    table.clap_version = CLAP_VERSION;
    table.host_data = &told;
    table.get_extension = [](const clap_host_t* host, const char* id) -> const void* {
        if (std::string_view(id) == CLAP_EXT_THREAD_CHECK && toldOf(host).tells) {
            return &kThreads;
        }
        return std::string_view(id) == qor::clap::kExtLog ? &kLog : nullptr;
    };
    return table;
}

} // namespace

TEST(ClapHost, SaysOnItsLogThatACallCameOnTheWrongThread) {
    Told told;
    const clap_host_t table = tableOf(told);
    ClapHost host(&table);
    host.askForExtensions();
    EXPECT_TRUE(host.checkThread(Promised::mainThread, "activate"));
    EXPECT_TRUE(told.lines.empty());
    EXPECT_FALSE(host.checkThread(Promised::audioThread, "process"));
    ASSERT_EQ(told.lines.size(), 1U);
    EXPECT_EQ(told.lines[0], "process was not called on the audio thread");
    EXPECT_EQ(told.severities[0], 5); // the host misbehaves
    told.isMain = false;
    EXPECT_FALSE(host.checkThread(Promised::mainThread, "activate"));
    EXPECT_EQ(told.lines[1], "activate was not called on the main thread");
}

TEST(ClapHost, AHostThatCannotTellItsThreadsIsTrusted) {
    Told told;
    told.tells = false;
    told.isMain = false;
    const clap_host_t table = tableOf(told);
    ClapHost host(&table);
    host.askForExtensions();
    EXPECT_TRUE(host.checkThread(Promised::mainThread, "activate"));
    EXPECT_TRUE(host.checkThread(Promised::audioThread, "process"));
}

TEST(ClapHost, EveryPieceMayBeMissing) {
    clap_host_t bare{};
    ClapHost host(&bare);
    host.askForExtensions();
    host.log(qor::clap::LogSeverity::error, "nobody hears this");
    host.requestCallback();
    host.valuesChanged();
    EXPECT_EQ(host.registerTimer(20), std::nullopt);
    EXPECT_FALSE(host.registerDescriptor(1));
    host.unregisterDescriptor(1);
    host.requestResize(512, 392);
    host.guiClosed(true);
    host.unregisterTimer(3);
    EXPECT_TRUE(host.checkThread(Promised::mainThread, "init"));
}
