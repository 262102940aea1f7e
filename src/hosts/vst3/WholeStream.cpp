#include "hosts/vst3/WholeStream.h"

namespace qor::vst3 {

namespace {

using StreamFace = Face<StreamTable, WholeStream>;
using Transfer = v3_result (*)(void*, void*, std::int32_t, std::int32_t*);

v3_result transferAll(v3_bstream** stream, Transfer transfer, char* bytes, std::int32_t count,
                      std::int32_t& done) noexcept {
    done = 0;
    while (done < count) {
        std::int32_t now = 0;
        const v3_result result = transfer(stream, bytes + done, count - done, &now);
        if (now <= 0 || now > count - done) {
            return done > 0 ? V3_OK : result;
        }
        done += now;
        if (result != V3_OK) {
            return result;
        }
    }
    return V3_OK;
}

v3_bstream** hostOf(void* self) noexcept {
    return StreamFace::ownerOf(self).host();
}

} // namespace

v3_result WholeStream::read(char* bytes, std::int32_t count, std::int32_t& done) noexcept {
    return transferAll(stream_, v3_cpp_obj(stream_)->read, bytes, count, done);
}

v3_result WholeStream::write(char* bytes, std::int32_t count, std::int32_t& done) noexcept {
    const v3_result result = transferAll(stream_, v3_cpp_obj(stream_)->write, bytes, count, done);
    return result == V3_OK && done < count ? V3_INTERNAL_ERR : result;
}

const StreamTable WholeStream::kTable{
    {[](void*, const v3_tuid, void** found) -> v3_result {
         *found = nullptr;
         return V3_NO_INTERFACE;
     },
     [](void*) -> std::uint32_t { return 1; }, [](void*) -> std::uint32_t { return 1; }}, // on the stack
    {[](void* self, void* bytes, std::int32_t count, std::int32_t* done) {
         std::int32_t read = 0;
         const v3_result result = StreamFace::ownerOf(self).read(static_cast<char*>(bytes), count, read);
         if (done != nullptr) {
             *done = read;
         }
         return result;
     },
     [](void* self, void* bytes, std::int32_t count, std::int32_t* done) {
         std::int32_t written = 0;
         const v3_result result = StreamFace::ownerOf(self).write(static_cast<char*>(bytes), count, written);
         if (done != nullptr) {
             *done = written;
         }
         return result;
     },
     [](void* self, std::int64_t position, std::int32_t mode, std::int64_t* result) {
         v3_bstream** const host = hostOf(self);
         return v3_cpp_obj(host)->seek(host, position, mode, result);
     },
     [](void* self, std::int64_t* position) {
         v3_bstream** const host = hostOf(self);
         return v3_cpp_obj(host)->tell(host, position);
     }}};

} // namespace qor::vst3
