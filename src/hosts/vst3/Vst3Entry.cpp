// The entry that hosts look for: the framework's factory, whose components get streams that do all they are
// asked for.
#include "hosts/vst3/WholeStream.h"

#include "travesty/component.h"
#include "travesty/factory.h"

extern "C" const void* frameworkPluginFactory(); // named so in Framework.cpp

namespace {

using qor::vst3::WholeStream;

// The framework's functions, the same ones in all its objects.
decltype(v3_plugin_factory::create_instance) frameworkCreateInstance = nullptr;
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

// Each object has a table of its own, which is its to change. All that the factory makes are components.
v3_result V3_API createInstance(void* self, const v3_tuid classId, const v3_tuid iid, void** instance) {
    const v3_result result = frameworkCreateInstance(self, classId, iid, instance);
    if (result == V3_OK) {
        v3_component& component = (*static_cast<v3_component_cpp**>(*instance))->comp;
        frameworkSetState = component.set_state;
        frameworkGetState = component.get_state;
        component.set_state = setState;
        component.get_state = getState;
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
