// The log: plain lines, without levels, to one sink per process.
#pragma once

#include <string_view>

namespace platform {

/// Where log lines go. `writeLine` may be called from any thread; lines arrive whole and are never mixed.
class LogSink {
public:
    LogSink() = default;
    LogSink(const LogSink&) = delete;
    LogSink& operator=(const LogSink&) = delete;
    virtual ~LogSink() = default;
    /// One line without its line end. A text may hold line breaks of its own.
    virtual void writeLine(std::string_view line) noexcept = 0;
};

/// Writes each line to standard output at once and flushes; the sink that a process starts with.
LogSink& standardOutputSink() noexcept;
/// Drops every line.
LogSink& discardingSink() noexcept;

/// Replaces the process's sink and returns the one before. The sink is not owned and must outlive its use.
LogSink& setLogSink(LogSink& sink) noexcept;
LogSink& logSink() noexcept;

/// Writes one line to the log. Any thread; as quick as the sink.
void print(std::string_view line) noexcept;

} // namespace platform
