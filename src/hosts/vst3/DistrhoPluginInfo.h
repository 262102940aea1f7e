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
#define DISTRHO_PLUGIN_HAS_UI 0
#define DISTRHO_PLUGIN_WANT_STATE 1
#define DISTRHO_PLUGIN_WANT_FULL_STATE 1
// The framework's programs hang hosts when they are switched; presets come as the host's own.
#define DISTRHO_PLUGIN_WANT_PROGRAMS 0
#define DISTRHO_PLUGIN_VST3_CATEGORIES "Fx|Dynamics|Stereo"
