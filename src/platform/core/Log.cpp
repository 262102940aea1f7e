#include "platform/core/Log.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace platform {

namespace {

class StandardOutputSink final : public LogSink {
public:
    void writeLine(std::string_view line) noexcept override {
        const std::lock_guard lock(mutex_);
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }

private:
    std::mutex mutex_;
};

class DiscardingSink final : public LogSink {
public:
    void writeLine(std::string_view /*line*/) noexcept override {}
};

std::atomic<LogSink*> currentSink{nullptr};

} // namespace

LogSink& standardOutputSink() noexcept {
    static StandardOutputSink sink;
    return sink;
}

LogSink& discardingSink() noexcept {
    static DiscardingSink sink;
    return sink;
}

LogSink& setLogSink(LogSink& sink) noexcept {
    LogSink* before = currentSink.exchange(&sink, std::memory_order_acq_rel);
    return before == nullptr ? standardOutputSink() : *before;
}

LogSink& logSink() noexcept {
    LogSink* sink = currentSink.load(std::memory_order_acquire);
    return sink == nullptr ? standardOutputSink() : *sink;
}

void print(std::string_view line) noexcept {
    logSink().writeLine(line);
}

} // namespace platform
