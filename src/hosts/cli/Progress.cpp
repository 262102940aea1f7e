#include "hosts/cli/Progress.h"

#include <algorithm>
#include <unistd.h>

namespace qor::cli {

namespace {

constexpr int kWidth = 40; // characters between the brackets

} // namespace

Progress::Progress(std::FILE* stream, std::int64_t total)
    : stream_(total > 0 && ::isatty(::fileno(stream)) == 1 ? stream : nullptr), total_(total) {}

Progress::~Progress() {
    if (stream_ != nullptr && shown_ >= 0) {
        std::fputs("\r\x1b[K", stream_);
        std::fflush(stream_);
    }
}

void Progress::update(std::int64_t done) {
    if (stream_ == nullptr) {
        return;
    }
    const double share = static_cast<double>(done) / static_cast<double>(total_);
    const int percent = std::clamp(static_cast<int>(100.0 * share), 0, 100);
    if (percent == shown_) {
        return;
    }
    shown_ = percent;
    std::fputs(("\r" + line(percent)).c_str(), stream_);
    std::fflush(stream_);
}

std::string Progress::line(int percent) {
    const int filled = percent * kWidth / 100;
    const std::string number = std::to_string(percent);
    return "[" + std::string(static_cast<std::size_t>(filled), '#') +
           std::string(static_cast<std::size_t>(kWidth - filled), '.') + "] " +
           std::string(3 - number.size(), ' ') + number + " %";
}

} // namespace qor::cli
