// Log sinks that keep what is written, for comparison line by line.
#pragma once

#include "platform/core/Log.h"

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace test {

class CapturingSink : public platform::LogSink {
public:
    void writeLine(std::string_view line) noexcept override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(line);
    }
    std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }
    void clear() {
        const std::lock_guard lock(mutex_);
        lines_.clear();
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

/// Captures the process's log for the scope's length.
class CapturedLog {
public:
    CapturedLog() : before_(platform::setLogSink(sink_)) {}
    ~CapturedLog() { platform::setLogSink(before_); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    std::vector<std::string> lines() const { return sink_.lines(); }
    void clear() { sink_.clear(); }

private:
    CapturingSink sink_;
    platform::LogSink& before_;
};

} // namespace test
