// A CLAP host for tests: loads the built object and drives instances of it.
#pragma once

#include "hosts/clap/ClapHeaders.h"
#include "hosts/clap/ClapMoreExtensions.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// The object under test, loaded for the whole program; null if it can't be.
const clap_plugin_entry_t* clapEntry();
const clap_plugin_factory_t* clapFactory();

/// The host's side of an instance. What it offers can be switched off one by one.
struct ClapTestHost {
    ClapTestHost();
    ClapTestHost(const ClapTestHost&) = delete;
    ClapTestHost& operator=(const ClapTestHost&) = delete;

    bool offersParams = true;
    bool offersTimers = false;
    bool refusesTimers = false; // offers them, and grants none
    bool offersDescriptors = false;
    bool offersGui = true;
    bool offersLog = true;

    int rescans = 0;
    clap_param_rescan_flags rescanned = 0;
    std::map<clap_id, std::uint32_t> timers;                      // periods in ms by id
    std::map<int, std::uint32_t> descriptors;                     // flags by descriptor
    std::vector<std::pair<std::uint32_t, std::uint32_t>> resizes; // asked for
    std::vector<bool> closed; // whether the editor was destroyed, each time that it closed
    std::atomic<int> callbacksAsked{0};
    std::vector<std::string> logged; // under `logMutex` while another thread may log
    std::mutex logMutex;

    clap_host_t table;
};

/// A block's events, in the order in which they are added.
class ClapEventList {
public:
    ClapEventList();
    ClapEventList(const ClapEventList&) = delete;
    ClapEventList& operator=(const ClapEventList&) = delete;

    clap_event_param_value_t& value(std::uint32_t time, clap_id id, double value);
    clap_event_midi_t& midi(std::uint32_t time, std::uint8_t a, std::uint8_t b, std::uint8_t c);
    clap_event_midi_sysex_t& sysEx(std::uint32_t time, const std::vector<std::uint8_t>& bytes);
    /// An entry that the list gives as null.
    void absent();
    const clap_input_events_t* table() const { return &table_; }

private:
    union Any {
        clap_event_header_t header;
        clap_event_param_value_t value;
        clap_event_midi_t midi;
        clap_event_midi_sysex_t sysEx;
    };
    Any& add(std::uint32_t time, std::uint16_t type, std::uint32_t size);

    std::deque<Any> events_;
    std::vector<const clap_event_header_t*> order_;
    clap_input_events_t table_{};
};

/// One instance, made by the object's factory and initialised; ended with the scope.
class ClapPluginUnderTest {
public:
    explicit ClapPluginUnderTest(ClapTestHost& host);
    ~ClapPluginUnderTest();
    ClapPluginUnderTest(const ClapPluginUnderTest&) = delete;
    ClapPluginUnderTest& operator=(const ClapPluginUnderTest&) = delete;

    const clap_plugin_t* operator->() const { return plugin_; }
    const clap_plugin_t* get() const { return plugin_; }
    template <class Extension>
    const Extension& extension(const char* id) const {
        return *static_cast<const Extension*>(plugin_->get_extension(plugin_, id));
    }
    const clap_plugin_params_t& params() const { return extension<clap_plugin_params_t>(CLAP_EXT_PARAMS); }

    bool activate(double sampleRate = 48000.0);
    void deactivate();
    double value(clap_id id) const;
    /// By way of a flush.
    void setValue(clap_id id, double value);
    /// One block over places of the caller's, any of which may be null.
    clap_process_status process(const float* const input[2], float* const output[2], std::uint32_t frames,
                                const clap_input_events_t* events = nullptr);

    std::vector<std::uint8_t> save() const;
    bool load(const std::vector<std::uint8_t>& bytes);

private:
    const clap_plugin_t* plugin_;
    bool active_ = false;
    std::int64_t time_ = 0;
};

/// A stream over bytes that gives or takes at most `step` of them at a time.
struct ClapBytes {
    std::vector<std::uint8_t> bytes;
    std::size_t step = SIZE_MAX;
    std::size_t failsAfter = SIZE_MAX; // bytes, then an error
    std::size_t position = 0;

    clap_istream_t input();
    clap_ostream_t output();
};

} // namespace test
