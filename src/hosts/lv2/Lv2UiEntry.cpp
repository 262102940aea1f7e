// The entry symbol of the LV2 user interface.
#include "hosts/lv2/Lv2Editor.h"

#include <lv2/atom/atom.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

#include <cmath>
#include <cstring>

namespace {

using qor::lv2::Lv2Editor;

template <class Data>
Data* feature(const LV2_Feature* const* features, const char* uri) {
    for (; features != nullptr && *features != nullptr; ++features) {
        if (std::strcmp((*features)->URI, uri) == 0) {
            return static_cast<Data*>((*features)->data);
        }
    }
    return nullptr;
}

/// Pixels per point as the host's options say; 0 if they say nothing.
double scaleOf(const LV2_Feature* const* features) {
    const auto* map = feature<LV2_URID_Map>(features, LV2_URID__map);
    const auto* options = feature<const LV2_Options_Option>(features, LV2_OPTIONS__options);
    if (map == nullptr || options == nullptr) {
        return 0.0;
    }
    const LV2_URID scaleKey = map->map(map->handle, LV2_UI__scaleFactor);
    const LV2_URID floatType = map->map(map->handle, LV2_ATOM__Float);
    for (; options->key != 0 || options->value != nullptr; ++options) {
        if (options->key == scaleKey && options->type == floatType && options->size == sizeof(float) &&
            options->value != nullptr) {
            float scale = 0.0F;
            std::memcpy(&scale, options->value, sizeof scale);
            return std::isfinite(scale) && scale >= 0.25F && scale <= 8.0F ? static_cast<double>(scale) : 0.0;
        }
    }
    return 0.0;
}

LV2UI_Handle instantiate(const LV2UI_Descriptor* /*descriptor*/, const char* pluginUri,
                         const char* /*bundlePath*/, LV2UI_Write_Function write, LV2UI_Controller controller,
                         LV2UI_Widget* widget, const LV2_Feature* const* features) {
    if (std::strcmp(pluginUri, qor::lv2::kPluginUri) != 0 || write == nullptr || widget == nullptr) {
        return nullptr;
    }
    qor::lv2::Lv2EditorActions actions;
    actions.write = [write, controller](std::uint32_t port, float value) {
        write(controller, port, sizeof value, 0, &value);
    };
    if (const auto* touch = feature<const LV2UI_Touch>(features, LV2_UI__touch); touch != nullptr) {
        actions.touch = [touch](std::uint32_t port, bool grabbed) {
            touch->touch(touch->handle, port, grabbed);
        };
    }
    const auto parent = reinterpret_cast<std::uintptr_t>(feature<void>(features, LV2_UI__parent));
    auto opened = Lv2Editor::open(parent, scaleOf(features), std::move(actions));
    if (!opened) {
        platform::print("QOR Limiter's editor: " + opened.error().localizedDescription());
        return nullptr;
    }
    std::unique_ptr<Lv2Editor> editor = std::move(opened).value();
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface's widget is the window's number
    *widget = reinterpret_cast<LV2UI_Widget>(editor->window());
    if (const auto* resize = feature<const LV2UI_Resize>(features, LV2_UI__resize); resize != nullptr) {
        const platform::CGSize size = editor->size();
        resize->ui_resize(resize->handle, static_cast<int>(std::lround(size.width)),
                          static_cast<int>(std::lround(size.height)));
    }
    return editor.release();
}

void cleanup(LV2UI_Handle handle) {
    delete static_cast<Lv2Editor*>(handle);
}

void portEvent(LV2UI_Handle handle, std::uint32_t port, std::uint32_t size, std::uint32_t format,
               const void* buffer) {
    if (format == 0 && size == sizeof(float) && buffer != nullptr) {
        float value = 0.0F;
        std::memcpy(&value, buffer, sizeof value);
        static_cast<Lv2Editor*>(handle)->portIs(port, value);
    }
}

int idle(LV2UI_Handle handle) {
    return static_cast<Lv2Editor*>(handle)->idle() ? 0 : 1;
}

// As extension data the handle of the structure is the editor's own.
int resize(LV2UI_Feature_Handle handle, int width, int height) {
    if (width <= 0 || height <= 0) {
        return 1;
    }
    static_cast<Lv2Editor*>(handle)->setSize(width, height);
    return 0;
}

const void* extensionData(const char* uri) {
    static constexpr LV2UI_Idle_Interface kIdle{idle};
    static constexpr LV2UI_Resize kResize{nullptr, resize};
    if (std::strcmp(uri, LV2_UI__idleInterface) == 0) {
        return &kIdle;
    }
    return std::strcmp(uri, LV2_UI__resize) == 0 ? &kResize : nullptr;
}

constexpr LV2UI_Descriptor kDescriptor{qor::lv2::kUiUri, instantiate, cleanup, portEvent, extensionData};

} // namespace

LV2_SYMBOL_EXPORT const LV2UI_Descriptor* lv2ui_descriptor(std::uint32_t index) {
    return index == 0 ? &kDescriptor : nullptr;
}
