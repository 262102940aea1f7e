#include "kernel/model/KernelModel.h"

#include <cmath>
#include <cstring>

namespace model {

namespace {

std::int32_t toInt32(float v) {
    if (std::isnan(v)) {
        return 0;
    }
    if (v >= 2147483648.0F) {
        return 2147483647;
    }
    if (v <= -2147483648.0F) {
        return -2147483647 - 1;
    }
    return static_cast<std::int32_t>(v);
}

void silenceByLowWord(double& step) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &step, sizeof bits);
    if ((static_cast<std::uint32_t>(bits & 0xFFFFFFFFU) & 0x7F800000U) == 0) {
        step = 0.0;
    }
}

} // namespace

float rampLogUp(float x) {
    const float v = (x < 0.0F ? -x : x) * 4096.0F;
    const std::int32_t i = toInt32(v);
    float r = 0.0F;
    if (i >= 4096) {
        r = 1.0F;
    } else if (i >= 0) {
        const float t = 0.000244140625F * static_cast<float>(i);
        const float exponent = (t * 10.0F) - 5.0F;
        const float hertz = 440.0F * powf(2.0F, exponent);
        r = (hertz / 14080.0F) * t;
    }
    return x < 0.0F ? -r : r;
}

void Element::deriveThreshold() {
    if (knee > 0.5F) {
        thresholdCoefficient = powf(10.0F, 1.0F - (2.0F * threshold));
    } else {
        thresholdCoefficient = powf(10.0F, (2.0F * threshold) - 2.0F);
    }
}

void Element::deriveTrim() {
    const double exponent = (2.0 * static_cast<double>(trim)) - 1.0;
    trimCoefficient = powf(10.0F, static_cast<float>(exponent));
}

void Element::deriveAttack() {
    attackCoefficient = powf(10.0F, -2.0F * attack);
}

void Element::deriveRelease() {
    releaseCoefficient = powf(10.0F, -2.0F - (3.0F * release));
}

void Element::reset() {
    inputGain = input * 2.0F;
    deriveThreshold();
    deriveTrim();
    deriveAttack();
    deriveRelease();
    gainTarget = 0.0F;
}

void Element::limit(float* place, float in, float source) {
    const float x = source * inputGain;
    const float magnitude = fabsf(x);
    float g = gain;
    if (knee > 0.5F) {
        const float scaled = thresholdCoefficient * magnitude;
        gainTarget = 1.0F / (1.0F + scaled);
        if (g > gainTarget) {
            const float distance = g - gainTarget;
            g = g - (attackCoefficient * distance);
        } else {
            const float distance = gainTarget - g;
            g = g + (releaseCoefficient * distance);
        }
    } else {
        const float half = 0.5F * g;
        gainTarget = half * magnitude;
        if (gainTarget > thresholdCoefficient) {
            const float excess = gainTarget - thresholdCoefficient;
            g = g - (attackCoefficient * excess);
        } else {
            const float distance = 1.0F - g;
            g = g + (releaseCoefficient * distance);
        }
    }
    const float trimmed = x * trimCoefficient;
    float y = trimmed * g;
    if (audition > 0.5F) {
        y = in - y;
    }
    const float wet = y * mix;
    const float dry = in * (1.0F - mix);
    *place = wet + dry;
    gain = g;
}

void Element::sample(float* place, const float* sidechain) {
    const float in = *place;
    limit(place, in, sidechain != nullptr ? *sidechain : in);
}

void Element::sampleLinked(float* place, const float* other) {
    const float in = *place;
    limit(place, in, in + *other);
}

float Element::compression() const {
    const float d = 1.0F - gain;
    if (d > 0.0F) {
        float v = 20.0F * logf(d);
        if (v < -60.0F) {
            v = -60.0F;
        }
        return v / -60.0F;
    }
    return 1.0F;
}

void Meter::rate(float s) {
    samplerate = s;
    attack = 0.01F;
    attackSamples = attack * samplerate;
    if (attackSamples < 16.0F) {
        attackSamples = 16.0F;
    }
    attackStep = 1.0 / static_cast<double>(attackSamples);
    silenceByLowWord(attackStep);
    release = 0.5F;
    releaseSamples = release * samplerate;
    if (releaseSamples < 16.0F) {
        releaseSamples = 16.0F;
    }
    releaseStep = 1.0 / static_cast<double>(releaseSamples);
    silenceByLowWord(releaseStep);
    decay = 0.0001F;
    holdCounter = toInt32(decay * samplerate);
}

void Meter::sample(float x) {
    const double a = x < 0.0F ? -x : x;
    if (a > value) {
        value += attackStep;
        holdCounter = toInt32(decay * samplerate);
        return;
    }
    if (a < value) {
        if (holdCounter > 0) {
            holdCounter -= 1;
            return;
        }
        holdCounter = 0;
        value -= releaseStep;
        if (value < 0.0) {
            value = 0.0;
        }
    }
}

float Meter::peak() const {
    const auto narrow = static_cast<float>(value);
    if (narrow > 1.0F) {
        return 1.0F;
    }
    if (narrow < 0.0F) {
        return 0.0F;
    }
    return narrow;
}

void Filter::reset() {
    lastCutoff = lastResonance = outputGain = frequency = damping = 0.0F;
    for (int k = 0; k < 4; ++k) {
        band[k] = 0.0F;
        low[k] = 0.0F;
    }
    resonance = 0.0F;
    setCutoff(0.5F);
}

void Filter::setCutoff(float c) {
    cutoff = c;
    float f = rampLogUp(cutoff);
    if (static_cast<double>(f) < 0.0012) {
        f = 0.0012F;
    } else if (f > 1.0F) {
        f = 1.0F;
    }
    float r = resonance;
    if (f == lastCutoff && r == lastResonance) {
        return;
    }
    lastCutoff = f;
    lastResonance = r;
    r = r * r;
    r = r + 0.05F;
    outputGain = 0.7F + (1.0F - r);
    const float p = 1.0F + (1.0F - f);
    r = r * p;
    const float u = r * 25.0F;
    frequency = f;
    damping = 1.0F / u;
}

void Filter::stages(float s, float& h, float& l) {
    for (int k = 0; k < 4; ++k) {
        if (k > 0 && !(poles > static_cast<float>(k))) {
            continue;
        }
        const float step = frequency * band[k];
        l = low[k] + step;
        const float halved = 0.5F * s;
        const float damped = damping * band[k];
        h = (halved - l) - damped;
        const float pushed = frequency * h;
        band[k] = pushed + band[k];
        low[k] = l;
    }
}

float Filter::high(float s) {
    float h = 0.0F;
    float l = 0.0F;
    stages(s, h, l);
    return h * outputGain;
}

float Filter::lowPass(float s) {
    float h = 0.0F;
    float l = 0.0F;
    stages(s, h, l);
    return l * outputGain;
}

Kernel::Kernel() {
    setCutoff1(0.333F);
    setCutoff2(0.666F);
    elements[0].reset();
    elements[1].reset();
}

void Kernel::init(int channels, double rate) {
    setSamplerate(static_cast<float>(rate));
    channelCount = channels;
    reset();
}

void Kernel::setSamplerate(float s) {
    samplerate = s;
    meters[0].rate(s);
    meters[1].rate(s);
    elements[0].reset();
    elements[1].reset();
    for (auto& part : midSide) {
        part.fill(0.0F);
    }
}

void Kernel::reset() {
    meters[0].value = 0.0;
    meters[1].value = 0.0;
    for (int c = 0; c < 2; ++c) {
        sidechainMidSide[c].fill(0.0F);
        midSide[c].fill(0.0F);
        lowPart[c].fill(0.0F);
        highPart[c].fill(0.0F);
        bandPart[c].fill(0.0F);
        highFilters[c].reset();
        lowFilters[c].reset();
    }
    setCutoff1(0.0F);
    setCutoff2(1.0F);
    elements[0].reset();
    elements[1].reset();
}

void Kernel::setCutoff1(float c) {
    if (c < 0.0F || c > 1.0F) {
        return;
    }
    cutoff1 = c > cutoff2 ? cutoff2 : c;
    lowFilters[0].setCutoff(cutoff1);
    lowFilters[1].setCutoff(cutoff1);
}

void Kernel::setCutoff2(float c) {
    if (c < 0.0F || c > 1.0F) {
        return;
    }
    cutoff2 = c < cutoff1 ? cutoff1 : c;
    highFilters[0].setCutoff(cutoff2);
    highFilters[1].setCutoff(cutoff2);
}

void Kernel::setParameter(std::uint64_t address, float value) {
    if (address > 15) {
        return;
    }
    if (address == 15) {
        meters[0].samplerate = value;
        return;
    }
    slots[address] = value;
    for (Element& element : elements) {
        switch (address) {
        case 0:
            element.attack = value;
            element.deriveAttack();
            break;
        case 1:
            element.release = value;
            element.deriveRelease();
            break;
        case 2:
            element.threshold = value;
            element.deriveThreshold();
            break;
        case 3:
            element.knee = value;
            break;
        case 4:
            element.trim = value;
            element.deriveTrim();
            break;
        case 5:
            element.mix = value;
            break;
        case 8:
            element.audition = value;
            break;
        default:
            break;
        }
    }
    if (address == 9) {
        setCutoff1(value);
    }
    if (address == 10) {
        setCutoff2(value);
    }
}

float Kernel::getParameter(std::uint64_t address) const {
    if (address > 15) {
        return 0.0F;
    }
    return address == 15 ? meters[0].samplerate : slots[address];
}

void Kernel::split(const float* left, const float* right, int count) {
    const float* sources[2] = {left, right};
    for (int c = 0; c < 2; ++c) {
        for (int i = 0; i < count; ++i) {
            const float s = sources[c][i];
            highPart[c][i] = highFilters[c].high(s);
            bandPart[c][i] = s - highPart[c][i];
        }
    }
    for (int c = 0; c < 2; ++c) {
        for (int i = 0; i < count; ++i) {
            const float s = bandPart[c][i];
            lowPart[c][i] = lowFilters[c].lowPass(s);
            bandPart[c][i] = s - lowPart[c][i];
        }
    }
}

namespace {

using Pair = std::array<std::array<float, kFrames>, 2>;

void toMidSide(Pair& pair, const float* left, const float* right, int count) {
    for (int i = 0; i < count; ++i) {
        const float sum = left[i] + right[i];
        const float difference = left[i] - right[i];
        pair[0][i] = sum * 0.5F;
        pair[1][i] = difference * 0.5F;
    }
}

void fromMidSide(const Pair& pair, float* left, float* right, int count) {
    for (int i = 0; i < count; ++i) {
        left[i] = pair[0][i] + pair[1][i];
        right[i] = pair[0][i] - pair[1][i];
    }
}

void run(Element& element, float* buffer, const float* sidechain, int count) {
    for (int i = 0; i < count; ++i) {
        element.sample(buffer + i, sidechain == nullptr ? nullptr : sidechain + i);
    }
}

void runLinked(Element& element, float* buffer, const float* other, int count) {
    for (int i = 0; i < count; ++i) {
        element.sampleLinked(buffer + i, other + i);
    }
}

} // namespace

void Kernel::limit(float* left, float* right, int count) {
    const int mode = toInt32(slots[6]);
    if (!(slots[9] == 0.0F && slots[10] == 1.0F)) {
        limitFiltered(mode, left, right, count);
    } else if (mode == 0) {
        run(elements[0], left, nullptr, count);
        run(elements[1], right, nullptr, count);
    } else if (mode == 1) {
        runLinked(elements[0], left, right, count);
        runLinked(elements[1], right, left, count);
    } else if (mode == 2 || mode == 3) {
        toMidSide(midSide, left, right, count);
        run(elements[0], midSide[0].data(), nullptr, count);
        run(elements[1], midSide[mode == 2 ? 1 : 0].data(), nullptr, count);
        fromMidSide(midSide, left, right, count);
    }
}

void Kernel::limitFiltered(int mode, float* left, float* right, int count) {
    split(left, right, count);
    if (mode == 0) {
        run(elements[0], left, bandPart[0].data(), count);
        run(elements[1], right, bandPart[1].data(), count);
    } else if (mode == 1) {
        runLinked(elements[0], left, right, count);
        runLinked(elements[1], right, left, count);
    } else if (mode == 2 || mode == 3) {
        toMidSide(sidechainMidSide, bandPart[0].data(), bandPart[1].data(), count);
        toMidSide(midSide, left, right, count);
        run(elements[0], midSide[0].data(), sidechainMidSide[0].data(), count);
        run(elements[1], midSide[1].data(), sidechainMidSide[mode == 2 ? 1 : 0].data(), count);
        fromMidSide(midSide, left, right, count);
    }
}

void Kernel::process(const std::vector<float*>& in, const std::vector<float*>& out, unsigned count,
                     unsigned offset) {
    for (int c = 0; c < channelCount; ++c) {
        const float* from = in[static_cast<std::size_t>(c)] + offset;
        float* to = out[static_cast<std::size_t>(c)] + offset;
        for (unsigned i = 0; i < count && from != to; ++i) {
            to[i] = from[i];
        }
    }
    if (bypassed || channelCount != 2) {
        return;
    }
    if (slots[7] == 0.0F) {
        limit(out[0] + offset, out[1] + offset, static_cast<int>(count));
    }
    for (std::size_t c = 0; c < 2; ++c) {
        for (unsigned i = 0; i < count; ++i) {
            meters[c].sample(out[c][offset + i]);
        }
    }
}

void render(Kernel& kernel, double sampleTime, unsigned frameCount, const std::vector<Event>& events,
            const std::vector<float*>& in, const std::vector<float*>& out) {
    auto now = static_cast<std::int64_t>(sampleTime);
    unsigned done = 0;
    std::size_t next = 0;
    while (done < frameCount) {
        if (next == events.size()) {
            kernel.process(in, out, frameCount - done, done);
            return;
        }
        const std::int64_t wait = events[next].time - now;
        if (wait > 0) {
            kernel.process(in, out, static_cast<unsigned>(wait), done);
            done += static_cast<unsigned>(wait);
            now += wait;
        }
        do {
            const Event& event = events[next];
            if (event.type == 1 || event.type == 2) {
                kernel.setParameter(event.address, event.value);
            }
            ++next;
        } while (next < events.size() && events[next].time <= now);
    }
}

} // namespace model
