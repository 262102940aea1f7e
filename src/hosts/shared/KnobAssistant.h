// What a mouse adds to the panel's knobs: the wheel, and values that are typed.
#pragma once

#include "hosts/shared/HostStrip.h"
#include "interface/LimiterElements.h"
#include "interface/QORLimiterView.h"

#include <optional>

namespace qor::host {

/// Watches a surface from outside: the surface and its drawing stay as they are. Main thread.
class KnobAssistant {
public:
    /// All three must outlive the assistant.
    KnobAssistant(EditorModel& model, HostStrip& strip, QORLimiterView& surface);

private:
    bool turn(const UIWheelEvent& event);
    void tapped(const CGPoint& at);
    void moved();
    std::optional<CGPoint> canvasPoint(const CGPoint& at) const;
    const LimiterElement* knobAt(const CGPoint& canvas) const;

    EditorModel& model_;
    HostStrip& strip_;
    QORLimiterView& surface_;
};

} // namespace qor::host
