// What a render did over time, in a fixed number of columns however long the recording is.
#pragma once

#include "hosts/cli/MeterTable.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qor::cli {

/// The extremes of a stretch of frames.
struct TraceColumn {
    float inputLow = 0.0F; // both channels together; silence is part of every stretch
    float inputHigh = 0.0F;
    float outputLow = 0.0F;
    float outputHigh = 0.0F;
    MeterValues meters; // lowest dynamics values, highest peaks
};

/// Collects block by block. When the columns are used up, neighbours are joined and each stands for twice the
/// frames.
class RenderTrace {
public:
    static constexpr std::size_t kMostColumns = 2048; // even

    RenderTrace() { columns_.reserve(kMostColumns); }

    /// The next frames with the meters' state behind them. Samples that aren't finite are left out.
    void add(const float* const input[2], const float* const output[2], std::size_t frames,
             const MeterValues& meters);

    const std::vector<TraceColumn>& columns() const noexcept { return columns_; }
    std::int64_t framesPerColumn() const noexcept { return framesPerColumn_; }
    std::int64_t frames() const noexcept { return frames_; }

private:
    void joinNeighbours();

    std::vector<TraceColumn> columns_; // the last one may not be full yet
    std::int64_t framesPerColumn_ = 16;
    std::int64_t frames_ = 0;
};

} // namespace qor::cli
