#include "hosts/cli/report/RenderTrace.h"

#include <algorithm>
#include <cmath>

namespace qor::cli {

namespace {

void widen(float& low, float& high, const float* samples, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        if (std::isfinite(samples[index])) {
            low = std::min(low, samples[index]);
            high = std::max(high, samples[index]);
        }
    }
}

void join(MeterValues& into, const MeterValues& other) {
    into.dynamics1 = std::min(into.dynamics1, other.dynamics1);
    into.dynamics2 = std::min(into.dynamics2, other.dynamics2);
    into.peak1 = std::max(into.peak1, other.peak1);
    into.peak2 = std::max(into.peak2, other.peak2);
}

} // namespace

void RenderTrace::add(const float* const input[2], const float* const output[2], std::size_t frames,
                      const MeterValues& meters) {
    for (std::size_t at = 0; at < frames;) {
        const auto inColumn = static_cast<std::size_t>(frames_ % framesPerColumn_);
        if (inColumn == 0) {
            if (columns_.size() == kMostColumns) {
                joinNeighbours();
                continue;
            }
            columns_.emplace_back();
        }
        const std::size_t count =
            std::min(frames - at, static_cast<std::size_t>(framesPerColumn_) - inColumn);
        TraceColumn& column = columns_.back();
        for (int channel = 0; channel < 2; ++channel) {
            widen(column.inputLow, column.inputHigh, input[channel] + at, count);
            widen(column.outputLow, column.outputHigh, output[channel] + at, count);
        }
        join(column.meters, meters);
        frames_ += static_cast<std::int64_t>(count);
        at += count;
    }
}

void RenderTrace::joinNeighbours() {
    for (std::size_t index = 0; index < columns_.size() / 2; ++index) {
        TraceColumn joined = columns_[2 * index];
        const TraceColumn& other = columns_[2 * index + 1];
        joined.inputLow = std::min(joined.inputLow, other.inputLow);
        joined.inputHigh = std::max(joined.inputHigh, other.inputHigh);
        joined.outputLow = std::min(joined.outputLow, other.outputLow);
        joined.outputHigh = std::max(joined.outputHigh, other.outputHigh);
        join(joined.meters, other.meters);
        columns_[index] = joined;
    }
    columns_.resize(columns_.size() / 2);
    framesPerColumn_ *= 2;
}

} // namespace qor::cli
