// The framework's VST3 wrapper, compiled as it is packaged, and what it leaves out.
#include "hosts/vst3/LocaleFreeNumbers.h"
#include "hosts/vst3/Vst3Plugin.h"

#define GetPluginFactory frameworkPluginFactory // Vst3Entry.cpp has the one that hosts find
#include "DistrhoPluginMain.cpp"

static_assert(DISTRHO_PLUGIN_HAS_UI, "the framework's checks have switched the editor off");
static_assert(DISTRHO_NAMESPACE::kVst3InternalParameterCount == 0, "a parameter's id is its address");

// A host brings changes of parameters in blocks without frames, too, of which the framework reads nothing.
v3_result V3_API frameworkProcess(void* self, v3_process_data* data);
v3_result V3_API frameworkProcess(void* self, v3_process_data* data) {
    using namespace DISTRHO_NAMESPACE;
    const v3_result result = dpf_audio_processor::process(self, data);
    PluginVst3* const plugin = (*static_cast<dpf_audio_processor**>(self))->vst3;
    v3_param_changes** const changes = data->input_params;
    if (result != V3_OK || data->nframes > 0 || changes == nullptr || plugin == nullptr) {
        return result;
    }
    for (int32_t i = 0, count = v3_cpp_obj(changes)->get_param_count(changes); i < count; ++i) {
        v3_param_value_queue** const queue = v3_cpp_obj(changes)->get_param_data(changes, i);
        if (queue == nullptr) {
            continue;
        }
        const v3_param_id id = v3_cpp_obj(queue)->get_param_id(queue);
        const int32_t points = v3_cpp_obj(queue)->get_point_count(queue);
        int32_t offset = 0;
        double value = 0.0;
        if (id < qor::vst3::Vst3Plugin::kControlCount && points > 0 &&
            v3_cpp_obj(queue)->get_point(queue, points - 1, &offset, &value) == V3_OK && value >= 0.0 &&
            value <= 1.0) {
            plugin->_setNormalizedPluginParameterValue(id, value);
        }
    }
    static_cast<qor::vst3::Vst3Plugin*>(static_cast<Plugin*>(plugin->getInstancePointer()))->applyChanges();
    return result;
}
