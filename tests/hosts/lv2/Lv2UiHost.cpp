#include "Lv2UiHost.h"

#include <dlfcn.h>
#include <lv2/atom/atom.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>

#include <array>
#include <chrono>
#include <string_view>
#include <thread>

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace test {

namespace {

enum Urid : LV2_URID { kScaleKey = 1, kFloat = 2, kOther = 3 };

} // namespace

const LV2UI_Descriptor* uiDescriptor() {
    static void* object = dlopen(QOR_LV2_UI_OBJECT, RTLD_NOW | RTLD_LOCAL);
    static const auto entry = reinterpret_cast<LV2UI_DescriptorFunction>(
        object == nullptr ? nullptr : dlsym(object, "lv2ui_descriptor"));
    return entry == nullptr ? nullptr : entry(0);
}

bool UiHost::open(Window parent, float scale) {
    const LV2UI_Write_Function write = [](LV2UI_Controller self, std::uint32_t index, std::uint32_t size,
                                          std::uint32_t format, const void* value) {
        EXPECT_EQ(size, sizeof(float));
        EXPECT_EQ(format, 0U);
        static_cast<UiHost*>(self)->written.emplace_back(index, *static_cast<const float*>(value));
    };
    touch_ = {this, [](LV2UI_Feature_Handle self, std::uint32_t index, bool grabbed) {
                  static_cast<UiHost*>(self)->touched.emplace_back(index, grabbed);
              }};
    resize_ = {this, [](LV2UI_Feature_Handle self, int width, int height) {
                   static_cast<UiHost*>(self)->asked = {width, height};
                   return 0;
               }};
    const LV2_Feature touchFeature{LV2_UI__touch, &touch_};
    const LV2_Feature resizeFeature{LV2_UI__resize, &resize_};
    // A window's number goes as a pointer. NOLINTNEXTLINE(performance-no-int-to-ptr)
    const LV2_Feature parentFeature{LV2_UI__parent, reinterpret_cast<void*>(parent)};
    LV2_URID_Map map{
        nullptr, [](LV2_URID_Map_Handle /*self*/, const char* uri) -> LV2_URID {
            const std::string_view text(uri);
            return text == LV2_UI__scaleFactor ? kScaleKey : text == LV2_ATOM__Float ? kFloat : kOther;
        }};
    const std::array<LV2_Options_Option, 2> options{
        {{LV2_OPTIONS_INSTANCE, 0, kScaleKey, sizeof scale, kFloat, &scale}, {}}};
    const LV2_Feature mapFeature{LV2_URID__map, &map};
    const LV2_Feature optionsFeature{LV2_OPTIONS__options, const_cast<LV2_Options_Option*>(options.data())};
    std::vector<const LV2_Feature*> features{&touchFeature, &resizeFeature};
    if (parent != 0) {
        features.push_back(&parentFeature);
    }
    if (scale != 0.0F) {
        features.insert(features.end(), {&mapFeature, &optionsFeature});
    }
    features.push_back(nullptr);
    handle_ = uiDescriptor()->instantiate(uiDescriptor(), qor::lv2::kPluginUri, "/", write, this, &widget_,
                                          features.data());
    return handle_ != nullptr;
}

void UiHost::close() {
    if (handle_ != nullptr) {
        uiDescriptor()->cleanup(std::exchange(handle_, nullptr));
    }
}

int UiHost::idleOnce() {
    static const auto* const interface =
        static_cast<const LV2UI_Idle_Interface*>(uiDescriptor()->extension_data(LV2_UI__idleInterface));
    return interface->idle(handle_);
}

int UiHost::idle(int times) {
    int answer = 0;
    for (int i = 0; i < times; ++i) {
        answer = idleOnce();
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the display's side of things
    }
    return answer;
}

void UiHost::port(std::uint32_t index, float value) {
    uiDescriptor()->port_event(handle_, index, sizeof value, 0, &value);
}

UiTest::UiTest() : display(XOpenDisplay(nullptr)) {}

UiTest::~UiTest() {
    XCloseDisplay(display);
}

Window UiTest::makeParent(int x, int y) {
    const Window made = XCreateSimpleWindow(display, DefaultRootWindow(display), x, y, 512, 392, 0, 0, 0);
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True; // no window manager is asked: it lies where it is put
    XChangeWindowAttributes(display, made, CWOverrideRedirect, &attributes);
    XMapRaised(display, made);
    XSync(display, False);
    return made;
}

void UiTest::moveTo(int x, int y) {
    XTestFakeMotionEvent(display, -1, x, y, 0);
    XSync(display, False);
}

void UiTest::button(unsigned number, bool down) {
    XTestFakeButtonEvent(display, number, down ? True : False, 0);
    XSync(display, False);
}

std::vector<unsigned long> UiTest::picture(Window window) {
    XWindowAttributes attributes{};
    XGetWindowAttributes(display, window, &attributes);
    XImage* image = XGetImage(display, window, 0, 0, static_cast<unsigned>(attributes.width),
                              static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
    std::vector<unsigned long> pixels;
    for (int y = 0; image != nullptr && y < attributes.height; ++y) {
        for (int x = 0; x < attributes.width; ++x) {
            pixels.push_back(XGetPixel(image, x, y) & 0xFFFFFFUL);
        }
    }
    if (image != nullptr) {
        XDestroyImage(image);
    }
    return pixels;
}

} // namespace test
