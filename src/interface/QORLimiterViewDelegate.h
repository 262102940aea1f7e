// Who is told of a value that the surface has changed.
#pragma once

#include <cstdint>

namespace qor {

/// Main thread.
class QORLimiterViewDelegate {
public:
    QORLimiterViewDelegate() = default;
    QORLimiterViewDelegate(const QORLimiterViewDelegate&) = delete;
    QORLimiterViewDelegate& operator=(const QORLimiterViewDelegate&) = delete;
    virtual ~QORLimiterViewDelegate() = default;

    virtual void onQORLimiterViewParameter(std::int64_t address, float value) = 0;
    /// The surface never calls it.
    virtual void onQORLimiterViewOption(std::int64_t address, float value) = 0;
};

} // namespace qor
