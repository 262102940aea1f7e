// The entry symbol of the LV2 plug-in.
#include "hosts/lv2/Lv2Plugin.h"

#include <lv2/core/lv2.h>

namespace {

using qor::lv2::Lv2Plugin;

Lv2Plugin* pluginOf(LV2_Handle instance) {
    return static_cast<Lv2Plugin*>(instance);
}

LV2_Handle instantiate(const LV2_Descriptor* /*descriptor*/, double sampleRate, const char* /*bundlePath*/,
                       const LV2_Feature* const* /*features*/) {
    return Lv2Plugin::create(sampleRate).release();
}

void connectPort(LV2_Handle instance, std::uint32_t port, void* data) {
    pluginOf(instance)->connect(port, data);
}

void activate(LV2_Handle instance) {
    pluginOf(instance)->activate();
}

void run(LV2_Handle instance, std::uint32_t frames) {
    pluginOf(instance)->run(frames);
}

void deactivate(LV2_Handle instance) {
    pluginOf(instance)->deactivate();
}

void cleanup(LV2_Handle instance) {
    delete pluginOf(instance);
}

const void* extensionData(const char* /*uri*/) {
    return nullptr;
}

constexpr LV2_Descriptor kDescriptor{qor::lv2::kPluginUri, instantiate, connectPort,  activate, run,
                                     deactivate,           cleanup,     extensionData};

} // namespace

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(std::uint32_t index) {
    return index == 0 ? &kDescriptor : nullptr;
}
