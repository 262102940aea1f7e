#include "hosts/vst3/ControllerLink.h"

#include <cstring>
#include <utility>

namespace qor::vst3 {

namespace {

/// A message to the controller about one parameter, or none.
class Message {
public:
    explicit Message(const char* name, const Vst3Editor::Edit& edit = {}) : name_(name), edit_(edit) {}
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;

    void sendTo(v3_connection_point** controller) {
        // What the controller refuses (no host listens) it says itself.
        static_cast<void>(v3_cpp_obj(controller)->notify(controller, asInterface<v3_message>(message_)));
    }

private:
    using MessageFace = Face<v3_message_cpp, Message>;
    using AttributesFace = Face<v3_attribute_list_cpp, Message>;

    v3_result integer(const char* key, std::int64_t& value) const noexcept {
        if (std::strcmp(key, "__dpf_msg_target__") == 0) {
            value = 1; // from the view to the controller
        } else if (std::strcmp(key, "rindex") == 0) {
            value = static_cast<std::int64_t>(edit_.address); // without internal parameters before them
        } else if (std::strcmp(key, "started") == 0) {
            value = edit_.phase == host::EditPhase::begin ? 1 : 0;
        } else {
            return V3_INVALID_ARG;
        }
        return V3_OK;
    }
    v3_result real(const char* key, double& value) const noexcept {
        if (std::strcmp(key, "value") != 0) {
            return V3_INVALID_ARG;
        }
        value = static_cast<double>(edit_.value);
        return V3_OK;
    }

    // It lives on the stack: nobody keeps it.
    static v3_result V3_API noInterface(void* /*self*/, const v3_tuid /*iid*/, void** found) {
        *found = nullptr;
        return V3_NO_INTERFACE;
    }
    static std::uint32_t V3_API keep(void* /*self*/) { return 1; }

    static const v3_message_cpp kMessageTable;
    static const v3_attribute_list_cpp kAttributesTable;

    const char* name_;
    Vst3Editor::Edit edit_;
    MessageFace message_{&kMessageTable, this};
    AttributesFace attributes_{&kAttributesTable, this};
};

const v3_message_cpp Message::kMessageTable{
    {noInterface, keep, keep},
    {[](void* self) { return MessageFace::ownerOf(self).name_; }, [](void*, const char*) {},
     [](void* self) { return asInterface<v3_attribute_list>(MessageFace::ownerOf(self).attributes_); }}};

const v3_attribute_list_cpp Message::kAttributesTable{
    {noInterface, keep, keep},
    {[](void*, const char*, std::int64_t) -> v3_result { return V3_NOT_IMPLEMENTED; },
     [](void* self, const char* key, std::int64_t* value) {
         return AttributesFace::ownerOf(self).integer(key, *value);
     },
     [](void*, const char*, double) -> v3_result { return V3_NOT_IMPLEMENTED; },
     [](void* self, const char* key, double* value) {
         return AttributesFace::ownerOf(self).real(key, *value);
     },
     [](void*, const char*, const std::int16_t*) -> v3_result { return V3_NOT_IMPLEMENTED; },
     [](void*, const char*, std::int16_t*, std::uint32_t) -> v3_result { return V3_NOT_IMPLEMENTED; },
     [](void*, const char*, const void*, std::uint32_t) -> v3_result { return V3_NOT_IMPLEMENTED; },
     [](void*, const char*, const void**, std::uint32_t*) -> v3_result { return V3_NOT_IMPLEMENTED; }}};

} // namespace

void ControllerLink::opened() {
    if (controller_ != nullptr && !std::exchange(open_, true)) {
        Message("init").sendTo(controller_);
    }
}

void ControllerLink::closed() {
    if (std::exchange(open_, false) && controller_ != nullptr) {
        Message("close").sendTo(controller_);
    }
}

void ControllerLink::tell(const Vst3Editor::Edit& edit) {
    if (controller_ != nullptr && open_) {
        Message(edit.phase == host::EditPhase::value ? "parameter-set" : "parameter-edit", edit)
            .sendTo(controller_);
    }
}

} // namespace qor::vst3
