// A progress bar on standard error.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace qor::cli {

/// Draws one line that it keeps rewriting, if `stream` is a terminal, otherwise nothing. Cleared at the end.
class Progress {
public:
    /// `total` in the unit of `update`; with 0 or less nothing is drawn, as the end is not known.
    Progress(std::FILE* stream, std::int64_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Redraws when the whole percent has changed.
    void update(std::int64_t done);

    /// The line for a percentage from 0 to 100: "[#####.....]  50 %".
    static std::string line(int percent);

private:
    std::FILE* stream_; // null when nothing is to be drawn
    std::int64_t total_;
    int shown_ = -1; // percent
};

} // namespace qor::cli
