#include "hosts/cli/MeterTable.h"

#include <utility>

namespace qor::cli {

namespace {

constexpr std::size_t kPendingLength = 65536; // bytes

} // namespace

Result<std::unique_ptr<MeterTable>> MeterTable::create(const std::string& file) {
    Result<std::unique_ptr<OutputFile>> target = OutputFile::create(file);
    if (!target) {
        return target.error();
    }
    return std::unique_ptr<MeterTable>(new MeterTable(std::move(target).value()));
}

MeterTable::MeterTable(std::unique_ptr<OutputFile> file)
    : file_(std::move(file)), pending_("sampletime,dynamics1,dynamics2,peak1,peak2\n") {}

Result<void> MeterTable::add(std::int64_t sampleTime, const MeterValues& values) {
    pending_ += text(sampleTime);
    for (const float value : {values.dynamics1, values.dynamics2, values.peak1, values.peak2}) {
        pending_ += ',';
        pending_ += text(value);
    }
    pending_ += '\n';
    return pending_.size() < kPendingLength ? Result<void>() : flush();
}

Result<void> MeterTable::flush() {
    Result<void> written = file_->write(pending_);
    pending_.clear();
    return written;
}

Result<void> MeterTable::finish() {
    if (Result<void> written = flush(); !written) {
        return written;
    }
    return file_->sync();
}

Result<void> MeterTable::commit() {
    if (Result<void> finished = finish(); !finished) {
        return finished;
    }
    return file_->commit();
}

} // namespace qor::cli
