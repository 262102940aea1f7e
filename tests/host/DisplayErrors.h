// The errors that the display's server reports to the plug-in, which keeps them to itself.
#pragma once

namespace test {

/// Those since the program's start, on every connection with a handler for errors off the wire.
int displayErrors() noexcept;

} // namespace test
