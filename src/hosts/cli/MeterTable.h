// The meters of each render call as a table of comma-separated values.
#pragma once

#include "hosts/cli/OutputFile.h"

#include <cstdint>
#include <memory>
#include <string>

namespace qor::cli {

/// What the four meters say after a render call.
struct MeterValues {
    float dynamics1 = 1.0F; // 1.0 no reduction, down to 0.0
    float dynamics2 = 1.0F;
    float peak1 = 0.0F; // linear, 0.0 to 1.0
    float peak2 = 0.0F;
};

/// One row per render call: the call's first frame, both dynamics values, both peak values; numbers in the
/// shortest form that reads back. The file appears in `commit`.
class MeterTable {
public:
    static Result<std::unique_ptr<MeterTable>> create(const std::string& file);

    Result<void> add(std::int64_t sampleTime, const MeterValues& values);
    /// Writes what is still to be written and brings it to the disk.
    Result<void> finish();
    Result<void> commit();

private:
    explicit MeterTable(std::unique_ptr<OutputFile> file);
    Result<void> flush();

    std::unique_ptr<OutputFile> file_;
    std::string pending_;
};

} // namespace qor::cli
