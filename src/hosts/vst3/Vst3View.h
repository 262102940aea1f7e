// The editor as the interface's view: what a host makes, attaches to a window of its own, and releases.
#pragma once

#include "hosts/vst3/ControllerLink.h"
#include "hosts/vst3/Vst3Editor.h"
#include "hosts/vst3/Vst3Interface.h"

#include <atomic>
#include <memory>

struct v3_host_application;

namespace qor::vst3 {

/// May outlive its instance, and then does nothing any more. Counts its references; main thread otherwise.
class Vst3View final {
public:
    /// With one reference, which is the caller's. `context` may be null.
    static v3_plugin_view** create(const std::shared_ptr<Vst3Editor>& editor, v3_host_application** context);
    Vst3View(const Vst3View&) = delete;
    Vst3View& operator=(const Vst3View&) = delete;

    /// Another view speaks for the instance now.
    void loseController();

    // What the interfaces' functions come to.
    v3_result queryInterface(const v3_tuid iid, void** found);
    std::uint32_t retain() noexcept { return ++references_; }
    std::uint32_t release();
    v3_result attach(void* parent);
    v3_result remove();
    v3_result getSize(v3_view_rect& rect) const;
    v3_result onSize(const v3_view_rect& rect);
    v3_result constrain(v3_view_rect& rect) const;
    v3_result setFrame(v3_plugin_frame** frame);
    v3_result setScale(double scale);
    v3_result connect(v3_connection_point** controller);
    v3_result disconnect();
    /// From the host's run loop, or the service thread.
    void tick();

private:
    Vst3View(const std::shared_ptr<Vst3Editor>& editor, v3_host_application** context);
    ~Vst3View();

    /// Null once the instance is gone.
    std::shared_ptr<Vst3Editor> liveEditor() const;
    void startClock();
    void stopClock();
    void sendEdits(Vst3Editor& editor);
    void askForSize(Vst3Editor& editor, const CGSize& before);

    Face<v3_plugin_view_cpp, Vst3View> view_;
    Face<v3_plugin_view_content_scale_cpp, Vst3View> scaling_;
    Face<v3_timer_handler_cpp, Vst3View> timer_;
    Face<v3_connection_point_cpp, Vst3View> point_;

    std::atomic<std::uint32_t> references_{1};
    std::weak_ptr<Vst3Editor> editor_;
    v3_host_application** context_;
    v3_plugin_frame** frame_ = nullptr; // the host's, while it is set
    v3_run_loop** loop_ = nullptr;      // while our timer runs there
    ControllerLink link_;
    bool attached_ = false;
};

/// What the host calls, by interface.
struct Vst3ViewTables {
    static const v3_plugin_view_cpp kView;
    static const v3_plugin_view_content_scale_cpp kScaling;
    static const v3_timer_handler_cpp kTimer;
    static const v3_connection_point_cpp kPoint;
};

} // namespace qor::vst3
