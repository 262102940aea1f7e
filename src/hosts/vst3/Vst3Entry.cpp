// The entry that hosts look for: the framework's factory, whose components get streams that do all they are
// asked for, and all blocks.
#include "hosts/vst3/WholeStream.h"

#include "travesty/audio_processor.h"
#include "travesty/component.h"
#include "travesty/factory.h"

// In Framework.cpp.
extern "C" const void* frameworkPluginFactory();
v3_result V3_API frameworkProcess(void* self, v3_process_data* data);

namespace {

using qor::vst3::WholeStream;

// The framework's functions, the same ones in all its objects.
decltype(v3_plugin_factory::create_instance) frameworkCreateInstance = nullptr;
decltype(v3_funknown::query_interface) frameworkQueryInterface = nullptr;
decltype(v3_component::set_state) frameworkSetState = nullptr;
decltype(v3_component::get_state) frameworkGetState = nullptr;

v3_result V3_API setState(void* self, v3_bstream** stream) {
    if (stream == nullptr) {
        return V3_INVALID_ARG;
    }
    return qor::vst3::guarded([&] { return frameworkSetState(self, WholeStream(stream).get()); });
}

v3_result V3_API getState(void* self, v3_bstream** stream) {
    if (stream == nullptr) {
        return V3_INVALID_ARG;
    }
    return qor::vst3::guarded([&] { return frameworkGetState(self, WholeStream(stream).get()); });
}

v3_result V3_API queryInterface(void* self, const v3_tuid iid, void** found) {
    const v3_result result = frameworkQueryInterface(self, iid, found);
    if (result == V3_OK && v3_tuid_match(iid, v3_audio_processor_iid)) {
        (*static_cast<v3_audio_processor_cpp**>(*found))->proc.process = frameworkProcess;
    }
    return result;
}

// Each object has a table of its own, which is its to change. All that the factory makes are components.
v3_result V3_API createInstance(void* self, const v3_tuid classId, const v3_tuid iid, void** instance) {
    const v3_result result = frameworkCreateInstance(self, classId, iid, instance);
    if (result == V3_OK) {
        v3_component_cpp& made = **static_cast<v3_component_cpp**>(*instance);
        frameworkQueryInterface = made.query_interface;
        frameworkSetState = made.comp.set_state;
        frameworkGetState = made.comp.get_state;
        made.query_interface = queryInterface;
        made.comp.set_state = setState;
        made.comp.get_state = getState;
    }
    return result;
}

} // namespace

extern "C" __attribute__((visibility("default"))) const void* GetPluginFactory() {
    const void* const made = frameworkPluginFactory();
    auto& factory = **static_cast<v3_plugin_factory_cpp* const*>(made);
    frameworkCreateInstance = factory.v1.create_instance;
    factory.v1.create_instance = createInstance;
    return made;
}
