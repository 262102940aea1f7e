// Plays a sound file through a JACK client and compares what comes back with another file, bit for bit.
//   jack-probe INPUT REFERENCE CLIENT
// Or plays it over and over, as time goes, until a signal ends it.
//   jack-probe --play INPUT CLIENT
#include <jack/jack.h>
#include <sndfile.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::size_t kMostPeriods = 8; // of latency

using Stereo = std::array<std::vector<float>, 2>;

Stereo read(const char* name) {
    SF_INFO info{};
    SNDFILE* file = sf_open(name, SFM_READ, &info);
    if (file == nullptr || info.channels != 2) {
        std::fprintf(stderr, "jack-probe: %s is no stereo file\n", name);
        std::exit(2);
    }
    std::vector<float> both(static_cast<std::size_t>(info.frames) * 2);
    sf_readf_float(file, both.data(), info.frames);
    sf_close(file);
    Stereo sides;
    for (std::size_t i = 0; i < both.size(); ++i) {
        sides[i % 2].push_back(both[i]);
    }
    return sides;
}

struct Probe {
    std::array<jack_port_t*, 2> outputs{};
    std::array<jack_port_t*, 2> inputs{};
    Stereo played;
    Stereo recorded;
    std::size_t position = 0;
    std::atomic<bool> running{false};
    std::atomic<bool> done{false};
    bool forever = false;

    int process(jack_nframes_t frames) {
        const bool active = running.load() && !done.load();
        for (std::size_t c = 0; c < 2; ++c) {
            auto* out = static_cast<float*>(jack_port_get_buffer(outputs[c], frames));
            const auto* in = static_cast<const float*>(jack_port_get_buffer(inputs[c], frames));
            for (std::size_t i = 0; i < frames; ++i) {
                const std::size_t at = position + i;
                out[i] = active && at < played[c].size() ? played[c][at] : 0.0F;
                if (active && at < recorded[c].size()) {
                    recorded[c][at] = in[i];
                }
            }
        }
        if (active) {
            position += frames;
            if (forever) {
                position = position < played[0].size() ? position : 0;
            } else {
                done.store(position >= recorded[0].size());
            }
        }
        return 0;
    }
};

/// How many frames, counted from the first, are equal to the reference with the recording `shift` frames
/// late.
std::size_t equalFrames(const Stereo& recorded, const Stereo& reference, std::size_t shift) {
    const std::size_t frames = reference[0].size();
    for (std::size_t i = 0; i < frames; ++i) {
        if (recorded[0][i + shift] != reference[0][i] || recorded[1][i + shift] != reference[1][i]) {
            return i;
        }
    }
    return frames;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::fprintf(stderr,
                     "usage: jack-probe INPUT REFERENCE CLIENT\n       jack-probe --play INPUT CLIENT\n");
        return 2;
    }
    Probe probe;
    probe.forever = std::string(arguments[1]) == "--play";
    probe.played = read(arguments[probe.forever ? 2 : 1]);
    const Stereo reference = probe.forever ? Stereo{} : read(arguments[2]);
    jack_client_t* client = jack_client_open("probe", JackNoStartServer, nullptr);
    if (client == nullptr) {
        std::fprintf(stderr, "jack-probe: no JACK server\n");
        return 2;
    }
    const std::size_t period = jack_get_buffer_size(client);
    static constexpr std::array<const char*, 2> kOutputs{"out_left", "out_right"};
    static constexpr std::array<const char*, 2> kInputs{"in_left", "in_right"};
    for (std::size_t c = 0; c < 2; ++c) {
        probe.recorded[c].assign(probe.played[c].size() + kMostPeriods * period, 0.0F);
        probe.outputs[c] =
            jack_port_register(client, kOutputs[c], JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput, 0);
        probe.inputs[c] = jack_port_register(client, kInputs[c], JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput, 0);
    }
    jack_set_process_callback(
        client, [](jack_nframes_t frames, void* self) { return static_cast<Probe*>(self)->process(frames); },
        &probe);
    jack_activate(client);
    const std::string app = arguments[3];
    for (std::size_t c = 0; c < 2; ++c) {
        if (jack_connect(client, jack_port_name(probe.outputs[c]), (app + ":" + kInputs[c]).c_str()) != 0 ||
            jack_connect(client, (app + ":" + kOutputs[c]).c_str(), jack_port_name(probe.inputs[c])) != 0) {
            std::fprintf(stderr, "jack-probe: the ports of %s cannot be connected\n", app.c_str());
            return 2;
        }
    }
    if (probe.forever) {
        probe.running.store(true);
        for (;;) {
            std::this_thread::sleep_for(std::chrono::seconds(1));
        }
    }
    // Without a clock that drives it the server waits for every client, so that a busy machine loses nothing.
    jack_set_freewheel(client, 1);
    // The connections take part from a later period on.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    probe.running.store(true);
    while (!probe.done.load()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    jack_set_freewheel(client, 0);
    jack_client_close(client);
    const std::size_t frames = reference[0].size();
    std::size_t best = 0;
    for (std::size_t periods = 0; periods < kMostPeriods; ++periods) {
        const std::size_t equal = equalFrames(probe.recorded, reference, periods * period);
        if (equal == frames) {
            std::printf("bit-identical: %zu frames, %zu periods round trip\n", frames, periods);
            return 0;
        }
        best = std::max(best, equal);
    }
    std::fprintf(stderr, "jack-probe: what came back is equal for %zu of %zu frames (period %zu)\n", best,
                 frames, period);
    return 1;
}
