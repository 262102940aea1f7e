#include "kernel/comparison/Comparison.h"

#include "kernel/QOR_Limiter_Extension_DSPKernel.h"
#include "kernel/comparison/Random.h"
#include "kernel/model/KernelModel.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <memory>
#include <vector>

namespace comparison {

namespace {

using platform::AURenderEvent;

bool same(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}
bool same(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}
bool same(std::int32_t a, std::int32_t b) {
    return a == b;
}

/// Keeps the first difference that is reported to it.
class Differences {
public:
    template <class T>
    void compare(const char* name, T shipped, T modelled) {
        if (text_.empty() && !same(shipped, modelled)) {
            text_ = std::string(name) + ": " + std::to_string(shipped) + " instead of " +
                    std::to_string(modelled);
        }
    }
    void compare(const char* name, const float* shipped, const float* modelled, int count) {
        for (int i = 0; i < count && text_.empty(); ++i) {
            if (!same(shipped[i], modelled[i])) {
                compare(name, shipped[i], modelled[i]);
                text_ += " at place " + std::to_string(i);
            }
        }
    }
    const std::string& text() const { return text_; }

private:
    std::string text_;
};

void compareElement(Differences& d, const qor::Limiter1& s, const model::Element& m) {
    d.compare("input", s.input, m.input);
    d.compare("attack", s.attack, m.attack);
    d.compare("release", s.release, m.release);
    d.compare("threshold", s.threshold, m.threshold);
    d.compare("trim", s.trim, m.trim);
    d.compare("knee", s.knee, m.knee);
    d.compare("mix", s.mix, m.mix);
    d.compare("audition", s.audition, m.audition);
    d.compare("thresholdCoefficient", s.thresholdCoefficient, m.thresholdCoefficient);
    d.compare("attackCoefficient", s.attackCoefficient, m.attackCoefficient);
    d.compare("releaseCoefficient", s.releaseCoefficient, m.releaseCoefficient);
    d.compare("trimCoefficient", s.trimCoefficient, m.trimCoefficient);
    d.compare("gainTarget", s.gainTarget, m.gainTarget);
    d.compare("gain", s.gain, m.gain);
    d.compare("inputGain", s.inputGain, m.inputGain);
    d.compare("getCompression", s.getCompression(), m.compression());
}

void compareMeter(Differences& d, const qor::Follower& s, const model::Meter& m) {
    d.compare("follower samplerate", s.samplerate, m.samplerate);
    d.compare("follower attack", s.attack, m.attack);
    d.compare("follower release", s.release, m.release);
    d.compare("follower decay", s.decay, m.decay);
    d.compare("attackSamples", s.attackSamples, m.attackSamples);
    d.compare("releaseSamples", s.releaseSamples, m.releaseSamples);
    d.compare("holdCounter", s.holdCounter, m.holdCounter);
    d.compare("attackStep", s.attackStep, m.attackStep);
    d.compare("releaseStep", s.releaseStep, m.releaseStep);
    d.compare("follower value", s.value, m.value);
    d.compare("getPeakLimited", s.getPeakLimited(), m.peak());
}

void compareFilter(Differences& d, const qor::SVFilter4Pole1& s, const model::Filter& m) {
    d.compare("cutoff", s.cutoff, m.cutoff);
    d.compare("resonance", s.resonance, m.resonance);
    d.compare("lastCutoff", s.lastCutoff, m.lastCutoff);
    d.compare("lastResonance", s.lastResonance, m.lastResonance);
    d.compare("outputGain", s.outputGain, m.outputGain);
    d.compare("frequency", s.frequency, m.frequency);
    d.compare("damping", s.damping, m.damping);
    const float bands[] = {s.band1, s.band2, s.band3, s.band4};
    const float lows[] = {s.low1, s.low2, s.low3, s.low4};
    d.compare("bands", bands, m.band, 4);
    d.compare("lows", lows, m.low, 4);
}

void compareState(Differences& d, const qor::QOR_Limiter_Extension_DSPKernel& s, const model::Kernel& m) {
    d.compare("samplerate", s.samplerate, m.samplerate);
    d.compare("channelCount", s.channelCount, m.channelCount);
    for (std::uint64_t address = 0; address < 20; ++address) {
        d.compare("parameter", s.getParameter(address), m.getParameter(address));
    }
    const qor::BandSplitFilter3& split = s.bandSplit;
    d.compare("cutoff1", split.cutoff1, m.cutoff1);
    d.compare("cutoff2", split.cutoff2, m.cutoff2);
    for (int c = 0; c < 2; ++c) {
        compareElement(d, s.limiter.limiters[c], m.elements[c]);
        compareMeter(d, s.followers[c], m.meters[c]);
        compareFilter(d, split.lowFilters[c], m.lowFilters[c]);
        compareFilter(d, split.highFilters[c], m.highFilters[c]);
    }
    d.compare("lowLeft", split.lowLeft, m.lowPart[0].data(), model::kFrames);
    d.compare("lowRight", split.lowRight, m.lowPart[1].data(), model::kFrames);
    d.compare("highLeft", split.highLeft, m.highPart[0].data(), model::kFrames);
    d.compare("highRight", split.highRight, m.highPart[1].data(), model::kFrames);
    d.compare("bandLeft", split.bandLeft, m.bandPart[0].data(), model::kFrames);
    d.compare("bandRight", split.bandRight, m.bandPart[1].data(), model::kFrames);
    d.compare("midSide.mid", s.midSide.mid, m.sidechainMidSide[0].data(), model::kFrames);
    d.compare("midSide.side", s.midSide.side, m.sidechainMidSide[1].data(), model::kFrames);
    d.compare("splitter.mid", s.limiter.splitter.mid, m.midSide[0].data(), model::kFrames);
    d.compare("splitter.side", s.limiter.splitter.side, m.midSide[1].data(), model::kFrames);
}

/// Up to three channels of one side's buffers.
struct Buffers {
    Buffers() : storage(3, std::vector<float>(model::kFrames, 0.0F)) {
        for (std::vector<float>& channel : storage) {
            pointers.push_back(channel.data());
        }
    }
    Buffers(const Buffers&) = delete;
    Buffers& operator=(const Buffers&) = delete;

    std::vector<std::vector<float>> storage;
    std::vector<float*> pointers;
};

platform::AudioBufferList* listOf(platform::AudioBufferListStorage<3>& list, const Buffers& buffers) {
    platform::AudioBuffer* entries = list.list.mBuffers;
    for (int c = 0; c < 3; ++c) {
        entries[c].mData = buffers.pointers[static_cast<std::size_t>(c)];
    }
    return &list.list;
}

/// The pair under comparison, and what is done to both.
class Life {
public:
    explicit Life(std::uint32_t seed) : random_(seed), tame_(random_.oneIn(2)) {}

    std::string run() {
        initialise();
        for (int step = 0; step < 24 && differences_.text().empty(); ++step) {
            disturb();
            render();
            compareState(differences_, *shipped_, *modelled_);
        }
        return differences_.text();
    }

private:
    float parameterValue(std::uint64_t address) {
        if (address == 6) {
            return random_.oneOf<float>({0.0F, 0.0F, 1.0F, 1.9F, 2.0F, 3.0F, 3.0F, -0.5F, -1.0F, 4.0F});
        }
        if (address == 7) {
            return random_.oneIn(6) ? 0.001F : 0.0F;
        }
        if (address == 9) {
            return random_.oneIn(2) ? 0.0F : random_.unit();
        }
        if (address == 10) {
            return random_.oneIn(2) ? 1.0F : random_.unit();
        }
        if (!tame_ && random_.oneIn(8)) {
            return random_.oneIn(2) ? random_.odd() : 8.0F * random_.bipolar();
        }
        return random_.oneIn(4) ? static_cast<float>(random_.below(2)) : random_.unit();
    }

    // Mostly the parameters in use; now and then the inert ones, the one behind the slots, and ones out of
    // range.
    std::uint64_t parameterAddress() {
        return static_cast<std::uint64_t>(random_.below(random_.oneIn(5) ? 18 : 11));
    }

    void initialise() {
        const auto rate = random_.oneOf<double>(
            {48000.0, 44100.0, 22050.0, 32000.0, 96000.0, 192000.0, 1000.0, 16000.0, 0.0, -48000.0, 1e30,
             std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()});
        const bool usual = random_.oneIn(2);
        const int channels = random_.oneIn(12) ? 1 + 2 * random_.below(2) : 2;
        shipped_->init(channels, usual ? 48000.0 : rate);
        modelled_->init(channels, usual ? 48000.0 : rate);
        for (std::uint64_t address = 0; address < 12; ++address) {
            setParameter(address);
        }
    }

    void setParameter(std::uint64_t address) {
        const float value = parameterValue(address);
        shipped_->setParameter(address, value);
        modelled_->setParameter(address, value);
    }

    void disturb() {
        while (random_.oneIn(2)) {
            setParameter(parameterAddress());
        }
        if (random_.oneIn(10)) {
            shipped_->reset();
            modelled_->reset();
        }
        if (random_.oneIn(16)) {
            const auto rate = static_cast<float>(1000 * (1 + random_.below(200)));
            shipped_->setSamplerate(rate);
            modelled_->setSamplerate(rate);
        }
        if (random_.oneIn(12)) {
            shipped_->setBypassed(!shipped_->getBypassed());
            modelled_->bypassed = !modelled_->bypassed;
        }
        if (random_.oneIn(12)) {
            disturbFilters();
        }
    }

    // Another count of stages, or stages that no longer hold the same values.
    void disturbFilters() {
        const auto poles =
            random_.oneOf<float>({3.0F, 4.0F, 2.5F, 1.5F, 0.0F, std::numeric_limits<float>::quiet_NaN()});
        const bool uneven = random_.oneIn(2);
        const int c = random_.below(2);
        const bool high = random_.oneIn(2);
        qor::SVFilter4Pole1& s =
            high ? shipped_->bandSplit.highFilters[c] : shipped_->bandSplit.lowFilters[c];
        model::Filter& m = high ? modelled_->highFilters[c] : modelled_->lowFilters[c];
        s.poles = m.poles = poles;
        if (uneven) {
            s.band2 = m.band[1] = random_.bipolar();
            s.low3 = m.low[2] = random_.bipolar();
            s.low1 = m.low[0] = -0.0F;
        }
    }

    std::vector<model::Event> makeEvents(std::int64_t start, int frames) {
        std::vector<model::Event> events;
        while (random_.oneIn(2)) {
            model::Event event{};
            event.time = start - 3 + random_.below(frames + 4);
            event.type = random_.oneOf<int>({1, 1, 1, 2, 8, 9, 5});
            event.address = parameterAddress();
            event.value = parameterValue(event.address);
            events.push_back(event);
        }
        if (!random_.oneIn(4)) { // else out of order, which is allowed
            std::stable_sort(events.begin(), events.end(),
                             [](const auto& a, const auto& b) { return a.time < b.time; });
        }
        return events;
    }

    static std::vector<AURenderEvent> linked(const std::vector<model::Event>& events) {
        std::vector<AURenderEvent> list(events.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            AURenderEvent* next = i + 1 < list.size() ? &list[i + 1] : nullptr;
            const auto type = static_cast<std::uint8_t>(events[i].type);
            if (type == 1 || type == 2) {
                list[i].parameter = {next, events[i].time, type, {}, 64, events[i].address, events[i].value};
            } else {
                list[i].MIDI = {next, events[i].time, type, 0, 3, 0, {0x90, 60, 100}};
            }
        }
        return list;
    }

    void render() {
        const int frames = random_.oneIn(8) ? model::kFrames : random_.below(random_.oneIn(3) ? 1500 : 70);
        for (std::size_t c = 0; c < 3; ++c) {
            random_.fill(shippedIn_.pointers[c], frames);
            std::copy_n(shippedIn_.pointers[c], frames, modelledIn_.pointers[c]);
        }
        const bool inPlace = random_.oneIn(4);
        const std::int64_t start = std::int64_t{1000} * random_.below(1000);
        const std::vector<model::Event> events = makeEvents(start, frames);
        const std::vector<AURenderEvent> list = linked(events);

        platform::AudioTimeStamp time;
        time.mSampleTime = static_cast<double>(start) + (random_.oneIn(4) ? 0.75 : 0.0);
        const Buffers& shippedOut = inPlace ? shippedIn_ : shippedOut_;
        const Buffers& modelledOut = inPlace ? modelledIn_ : modelledOut_;
        shipped_->setBuffers(listOf(inList_, shippedIn_), listOf(outList_, shippedOut));
        shipped_->processWithEvents(&time, static_cast<unsigned>(frames),
                                    list.empty() ? nullptr : list.data(), nullptr);
        model::render(*modelled_, time.mSampleTime, static_cast<unsigned>(frames), events,
                      modelledIn_.pointers, modelledOut.pointers);
        for (std::size_t c = 0; c < 3; ++c) {
            differences_.compare("output", shippedOut.pointers[c], modelledOut.pointers[c], model::kFrames);
        }
    }

    Random random_;
    bool tame_; // keeps every parameter in its range
    std::unique_ptr<qor::QOR_Limiter_Extension_DSPKernel> shipped_ =
        std::make_unique<qor::QOR_Limiter_Extension_DSPKernel>();
    std::unique_ptr<model::Kernel> modelled_ = std::make_unique<model::Kernel>();
    Buffers shippedIn_;
    Buffers shippedOut_;
    Buffers modelledIn_;
    Buffers modelledOut_;
    platform::AudioBufferListStorage<3> inList_;
    platform::AudioBufferListStorage<3> outList_;
    Differences differences_;
};

} // namespace

std::string compareLife(std::uint32_t seed) {
    const std::string difference = Life(seed).run();
    return difference.empty() ? difference : "seed " + std::to_string(seed) + ": " + difference;
}

} // namespace comparison
