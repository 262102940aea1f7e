// What a host reads of the built object before any sound.
#include "ClapTestHost.h"

#include "hosts/clap/ClapDescriptor.h"
#include "hosts/clap/ClapParameters.h"
#include "kernel/ParameterTable.h"
#include "support/GermanLocale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <set>

using namespace test;
using qor::clap::kBypassId;
using qor::clap::kPluginId;

TEST(ClapObject, OffersOneFactoryWithOnePlugin) {
    ASSERT_NE(clapEntry(), nullptr);
    EXPECT_TRUE(clap_version_is_compatible(clapEntry()->clap_version));
    EXPECT_EQ(clapEntry()->get_factory("clap.other-factory"), nullptr);
    EXPECT_EQ(clapEntry()->get_factory(nullptr), nullptr);
    ASSERT_NE(clapFactory(), nullptr);
    EXPECT_EQ(clapFactory()->get_plugin_count(clapFactory()), 1U);
    EXPECT_EQ(clapFactory()->get_plugin_descriptor(clapFactory(), 1), nullptr);
}

TEST(ClapObject, DescribesThePluginInFull) {
    const clap_plugin_descriptor_t* const described = clapFactory()->get_plugin_descriptor(clapFactory(), 0);
    ASSERT_NE(described, nullptr);
    EXPECT_STREQ(described->id, kPluginId);
    EXPECT_STREQ(described->name, "QOR Limiter");
    for (const char* text : {described->vendor, described->url, described->manual_url, described->support_url,
                             described->version, described->description}) {
        ASSERT_NE(text, nullptr);
        EXPECT_STRNE(text, "");
    }
    std::vector<std::string> features;
    for (const char** feature = described->features; *feature != nullptr; ++feature) {
        features.emplace_back(*feature);
    }
    EXPECT_THAT(features, testing::ElementsAre("audio-effect", "limiter", "mastering", "stereo"));
}

TEST(ClapObject, RefusesOtherIdsAbsentHostsAndOtherMajorVersions) {
    ClapTestHost host;
    const auto create = [](const clap_host_t* table, const char* id) {
        return clapFactory()->create_plugin(clapFactory(), table, id);
    };
    EXPECT_EQ(create(&host.table, "org.other.plugin"), nullptr);
    EXPECT_EQ(create(&host.table, ""), nullptr);
    EXPECT_EQ(create(&host.table, nullptr), nullptr);
    EXPECT_EQ(create(nullptr, kPluginId), nullptr);
    host.table.clap_version = {0, 26, 0};
    EXPECT_EQ(create(&host.table, kPluginId), nullptr);
}

TEST(ClapObject, APluginThatWasNeverInitialisedIsHarmless) {
    ClapTestHost host;
    const clap_plugin_t* const plugin = clapFactory()->create_plugin(clapFactory(), &host.table, kPluginId);
    ASSERT_NE(plugin, nullptr);
    EXPECT_FALSE(plugin->activate(plugin, 48000.0, 1, 512));
    EXPECT_FALSE(plugin->start_processing(plugin));
    clap_process_t block{};
    EXPECT_EQ(plugin->process(plugin, &block), CLAP_PROCESS_ERROR);
    plugin->reset(plugin);
    plugin->on_main_thread(plugin);
    plugin->deactivate(plugin);
    plugin->destroy(plugin);
}

TEST(ClapObject, AHostWithoutAnyCallsOfItsOwnWillDo) {
    clap_host_t bare{};
    bare.clap_version = CLAP_VERSION;
    const clap_plugin_t* const plugin = clapFactory()->create_plugin(clapFactory(), &bare, kPluginId);
    ASSERT_NE(plugin, nullptr);
    EXPECT_TRUE(plugin->init(plugin));
    EXPECT_FALSE(plugin->init(plugin)); // once only
    EXPECT_TRUE(plugin->activate(plugin, 48000.0, 1, 512));
    plugin->destroy(plugin); // without deactivation
}

TEST(ClapExtensions, AreThoseThatTheManualNamesAndNoOthers) {
    ClapTestHost host;
    const ClapPluginUnderTest plugin(host);
    for (const char* id : {"clap.audio-ports", "clap.params", "clap.state", "clap.latency", "clap.tail",
                           "clap.render", "clap.timer-support", "clap.gui"}) {
        EXPECT_NE(plugin->get_extension(plugin.get(), id), nullptr) << id;
    }
    for (const char* id : {"clap.note-ports", "clap.unknown", ""}) {
        EXPECT_EQ(plugin->get_extension(plugin.get(), id), nullptr) << id;
    }
    EXPECT_EQ(plugin->get_extension(plugin.get(), nullptr), nullptr);
}

TEST(ClapExtensions, ThePortsAreOneStereoPairThatMayBeWorkedOnInPlace) {
    ClapTestHost host;
    const ClapPluginUnderTest plugin(host);
    const auto& ports = plugin.extension<clap_plugin_audio_ports_t>(CLAP_EXT_AUDIO_PORTS);
    for (const bool isInput : {true, false}) {
        EXPECT_EQ(ports.count(plugin.get(), isInput), 1U);
        clap_audio_port_info_t info{};
        ASSERT_TRUE(ports.get(plugin.get(), 0, isInput, &info));
        EXPECT_EQ(info.channel_count, 2U);
        EXPECT_STREQ(info.port_type, CLAP_PORT_STEREO);
        EXPECT_EQ(info.flags, std::uint32_t{CLAP_AUDIO_PORT_IS_MAIN});
        EXPECT_EQ(info.in_place_pair, info.id);
        EXPECT_STRNE(info.name, "");
        EXPECT_FALSE(ports.get(plugin.get(), 1, isInput, &info));
        EXPECT_FALSE(ports.get(plugin.get(), 0, isInput, nullptr));
    }
}

TEST(ClapExtensions, LatencyIsZeroTheTailASecondAndBothRenderModesAreTaken) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    EXPECT_EQ(plugin.extension<clap_plugin_latency_t>(CLAP_EXT_LATENCY).get(plugin.get()), 0U);
    plugin.activate(44100.0);
    EXPECT_EQ(plugin.extension<qor::clap::PluginTail>(qor::clap::kExtTail).get(plugin.get()), 44100U);
    const auto& render = plugin.extension<qor::clap::PluginRender>(qor::clap::kExtRender);
    EXPECT_FALSE(render.hasHardRealtimeRequirement(plugin.get()));
    EXPECT_TRUE(render.set(plugin.get(), qor::clap::kRenderRealtime));
    EXPECT_TRUE(render.set(plugin.get(), qor::clap::kRenderOffline));
    EXPECT_FALSE(render.set(plugin.get(), 2));
}

TEST(ClapParams, AreTheTableInItsOrderWithTheAddressesAsIdsAndTheHostsBypass) {
    ClapTestHost host;
    const ClapPluginUnderTest plugin(host);
    const clap_plugin_params_t& params = plugin.params();
    ASSERT_EQ(params.count(plugin.get()), 13U);
    std::set<std::string> names;
    for (std::uint32_t i = 0; i < 13; ++i) {
        clap_param_info_t info{};
        ASSERT_TRUE(params.get_info(plugin.get(), i, &info));
        names.insert(info.name);
        EXPECT_NE(info.flags & CLAP_PARAM_IS_AUTOMATABLE, 0U);
        EXPECT_EQ(plugin.value(info.id), info.default_value);
        if (i == 12) {
            EXPECT_EQ(info.id, kBypassId);
            EXPECT_EQ(info.flags & (CLAP_PARAM_IS_BYPASS | CLAP_PARAM_IS_STEPPED),
                      std::uint32_t{CLAP_PARAM_IS_BYPASS | CLAP_PARAM_IS_STEPPED});
            EXPECT_EQ(info.min_value, 0.0);
            EXPECT_EQ(info.max_value, 1.0);
            EXPECT_EQ(info.default_value, 0.0);
            continue;
        }
        const qor::ParameterRow& row = qor::kParameterTable[i];
        EXPECT_EQ(info.id, row.address);
        EXPECT_STREQ(info.name, row.hostName);
        EXPECT_EQ(info.min_value, static_cast<double>(row.minimum));
        EXPECT_EQ(info.max_value, static_cast<double>(row.maximum));
        EXPECT_EQ(info.default_value, static_cast<double>(row.defaultValue));
        EXPECT_EQ((info.flags & CLAP_PARAM_IS_STEPPED) != 0, row.isStepped());
        EXPECT_EQ((info.flags & qor::clap::kParamIsEnum) != 0, info.id == 6);
        EXPECT_EQ(info.flags & CLAP_PARAM_IS_BYPASS, 0U);
    }
    EXPECT_EQ(names.size(), 13U);
    clap_param_info_t info{};
    EXPECT_FALSE(params.get_info(plugin.get(), 13, &info));
    EXPECT_FALSE(params.get_info(plugin.get(), 0, nullptr));
}

TEST(ClapParams, UnknownIdsHaveNoValueAndNoText) {
    ClapTestHost host;
    const ClapPluginUnderTest plugin(host);
    for (const clap_id id : {clap_id{12}, clap_id{999}, clap_id{1001}, CLAP_INVALID_ID}) {
        EXPECT_TRUE(std::isnan(plugin.value(id))) << id;
        char text[32];
        double value = 0.0;
        EXPECT_FALSE(plugin.params().value_to_text(plugin.get(), id, 0.5, text, sizeof text));
        EXPECT_FALSE(plugin.params().text_to_value(plugin.get(), id, "0.5", &value));
    }
    EXPECT_FALSE(plugin.params().get_value(plugin.get(), 0, nullptr));
}

namespace {

std::string textOf(const ClapPluginUnderTest& plugin, clap_id id, double value, std::uint32_t room = 64) {
    std::vector<char> text(room + 1, '#');
    const bool given = plugin.params().value_to_text(plugin.get(), id, value, text.data(), room);
    EXPECT_EQ(text[room], '#'); // nothing behind the room
    return given ? text.data() : "(none)";
}

double valueOf(const ClapPluginUnderTest& plugin, clap_id id, const char* text) {
    double value = -1.0;
    return plugin.params().text_to_value(plugin.get(), id, text, &value)
               ? value
               : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

TEST(ClapParams, TextsHaveDigitsOrNames) {
    ClapTestHost host;
    const ClapPluginUnderTest plugin(host);
    EXPECT_EQ(textOf(plugin, 0, 0.1F), "0.100");
    EXPECT_EQ(textOf(plugin, 2, 0.8F), "0.800");
    EXPECT_EQ(textOf(plugin, 6, 0), "Stereo");
    EXPECT_EQ(textOf(plugin, 6, 3), "Mid/Side Linked");
    EXPECT_EQ(textOf(plugin, 7, 1), "On");
    EXPECT_EQ(textOf(plugin, 11, 0), "Off");
    EXPECT_EQ(textOf(plugin, kBypassId, 1), "On");
    EXPECT_EQ(textOf(plugin, 2, 7.0), "1.000"); // held to the range
    EXPECT_EQ(textOf(plugin, 2, std::nan("")), "(none)");
    EXPECT_EQ(textOf(plugin, 6, 3, 4), "Mid");
    EXPECT_EQ(textOf(plugin, 6, 3, 1), "");
    EXPECT_FALSE(plugin.params().value_to_text(plugin.get(), 6, 3, nullptr, 10));
    char one = 'x';
    EXPECT_FALSE(plugin.params().value_to_text(plugin.get(), 6, 3, &one, 0));
    EXPECT_EQ(one, 'x');
}

TEST(ClapParams, TextsAreReadBackToTheValuesTheyShow) {
    ClapTestHost host;
    const ClapPluginUnderTest plugin(host);
    for (std::uint32_t i = 0; i < 13; ++i) {
        clap_param_info_t info{};
        plugin.params().get_info(plugin.get(), i, &info);
        const double step = (info.flags & CLAP_PARAM_IS_STEPPED) != 0 ? 1.0 : 0.125;
        for (double value = info.min_value; value <= info.max_value; value += step) {
            EXPECT_EQ(valueOf(plugin, info.id, textOf(plugin, info.id, value).c_str()), value) << info.name;
        }
    }
}

TEST(ClapParams, TextsMayHaveBlanksAroundAndNamesAnyCase) {
    ClapTestHost host;
    const ClapPluginUnderTest plugin(host);
    EXPECT_EQ(valueOf(plugin, 2, "  0.25\t"), 0.25);
    EXPECT_EQ(valueOf(plugin, 6, "mid/side"), 2.0);
    EXPECT_EQ(valueOf(plugin, kBypassId, "ON"), 1.0);
    EXPECT_EQ(valueOf(plugin, 2, "5"), 1.0);
    for (const char* text : {"", "   ", "0,25", "abc", "nan", "inf", "0.25 dB?"}) {
        EXPECT_TRUE(std::isnan(valueOf(plugin, 2, text))) << text;
    }
    EXPECT_FALSE(plugin.params().text_to_value(plugin.get(), 2, nullptr, nullptr));
    EXPECT_FALSE(plugin.params().text_to_value(plugin.get(), 2, "0.5", nullptr));
}

TEST(ClapParams, TextsAndStatesAreTheSameInALocaleWithADecimalComma) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    plugin.setValue(2, 0.625);
    const std::vector<std::uint8_t> state = plugin.save();
    const test::GermanLocale german;
    EXPECT_EQ(textOf(plugin, 0, 0.5), "0.500");
    EXPECT_EQ(valueOf(plugin, 0, "0.5"), 0.5);
    EXPECT_EQ(plugin.save(), state);
    plugin.setValue(2, 0.25);
    EXPECT_TRUE(plugin.load(state));
    EXPECT_EQ(plugin.value(2), 0.625);
}
