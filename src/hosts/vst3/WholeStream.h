// Streams as the framework takes them for granted: what is asked for is read and written in one go.
#pragma once

#include "hosts/vst3/Vst3Interface.h"

#include "travesty/bstream.h"

#include <cstdint>

namespace qor::vst3 {

struct StreamTable : v3_funknown {
    v3_bstream stream;
};

/// Stands before a host's stream for the length of a call and reads and writes on until all is done, the
/// stream has ended or fails. The framework writes the beginning of a state again when a stream takes a part
/// of it only, and takes what lay in its buffer for the end of a text that was read in parts.
class WholeStream {
public:
    explicit WholeStream(v3_bstream** stream) noexcept : stream_(stream) {}
    WholeStream(const WholeStream&) = delete;
    WholeStream& operator=(const WholeStream&) = delete;

    v3_bstream** get() noexcept { return asInterface<v3_bstream>(face_); }

    v3_result read(char* bytes, std::int32_t count, std::int32_t& done) noexcept;
    v3_result write(char* bytes, std::int32_t count, std::int32_t& done) noexcept;
    v3_bstream** host() const noexcept { return stream_; }

private:
    static const StreamTable kTable;

    v3_bstream** stream_;
    Face<StreamTable, WholeStream> face_{&kTable, this};
};

} // namespace qor::vst3
