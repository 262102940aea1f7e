#include "ClapTestHost.h"

#include "hosts/clap/ClapDescriptor.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <limits>
#include <string_view>

namespace test {

namespace {

ClapTestHost& hostOf(const clap_host_t* host) {
    return *static_cast<ClapTestHost*>(host->host_data);
}

void rescan(const clap_host_t* host, clap_param_rescan_flags flags) {
    ++hostOf(host).rescans;
    hostOf(host).rescanned |= flags;
}
void clearParameter(const clap_host_t* /*host*/, clap_id /*id*/, clap_param_clear_flags /*flags*/) {}
void requestFlush(const clap_host_t* /*host*/) {}
constexpr clap_host_params_t kParams{rescan, clearParameter, requestFlush};

bool registerTimer(const clap_host_t* host, std::uint32_t period, clap_id* id) {
    if (hostOf(host).refusesTimers) {
        return false;
    }
    *id = static_cast<clap_id>(hostOf(host).timers.size() + 7);
    hostOf(host).timers[*id] = period;
    return true;
}
bool unregisterTimer(const clap_host_t* host, clap_id id) {
    return hostOf(host).timers.erase(id) == 1;
}
constexpr clap_host_timer_support_t kTimers{registerTimer, unregisterTimer};

bool addDescriptor(const clap_host_t* host, int descriptor, std::uint32_t flags) {
    return hostOf(host).descriptors.emplace(descriptor, flags).second;
}
bool changeDescriptor(const clap_host_t* host, int descriptor, std::uint32_t flags) {
    const auto found = hostOf(host).descriptors.find(descriptor);
    if (found == hostOf(host).descriptors.end()) {
        return false;
    }
    found->second = flags;
    return true;
}
bool removeDescriptor(const clap_host_t* host, int descriptor) {
    return hostOf(host).descriptors.erase(descriptor) == 1;
}
constexpr qor::clap::HostDescriptors kDescriptors{addDescriptor, changeDescriptor, removeDescriptor};

void hintsChanged(const clap_host_t* /*host*/) {}
bool requestResize(const clap_host_t* host, std::uint32_t width, std::uint32_t height) {
    hostOf(host).resizes.emplace_back(width, height);
    return true;
}
bool requestVisibility(const clap_host_t* /*host*/) {
    return false;
}
void closed(const clap_host_t* host, bool wasDestroyed) {
    hostOf(host).closed.push_back(wasDestroyed);
}
constexpr clap_host_gui_t kGui{hintsChanged, requestResize, requestVisibility, requestVisibility, closed};

void log(const clap_host_t* host, std::int32_t /*severity*/, const char* message) {
    const std::lock_guard lock(hostOf(host).logMutex);
    hostOf(host).logged.emplace_back(message);
}
constexpr qor::clap::HostLog kLog{log};

const void* getExtension(const clap_host_t* host, const char* id) {
    const ClapTestHost& self = hostOf(host);
    if (std::string_view(id) == CLAP_EXT_PARAMS && self.offersParams) {
        return &kParams;
    }
    if (std::string_view(id) == CLAP_EXT_TIMER_SUPPORT && self.offersTimers) {
        return &kTimers;
    }
    if (std::string_view(id) == qor::clap::kExtDescriptors && self.offersDescriptors) {
        return &kDescriptors;
    }
    if (std::string_view(id) == CLAP_EXT_GUI && self.offersGui) {
        return &kGui;
    }
    if (std::string_view(id) == qor::clap::kExtLog && self.offersLog) {
        return &kLog;
    }
    return nullptr;
}

void requestNothing(const clap_host_t* /*host*/) {}
void requestCallback(const clap_host_t* host) {
    ++hostOf(host).callbacksAsked;
}

} // namespace

const clap_plugin_entry_t* clapEntry() {
    static void* const object = dlopen(QOR_CLAP_OBJECT, RTLD_NOW | RTLD_LOCAL);
    static const auto* const entry =
        object == nullptr ? nullptr : static_cast<const clap_plugin_entry_t*>(dlsym(object, "clap_entry"));
    static const bool ready = entry != nullptr && entry->init(QOR_CLAP_OBJECT);
    return ready ? entry : nullptr;
}

const clap_plugin_factory_t* clapFactory() {
    return static_cast<const clap_plugin_factory_t*>(clapEntry()->get_factory(CLAP_PLUGIN_FACTORY_ID));
}

ClapTestHost::ClapTestHost()
    : table{CLAP_VERSION, this,         "Test Host",    "Tests",        "urn:test",
            "1",          getExtension, requestNothing, requestNothing, requestCallback} {}

ClapEventList::ClapEventList() {
    table_.ctx = this;
    table_.size = [](const clap_input_events_t* list) {
        return static_cast<std::uint32_t>(static_cast<const ClapEventList*>(list->ctx)->order_.size());
    };
    table_.get = [](const clap_input_events_t* list, std::uint32_t index) {
        return static_cast<const ClapEventList*>(list->ctx)->order_.at(index);
    };
}

ClapEventList::Any& ClapEventList::add(std::uint32_t time, std::uint16_t type, std::uint32_t size) {
    Any& event = events_.emplace_back();
    std::memset(&event, 0, sizeof event);
    event.header = {size, time, CLAP_CORE_EVENT_SPACE_ID, type, 0};
    order_.push_back(&event.header);
    return event;
}

clap_event_param_value_t& ClapEventList::value(std::uint32_t time, clap_id id, double value) {
    clap_event_param_value_t& event =
        add(time, CLAP_EVENT_PARAM_VALUE, sizeof(clap_event_param_value_t)).value;
    event.param_id = id;
    event.note_id = -1;
    event.port_index = -1;
    event.channel = -1;
    event.key = -1;
    event.value = value;
    return event;
}

clap_event_midi_t& ClapEventList::midi(std::uint32_t time, std::uint8_t a, std::uint8_t b, std::uint8_t c) {
    clap_event_midi_t& event = add(time, CLAP_EVENT_MIDI, sizeof(clap_event_midi_t)).midi;
    event.data[0] = a;
    event.data[1] = b;
    event.data[2] = c;
    return event;
}

clap_event_midi_sysex_t& ClapEventList::sysEx(std::uint32_t time, const std::vector<std::uint8_t>& bytes) {
    clap_event_midi_sysex_t& event = add(time, CLAP_EVENT_MIDI_SYSEX, sizeof(clap_event_midi_sysex_t)).sysEx;
    event.buffer = bytes.data();
    event.size = static_cast<std::uint32_t>(bytes.size());
    return event;
}

void ClapEventList::absent() {
    order_.push_back(nullptr);
}

ClapPluginUnderTest::ClapPluginUnderTest(ClapTestHost& host)
    : plugin_(clapFactory()->create_plugin(clapFactory(), &host.table, qor::clap::kPluginId)) {
    if (plugin_ != nullptr && !plugin_->init(plugin_)) {
        plugin_->destroy(plugin_);
        plugin_ = nullptr;
    }
}

ClapPluginUnderTest::~ClapPluginUnderTest() {
    if (plugin_ != nullptr) {
        deactivate();
        plugin_->destroy(plugin_);
    }
}

bool ClapPluginUnderTest::activate(double sampleRate) {
    active_ = plugin_->activate(plugin_, sampleRate, 1, 8192) && plugin_->start_processing(plugin_);
    return active_;
}

void ClapPluginUnderTest::deactivate() {
    if (active_) {
        plugin_->stop_processing(plugin_);
        plugin_->deactivate(plugin_);
        active_ = false;
    }
}

double ClapPluginUnderTest::value(clap_id id) const {
    double value = std::numeric_limits<double>::quiet_NaN();
    return params().get_value(plugin_, id, &value) ? value : std::numeric_limits<double>::quiet_NaN();
}

void ClapPluginUnderTest::setValue(clap_id id, double value) {
    ClapEventList events;
    events.value(0, id, value);
    params().flush(plugin_, events.table(), nullptr);
}

clap_process_status ClapPluginUnderTest::process(const float* const input[2], float* const output[2],
                                                 std::uint32_t frames, const clap_input_events_t* events) {
    float* in[2] = {const_cast<float*>(input[0]), const_cast<float*>(input[1])};
    float* out[2] = {output[0], output[1]};
    clap_audio_buffer_t inputs{in, nullptr, 2, 0, 0};
    clap_audio_buffer_t outputs{out, nullptr, 2, 0, 0};
    clap_process_t block{};
    block.steady_time = time_;
    block.frames_count = frames;
    block.audio_inputs = &inputs;
    block.audio_outputs = &outputs;
    block.audio_inputs_count = 1;
    block.audio_outputs_count = 1;
    block.in_events = events;
    time_ += frames;
    return plugin_->process(plugin_, &block);
}

std::vector<std::uint8_t> ClapPluginUnderTest::save() const {
    ClapBytes stream;
    const clap_ostream_t output = stream.output();
    return extension<clap_plugin_state_t>(CLAP_EXT_STATE).save(plugin_, &output)
               ? stream.bytes
               : std::vector<std::uint8_t>{};
}

bool ClapPluginUnderTest::load(const std::vector<std::uint8_t>& bytes) {
    ClapBytes stream;
    stream.bytes = bytes;
    const clap_istream_t input = stream.input();
    return extension<clap_plugin_state_t>(CLAP_EXT_STATE).load(plugin_, &input);
}

clap_istream_t ClapBytes::input() {
    return {this, [](const clap_istream_t* stream, void* buffer, std::uint64_t size) -> std::int64_t {
                ClapBytes& self = *static_cast<ClapBytes*>(stream->ctx);
                if (self.position >= self.failsAfter) {
                    return -1;
                }
                const std::size_t count =
                    std::min({static_cast<std::size_t>(size), self.step, self.bytes.size() - self.position});
                std::copy_n(self.bytes.begin() + static_cast<std::ptrdiff_t>(self.position), count,
                            static_cast<std::uint8_t*>(buffer));
                self.position += count;
                return static_cast<std::int64_t>(count);
            }};
}

clap_ostream_t ClapBytes::output() {
    return {this, [](const clap_ostream_t* stream, const void* buffer, std::uint64_t size) -> std::int64_t {
                ClapBytes& self = *static_cast<ClapBytes*>(stream->ctx);
                if (self.bytes.size() >= self.failsAfter) {
                    return -1;
                }
                const std::size_t count = std::min(static_cast<std::size_t>(size), self.step);
                const auto* const from = static_cast<const std::uint8_t*>(buffer);
                self.bytes.insert(self.bytes.end(), from, from + count);
                return static_cast<std::int64_t>(count);
            }};
}

} // namespace test
