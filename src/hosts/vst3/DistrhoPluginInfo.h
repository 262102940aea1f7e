// What the packaged plug-in framework wants to know at compile time; the name of this file is the
// framework's.
#pragma once

#define DISTRHO_PLUGIN_BRAND "QOR"
#define DISTRHO_PLUGIN_NAME "QOR Limiter"
#define DISTRHO_PLUGIN_URI "urn:qor:limiter"
#define DISTRHO_PLUGIN_CLAP_ID "urn.qor.limiter"

#define DISTRHO_PLUGIN_NUM_INPUTS 2
#define DISTRHO_PLUGIN_NUM_OUTPUTS 2
#define DISTRHO_PLUGIN_IS_RT_SAFE 1
// The editor is ours (Vst3View): the framework gives it a controller to speak with and the instance to work
// on. The instance and its controller are one object then, and hosts are told that they can't be kept apart.
#define DISTRHO_PLUGIN_HAS_UI 1
#define DISTRHO_PLUGIN_HAS_EMBED_UI 1
#define DISTRHO_PLUGIN_HAS_EXTERNAL_UI 1
#define DISTRHO_PLUGIN_WANT_DIRECT_ACCESS 1
#define DISTRHO_PLUGIN_WANT_STATE 1
#define DISTRHO_PLUGIN_WANT_FULL_STATE 1
// The framework's programs hang hosts when they are switched; presets come as the host's own.
#define DISTRHO_PLUGIN_WANT_PROGRAMS 0
#define DISTRHO_PLUGIN_VST3_CATEGORIES "Fx|Dynamics|Stereo"
