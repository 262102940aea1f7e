// JACK, and PipeWire where it stands in for JACK.
#include "hosts/standalone/AudioBackend.h"

#include <jack/jack.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>

namespace qor::app {

namespace {

struct ClientDeleter {
    void operator()(jack_client_t* client) const noexcept { jack_client_close(client); }
};
using Client = std::unique_ptr<jack_client_t, ClientDeleter>;

struct PortNames {
    explicit PortNames(const char** list) : names(list) {
        while (names != nullptr && names[count] != nullptr) {
            ++count;
        }
    }
    ~PortNames() { jack_free(names); }
    PortNames(const PortNames&) = delete;
    PortNames& operator=(const PortNames&) = delete;

    const char** names;
    std::size_t count = 0;
};

PortNames physicalPorts(jack_client_t* client, unsigned long direction) {
    return PortNames(
        jack_get_ports(client, nullptr, JACK_DEFAULT_AUDIO_TYPE, JackPortIsPhysical | direction));
}

Result<Client> join(const std::string& name) {
    // The library writes to standard error by itself; what matters is said by us.
    jack_set_error_function([](const char* /*text*/) {});
    jack_set_info_function([](const char* /*text*/) {});
    jack_status_t status{};
    Client client(jack_client_open(name.c_str(), JackNoStartServer, &status));
    if (!client) {
        return soundError((status & JackServerFailed) != 0
                              ? "no JACK server is running. Start jackd or PipeWire."
                              : "the JACK server refused the connection (status " +
                                    std::to_string(static_cast<unsigned>(status)) + ").");
    }
    return client;
}

class JackBackend final : public AudioBackend {
public:
    explicit JackBackend(Client client)
        : client_(std::move(client)), rate_(jack_get_sample_rate(client_.get())) {}
    ~JackBackend() override { JackBackend::stop(); }

    std::string name() const override { return "JACK"; }
    double sampleRate() const override { return rate_.load(); }

    Result<void> start(AudioTarget& target) override {
        target_ = &target;
        jack_client_t* client = client_.get();
        jack_set_process_callback(
            client,
            [](jack_nframes_t frames, void* self) {
                return static_cast<JackBackend*>(self)->process(frames);
            },
            this);
        // PipeWire's library calls this one alone.
        jack_on_shutdown(
            client, [](void* self) { static_cast<JackBackend*>(self)->gone_.store(true); }, this);
        jack_on_info_shutdown(
            client,
            [](jack_status_t /*code*/, const char* /*reason*/, void* self) {
                static_cast<JackBackend*>(self)->gone_.store(true);
            },
            this);
        jack_set_sample_rate_callback(
            client,
            [](jack_nframes_t rate, void* self) {
                static_cast<JackBackend*>(self)->rate_.store(rate);
                return 0;
            },
            this);
        static constexpr std::array<const char*, 2> kInputs{"in_left", "in_right"};
        static constexpr std::array<const char*, 2> kOutputs{"out_left", "out_right"};
        for (std::size_t c = 0; c < 2; ++c) {
            inputs_[c] = jack_port_register(client, kInputs[c], JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput, 0);
            outputs_[c] =
                jack_port_register(client, kOutputs[c], JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput, 0);
            if (inputs_[c] == nullptr || outputs_[c] == nullptr) {
                return soundError("the JACK server has no ports left for this program.");
            }
        }
        if (jack_activate(client) != 0) {
            return soundError("the JACK server does not let this program run.");
        }
        return {};
    }

    void stop() noexcept override { client_.reset(); }

    Result<void> connect() override {
        const PortNames captures = physicalPorts(client_.get(), JackPortIsOutput);
        const PortNames playbacks = physicalPorts(client_.get(), JackPortIsInput);
        if (playbacks.count == 0) {
            return soundError("the JACK server has no playback ports to connect with.");
        }
        bool joined = true;
        for (std::size_t c = 0; c < 2; ++c) {
            // One capture port feeds both sides; one playback port gets both.
            if (captures.count > 0) {
                joined = link(captures.names[std::min(c, captures.count - 1)], jack_port_name(inputs_[c])) &&
                         joined;
            }
            joined = link(jack_port_name(outputs_[c]), playbacks.names[std::min(c, playbacks.count - 1)]) &&
                     joined;
        }
        if (!joined) {
            return soundError("the JACK server refused some of the connections.");
        }
        return {};
    }

    std::optional<std::string> loss() const override {
        if (gone_.load()) {
            return "the JACK server has gone";
        }
        return std::nullopt;
    }

private:
    bool link(const char* from, const char* to) {
        const int result = jack_connect(client_.get(), from, to);
        return result == 0 || result == EEXIST;
    }

    int process(jack_nframes_t frames) noexcept {
        const auto buffer = [frames](jack_port_t* port) {
            return static_cast<float*>(jack_port_get_buffer(port, frames));
        };
        const float* const input[2] = {buffer(inputs_[0]), buffer(inputs_[1])};
        float* const output[2] = {buffer(outputs_[0]), buffer(outputs_[1])};
        target_->process(input, output, frames);
        return 0;
    }

    Client client_;
    std::atomic<double> rate_;
    AudioTarget* target_ = nullptr;
    std::array<jack_port_t*, 2> inputs_{};
    std::array<jack_port_t*, 2> outputs_{};
    std::atomic<bool> gone_{false};
};

} // namespace

Result<std::unique_ptr<AudioBackend>> openJack(const std::string& clientName) {
    auto client = join(clientName);
    if (!client) {
        return client.error();
    }
    return std::unique_ptr<AudioBackend>(std::make_unique<JackBackend>(std::move(client).value()));
}

std::vector<std::string> describeJack() {
    auto client = join("qor-limiter-list");
    if (!client) {
        return {"JACK: " + client.error().localizedDescription()};
    }
    jack_client_t* server = client.value().get();
    std::vector<std::string> lines{"JACK: running at " + std::to_string(jack_get_sample_rate(server)) +
                                   " Hz, " + std::to_string(jack_get_buffer_size(server)) +
                                   " frames a block"};
    for (const auto& [title, direction] :
         {std::pair{"capture", JackPortIsOutput}, std::pair{"playback", JackPortIsInput}}) {
        const PortNames ports = physicalPorts(server, direction);
        for (std::size_t i = 0; i < ports.count; ++i) {
            lines.push_back(std::string("  ") + title + ": " + ports.names[i]);
        }
    }
    return lines;
}

} // namespace qor::app
