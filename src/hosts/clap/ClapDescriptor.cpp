#include "hosts/clap/ClapDescriptor.h"

namespace qor::clap {

const clap_plugin_descriptor_t& descriptor() noexcept {
    static const char* features[] = {CLAP_PLUGIN_FEATURE_AUDIO_EFFECT, CLAP_PLUGIN_FEATURE_LIMITER,
                                     CLAP_PLUGIN_FEATURE_MASTERING, CLAP_PLUGIN_FEATURE_STEREO, nullptr};
    static const clap_plugin_descriptor_t kDescriptor{
        CLAP_VERSION,
        kPluginId,
        "QOR Limiter",
        QOR_VENDOR,
        QOR_URL,
        QOR_MANUAL_URL,
        QOR_SUPPORT_URL,
        QOR_VERSION,
        "Zero-latency stereo peak limiter with two gain laws, mid/side modes and a filtered detector",
        features};
    return kDescriptor;
}

} // namespace qor::clap
