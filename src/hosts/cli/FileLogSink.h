// The system's log lines into a file.
#pragma once

#include "hosts/cli/Failure.h"

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>

namespace qor::cli {

/// Writes each line with a line end, in order, from any thread.
class FileLogSink final : public LogSink {
public:
    /// Empties the file.
    static Result<std::unique_ptr<FileLogSink>> create(const std::string& file);

    void writeLine(std::string_view line) noexcept override;
    /// Brings everything to the file and says whether all of it arrived.
    Result<void> finish();

private:
    struct Close {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };
    FileLogSink(std::string name, std::FILE* file) : name_(std::move(name)), file_(file) {}

    std::string name_;
    std::mutex mutex_;
    std::unique_ptr<std::FILE, Close> file_;
    int failure_ = 0; // the first errno value
};

/// Makes a sink the process's log for the scope's length.
class LogSinkScope {
public:
    explicit LogSinkScope(LogSink& sink) noexcept : before_(setLogSink(sink)) {}
    ~LogSinkScope() { setLogSink(before_); }
    LogSinkScope(const LogSinkScope&) = delete;
    LogSinkScope& operator=(const LogSinkScope&) = delete;

private:
    LogSink& before_;
};

} // namespace qor::cli
