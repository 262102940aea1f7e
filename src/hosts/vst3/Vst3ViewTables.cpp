// The functions of the view's interfaces: what a host hands over is looked at here, and no exception leaves.
#include "hosts/vst3/Vst3View.h"

#include <cmath>
#include <cstring>

namespace qor::vst3 {

namespace {

template <class Table>
Vst3View& viewOf(void* self) noexcept {
    return Face<Table, Vst3View>::ownerOf(self);
}

/// The functions that every interface begins with.
template <class Table>
constexpr v3_funknown counted() {
    return {[](void* self, const v3_tuid iid, void** found) {
                return guarded([&] { return viewOf<Table>(self).queryInterface(iid, found); });
            },
            [](void* self) { return viewOf<Table>(self).retain(); },
            [](void* self) { return viewOf<Table>(self).release(); }};
}

Vst3View& view(void* self) noexcept {
    return viewOf<v3_plugin_view_cpp>(self);
}

bool isX11(const char* platform) noexcept {
    return platform != nullptr && std::strcmp(platform, V3_VIEW_PLATFORM_TYPE_X11) == 0;
}

v3_result V3_API isPlatformSupported(void* /*self*/, const char* platform) {
    return isX11(platform) ? V3_TRUE : V3_FALSE;
}

v3_result V3_API attached(void* self, void* parent, const char* platform) {
    return guarded([&]() -> v3_result {
        return isX11(platform) && parent != nullptr ? view(self).attach(parent) : V3_INVALID_ARG;
    });
}

v3_result V3_API removed(void* self) {
    return guarded([&] { return view(self).remove(); });
}

// The wheel and the keys come from the display, in the editor's own window; the host's stay the host's.
v3_result V3_API onWheel(void* /*self*/, float /*distance*/) {
    return V3_FALSE;
}

v3_result V3_API onKey(void* /*self*/, std::int16_t /*character*/, std::int16_t /*code*/,
                       std::int16_t /*modifiers*/) {
    return V3_FALSE;
}

v3_result V3_API onFocus(void* /*self*/, v3_bool /*hasIt*/) {
    return V3_OK;
}

v3_result V3_API getSize(void* self, v3_view_rect* rect) {
    return guarded(
        [&]() -> v3_result { return rect != nullptr ? view(self).getSize(*rect) : V3_INVALID_ARG; });
}

v3_result V3_API onSize(void* self, v3_view_rect* rect) {
    return guarded([&]() -> v3_result {
        return rect != nullptr && rect->right > rect->left && rect->bottom > rect->top
                   ? view(self).onSize(*rect)
                   : V3_INVALID_ARG;
    });
}

v3_result V3_API setFrame(void* self, v3_plugin_frame** frame) {
    return guarded([&] { return view(self).setFrame(frame); });
}

v3_result V3_API canResize(void* /*self*/) {
    return V3_TRUE;
}

v3_result V3_API checkSizeConstraint(void* self, v3_view_rect* rect) {
    return guarded(
        [&]() -> v3_result { return rect != nullptr ? view(self).constrain(*rect) : V3_INVALID_ARG; });
}

v3_result V3_API setContentScaleFactor(void* self, float factor) {
    return guarded([&]() -> v3_result {
        return factor >= 0.25F && factor <= 8.0F
                   ? viewOf<v3_plugin_view_content_scale_cpp>(self).setScale(static_cast<double>(factor))
                   : V3_INVALID_ARG;
    });
}

void V3_API onTimer(void* self) {
    guarded([&]() -> v3_result {
        viewOf<v3_timer_handler_cpp>(self).tick();
        return V3_OK;
    });
}

v3_result V3_API connect(void* self, v3_connection_point** other) {
    return guarded([&] { return viewOf<v3_connection_point_cpp>(self).connect(other); });
}

v3_result V3_API disconnect(void* self, v3_connection_point** /*other*/) {
    return guarded([&] { return viewOf<v3_connection_point_cpp>(self).disconnect(); });
}

v3_result V3_API notify(void* /*self*/, v3_message** /*message*/) {
    return V3_OK; // the editor sees the instance itself
}

// The controller holds this end without giving it back when it goes first, so it doesn't count.
std::uint32_t V3_API uncounted(void* /*self*/) {
    return 1;
}

} // namespace

const v3_plugin_view_cpp Vst3ViewTables::kView{counted<v3_plugin_view_cpp>(),
                                               {isPlatformSupported, attached, removed, onWheel, onKey, onKey,
                                                getSize, onSize, onFocus, setFrame, canResize,
                                                checkSizeConstraint}};

const v3_plugin_view_content_scale_cpp Vst3ViewTables::kScaling{counted<v3_plugin_view_content_scale_cpp>(),
                                                                {setContentScaleFactor}};

const v3_timer_handler_cpp Vst3ViewTables::kTimer{counted<v3_timer_handler_cpp>(), {onTimer}};

const v3_connection_point_cpp Vst3ViewTables::kPoint{
    {counted<v3_connection_point_cpp>().query_interface, uncounted, uncounted},
    {connect, disconnect, notify}};

} // namespace qor::vst3
