// Asks the program to end when the system or the user says so.
#pragma once

#include "platform/core/Core.h"
#include "platform/files/FileDescriptor.h"

namespace qor::app {

/// While it lives, SIGTERM, SIGINT and SIGHUP make a descriptor readable; a second one ends the process at
/// once. Main thread, one at a time.
class StopSignal {
public:
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    int descriptor() const noexcept { return reader_.get(); }
    bool came() const noexcept;

private:
    struct Ends {
        int reader = -1;
        int writer = -1;
    };
    static Ends openPipe() noexcept;
    explicit StopSignal(const Ends& ends);

    FileDescriptor reader_;
    FileDescriptor writer_;
};

} // namespace qor::app
