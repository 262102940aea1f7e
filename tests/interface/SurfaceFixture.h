// The editor's surface alone in a window, with a delegate that writes down.
#pragma once

#include "EditorFixture.h"

#include "interface/LimiterElements.h"

#include <utility>

namespace qor {

struct QORLimiterViewPeer {
    static const std::string& mode(const QORLimiterView& view) { return view.hotspotMode; }
    static const CGPoint& start(const QORLimiterView& view) { return view.startLocation; }
    static double saved(const QORLimiterView& view) { return view.savedValue; }
    static double startValue(const QORLimiterView& view) { return view.startValue; }
    static double scaler(const QORLimiterView& view) { return view.scaler; }
    static std::int64_t lastIndex(const QORLimiterView& view) { return view.lastIndex; }
};

} // namespace qor

namespace test {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test
using Call = std::pair<std::int64_t, float>;

class SurfaceDelegate : public QORLimiterViewDelegate {
public:
    void onQORLimiterViewParameter(std::int64_t address, float value) override {
        calls.emplace_back(address, value);
    }
    void onQORLimiterViewOption(std::int64_t /*address*/, float /*value*/) override { ++options; }
    std::vector<Call> calls;
    int options = 0;
};

class Surface : public testing::Test {
protected:
    explicit Surface(double scale = 1.0)
        : headless({.width = 512.0 * scale, .height = 340.0 * scale + 0.001}) {
        headless.show(view);
        view->delegate = delegate;
        view->setViewController(controller);
        for (const UIControlEvents event :
             {UIControlEventTouchDown, UIControlEventValueChanged, UIControlEventTouchUpInside,
              UIControlEventTouchUpOutside, UIControlEventTouchCancel}) {
            view->addAction(event, [this, event](UIControl&) { sent.push_back(event); });
        }
        log.clear();
    }
    ~Surface() override { view->setViewController(nullptr); }

    CapturedLog log;
    HeadlessWindow headless;
    RunLoop::Scope scope{headless.loop()};
    Ref<QORLimiterView> view = makeRef<QORLimiterView>();
    Ref<SurfaceDelegate> delegate = makeRef<SurfaceDelegate>();
    Ref<AudioUnitViewController> controller = makeRef<AudioUnitViewController>();
    std::vector<UIControlEvents> sent;
};

class DoubleSurface : public Surface {
protected:
    DoubleSurface() : Surface(2.0) {}
};

inline constexpr CGPoint kThreshold{.x = 329.0, .y = 94.0};
inline constexpr CGPoint kBypass{.x = 88.0, .y = 284.0};
inline constexpr CGPoint kNothing{.x = 5.0, .y = 5.0};

/// The middle of an element's area.
inline CGPoint middleOf(const QORLimiterViewBase& base, const LimiterElement& element) {
    const CGRect area = (base.*element.path).bounds();
    return {.x = CGRectGetMidX(area), .y = CGRectGetMidY(area)};
}

} // namespace test
