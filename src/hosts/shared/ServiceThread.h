// Keeps run loops moving that nobody else pumps.
#pragma once

#include <memory>

namespace qor::host {

/// Something that wants a regular call off the render thread.
class Serviced {
public:
    virtual ~Serviced() = default;
    /// Service thread, about fifty times a second.
    virtual void service() = 0;
};

/// One thread per process that calls whoever is registered. It starts with the first `ServiceThread` handle
/// and ends with the last, so that a plug-in's code can be unloaded.
class ServiceThread {
public:
    /// Shares the running thread or starts one.
    static std::shared_ptr<ServiceThread> acquire();

    virtual ~ServiceThread() = default;
    virtual void add(Serviced& serviced) = 0;
    /// Returns when no call to it is in progress. Not from within `service`.
    virtual void remove(Serviced& serviced) = 0;
};

} // namespace qor::host
