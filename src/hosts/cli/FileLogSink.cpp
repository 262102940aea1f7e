#include "hosts/cli/FileLogSink.h"

#include "hosts/cli/OutputFile.h"

#include <cerrno>

namespace qor::cli {

Result<std::unique_ptr<FileLogSink>> FileLogSink::create(const std::string& file) {
    std::FILE* opened = std::fopen(file.c_str(), "we");
    if (opened == nullptr) {
        return writeFailure(file, errno);
    }
    return std::unique_ptr<FileLogSink>(new FileLogSink(file, opened));
}

void FileLogSink::writeLine(std::string_view line) noexcept {
    const std::lock_guard lock(mutex_);
    const bool written = std::fwrite(line.data(), 1, line.size(), file_.get()) == line.size() &&
                         std::fputc('\n', file_.get()) != EOF;
    if (!written && failure_ == 0) {
        failure_ = errno;
    }
}

Result<void> FileLogSink::finish() {
    const std::lock_guard lock(mutex_);
    if (std::fflush(file_.get()) != 0 && failure_ == 0) {
        failure_ = errno;
    }
    if (failure_ != 0) {
        return writeFailure(name_, failure_);
    }
    return {};
}

} // namespace qor::cli
