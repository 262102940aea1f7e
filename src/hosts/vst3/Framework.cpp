// The framework's VST3 wrapper, compiled as it is packaged.
#include "hosts/vst3/LocaleFreeNumbers.h"

#define GetPluginFactory frameworkPluginFactory // Vst3Entry.cpp has the one that hosts find
#include "DistrhoPluginMain.cpp"

static_assert(DISTRHO_PLUGIN_HAS_UI, "the framework's checks have switched the editor off");
static_assert(DISTRHO_NAMESPACE::kVst3InternalParameterCount == 0, "a parameter's id is its address");
