#include "hosts/clap/ClapGui.h"

#include "hosts/clap/ClapEditor.h"
#include "hosts/clap/ClapGuard.h"

#include <utility>

namespace qor::clap {

namespace {

/// Calls an operation of the editor on the main thread; false without an instance that can have one.
template <class Call>
bool withEditor(const clap_plugin_t* plugin, const char* name, Call&& call) noexcept {
    checkThread(plugin, Promised::mainThread, name);
    return guarded(false, [&] {
        ClapEditor* const editor = isReady(plugin) ? instanceOf(plugin).editor() : nullptr;
        return editor != nullptr && std::forward<Call>(call)(*editor);
    });
}

/// The same for what only a created editor can do.
template <class Call>
bool withCreated(const clap_plugin_t* plugin, const char* name, Call&& call) noexcept {
    return withEditor(plugin, name, [&](ClapEditor& editor) { return editor.isCreated() && call(editor); });
}

bool isX11(const clap_window_t* window) noexcept {
    return window != nullptr && ClapEditor::isSupported(window->api, false);
}

CGSize sizeOf(std::uint32_t width, std::uint32_t height) {
    return {.width = static_cast<double>(width), .height = static_cast<double>(height)};
}

bool give(const CGSize& size, std::uint32_t* width, std::uint32_t* height) {
    *width = static_cast<std::uint32_t>(size.width);
    *height = static_cast<std::uint32_t>(size.height);
    return true;
}

bool isApiSupported(const clap_plugin_t* plugin, const char* api, bool isFloating) noexcept {
    return withEditor(plugin, "gui.is_api_supported",
                      [&](ClapEditor&) { return ClapEditor::isSupported(api, isFloating); });
}

bool preferredApi(const clap_plugin_t* plugin, const char** api, bool* isFloating) noexcept {
    return withEditor(plugin, "gui.get_preferred_api", [&](ClapEditor&) {
        if (api == nullptr || isFloating == nullptr) {
            return false;
        }
        *api = CLAP_WINDOW_API_X11;
        *isFloating = false;
        return true;
    });
}

bool create(const clap_plugin_t* plugin, const char* api, bool isFloating) noexcept {
    return withEditor(plugin, "gui.create", [&](ClapEditor& editor) {
        return ClapEditor::isSupported(api, isFloating) && editor.create(isFloating);
    });
}

void destroy(const clap_plugin_t* plugin) noexcept {
    withEditor(plugin, "gui.destroy", [](ClapEditor& editor) {
        editor.destroy();
        return true;
    });
}

bool setScale(const clap_plugin_t* plugin, double scale) noexcept {
    return withEditor(plugin, "gui.set_scale", [&](ClapEditor& editor) { return editor.setScale(scale); });
}

bool getSize(const clap_plugin_t* plugin, std::uint32_t* width, std::uint32_t* height) noexcept {
    return withCreated(plugin, "gui.get_size", [&](ClapEditor& editor) {
        return width != nullptr && height != nullptr && give(editor.size(), width, height);
    });
}

bool canResize(const clap_plugin_t* /*plugin*/) noexcept {
    return true;
}

bool resizeHints(const clap_plugin_t* /*plugin*/, clap_gui_resize_hints_t* hints) noexcept {
    if (hints == nullptr) {
        return false;
    }
    constexpr CGSize kPreferred = host::EditorHost::kPreferredSize;
    hints->can_resize_horizontally = hints->can_resize_vertically = true;
    hints->preserve_aspect_ratio = true;
    hints->aspect_ratio_width = static_cast<std::uint32_t>(kPreferred.width);
    hints->aspect_ratio_height = static_cast<std::uint32_t>(kPreferred.height);
    return true;
}

bool adjustSize(const clap_plugin_t* plugin, std::uint32_t* width, std::uint32_t* height) noexcept {
    return withCreated(plugin, "gui.adjust_size", [&](ClapEditor& editor) {
        return width != nullptr && height != nullptr &&
               give(editor.adjusted(sizeOf(*width, *height)), width, height);
    });
}

bool setSize(const clap_plugin_t* plugin, std::uint32_t width, std::uint32_t height) noexcept {
    return withCreated(plugin, "gui.set_size", [&](ClapEditor& editor) {
        if (width == 0 || height == 0) {
            return false;
        }
        editor.setSize(sizeOf(width, height));
        return true;
    });
}

bool setParent(const clap_plugin_t* plugin, const clap_window_t* window) noexcept {
    return withCreated(plugin, "gui.set_parent",
                       [&](ClapEditor& editor) { return isX11(window) && editor.setParent(window->x11); });
}

bool setTransient(const clap_plugin_t* plugin, const clap_window_t* window) noexcept {
    return withCreated(plugin, "gui.set_transient",
                       [&](ClapEditor& editor) { return isX11(window) && editor.setTransient(window->x11); });
}

void suggestTitle(const clap_plugin_t* plugin, const char* title) noexcept {
    withCreated(plugin, "gui.suggest_title", [&](ClapEditor& editor) {
        if (title != nullptr) {
            editor.suggestTitle(title);
        }
        return title != nullptr;
    });
}

bool show(const clap_plugin_t* plugin) noexcept {
    return withCreated(plugin, "gui.show", [](ClapEditor& editor) { return editor.show(); });
}

bool hide(const clap_plugin_t* plugin) noexcept {
    return withCreated(plugin, "gui.hide", [](ClapEditor& editor) { return editor.hide(); });
}

constexpr clap_plugin_gui_t kGui{isApiSupported, preferredApi, create,       destroy,    setScale,
                                 getSize,        canResize,    resizeHints,  adjustSize, setSize,
                                 setParent,      setTransient, suggestTitle, show,       hide};

} // namespace

const void* guiTable() noexcept {
    return &kGui;
}

} // namespace qor::clap
