// What the program remembers: the limiter's state and the window's size.
#pragma once

#include "hosts/shared/StateChunk.h"
#include "platform/draw/Draw.h"
#include "platform/files/Files.h"

#include <optional>
#include <string>

namespace qor::app {

/// Two files below the user's state directory, each written whole or not at all. Main thread.
class Storage {
public:
    /// "qor-limiter" below the state directory. Without a home directory nothing is kept.
    Storage();

    /// Gives the kept state to the unit. Nothing kept is a success; a damaged file is put aside and the error
    /// says so.
    Result<void> restore(host::UnitHost& host);
    /// Writes the state if it differs from what is kept.
    Result<void> keep(const host::UnitHost& host);

    /// In points; absent if none is kept or it makes no sense.
    std::optional<CGSize> windowSize() const;
    Result<void> keepWindowSize(const CGSize& size);

private:
    Result<void> write(const Data& bytes, const URL& file);

    std::optional<URL> folder_;
    Data kept_;
};

} // namespace qor::app
