#include "hosts/vst3/Vst3View.h"

#include "travesty/host.h"

#include <cmath>

namespace qor::vst3 {

namespace {

constexpr std::uint64_t kTimerPeriod = 20; // ms

/// Asks a host's object for its run loop; null without one. A found one holds a reference.
template <class Object>
v3_run_loop** runLoopOf(Object** object) {
    v3_run_loop** loop = nullptr;
    if (object == nullptr || v3_cpp_obj_query_interface(object, v3_run_loop_iid, &loop) != V3_OK) {
        return nullptr;
    }
    return loop;
}

v3_view_rect rectOf(const CGSize& size) {
    return {.left = 0,
            .top = 0,
            .right = static_cast<std::int32_t>(std::lround(size.width)),
            .bottom = static_cast<std::int32_t>(std::lround(size.height))};
}

CGSize sizeOf(const v3_view_rect& rect) {
    return {.width = static_cast<double>(rect.right) - rect.left,
            .height = static_cast<double>(rect.bottom) - rect.top};
}

} // namespace

v3_plugin_view** Vst3View::create(const std::shared_ptr<Vst3Editor>& editor, v3_host_application** context) {
    return asInterface<v3_plugin_view>((new Vst3View(editor, context))->view_);
}

Vst3View::Vst3View(const std::shared_ptr<Vst3Editor>& editor, v3_host_application** context)
    : view_{&Vst3ViewTables::kView, this}, scaling_{&Vst3ViewTables::kScaling, this},
      timer_{&Vst3ViewTables::kTimer, this}, point_{&Vst3ViewTables::kPoint, this}, editor_(editor),
      context_(context) {
    if (context_ != nullptr) {
        v3_cpp_obj_ref(context_);
    }
    editor->setView(this);
}

Vst3View::~Vst3View() {
    remove();
    // The controller lives as long as its instance, and the editor tells whether that is so.
    if (const auto editor = liveEditor(); editor != nullptr && editor->view() == this) {
        if (v3_connection_point** const controller = link_.controller(); controller != nullptr) {
            v3_cpp_obj(controller)->disconnect(controller, asInterface<v3_connection_point>(point_));
        }
        editor->setView(nullptr);
    }
    if (context_ != nullptr) {
        v3_cpp_obj_unref(context_);
    }
}

std::shared_ptr<Vst3Editor> Vst3View::liveEditor() const {
    std::shared_ptr<Vst3Editor> editor = editor_.lock();
    return editor != nullptr && editor->isAlive() ? editor : nullptr;
}

void Vst3View::loseController() {
    link_.closed();
    link_.setController(nullptr);
}

v3_result Vst3View::queryInterface(const v3_tuid iid, void** found) {
    if (v3_tuid_match(iid, v3_funknown_iid) || v3_tuid_match(iid, v3_plugin_view_iid)) {
        *found = &view_;
    } else if (v3_tuid_match(iid, v3_plugin_view_content_scale_iid)) {
        *found = &scaling_;
    } else if (v3_tuid_match(iid, v3_timer_handler_iid)) {
        *found = &timer_;
    } else if (v3_tuid_match(iid, v3_connection_point_iid)) {
        *found = &point_; // whose references don't count
        return V3_OK;
    } else {
        *found = nullptr;
        return V3_NO_INTERFACE;
    }
    retain();
    return V3_OK;
}

std::uint32_t Vst3View::release() {
    const std::uint32_t left = --references_;
    if (left == 0) {
        ++references_; // what goes on in the end must not begin another one
        delete this;
    }
    return left;
}

v3_result Vst3View::attach(void* parent) {
    const auto editor = liveEditor();
    if (editor == nullptr || attached_) {
        return V3_FALSE;
    }
    if (auto opened = editor->open(reinterpret_cast<std::uintptr_t>(parent)); !opened) {
        print("QOR Limiter's editor: " + opened.error().localizedDescription());
        return V3_FALSE;
    }
    attached_ = true;
    link_.opened();
    startClock();
    return V3_OK;
}

v3_result Vst3View::remove() {
    if (!attached_) {
        return V3_FALSE;
    }
    stopClock();
    attached_ = false;
    if (const auto editor = liveEditor()) {
        editor->close();
        sendEdits(*editor); // what the close has ended
        link_.closed();
    }
    return V3_OK;
}

v3_result Vst3View::getSize(v3_view_rect& rect) const {
    const auto editor = liveEditor();
    if (editor == nullptr) {
        return V3_NOT_INITIALIZED;
    }
    rect = rectOf(editor->size());
    return V3_OK;
}

v3_result Vst3View::onSize(const v3_view_rect& rect) {
    const auto editor = liveEditor();
    if (editor == nullptr) {
        return V3_NOT_INITIALIZED;
    }
    editor->setSize(sizeOf(rect));
    return V3_OK;
}

v3_result Vst3View::constrain(v3_view_rect& rect) const {
    const auto editor = liveEditor();
    if (editor == nullptr) {
        return V3_NOT_INITIALIZED;
    }
    const v3_view_rect fitting = rectOf(editor->adjusted(sizeOf(rect)));
    rect.right = rect.left + fitting.right;
    rect.bottom = rect.top + fitting.bottom;
    return V3_TRUE;
}

v3_result Vst3View::setFrame(v3_plugin_frame** frame) {
    if (attached_) {
        stopClock(); // the clock is the frame's
    }
    frame_ = frame;
    if (attached_) {
        startClock();
    }
    return V3_OK;
}

v3_result Vst3View::setScale(double scale) {
    const auto editor = liveEditor();
    if (editor == nullptr) {
        return V3_NOT_INITIALIZED;
    }
    const CGSize before = editor->size();
    editor->setScale(scale);
    if (attached_ && !(editor->size() == before)) {
        askForSize(*editor, before);
    }
    return V3_OK;
}

// The host answers with `onSize`, at once or later, or leaves its window as it is.
void Vst3View::askForSize(Vst3Editor& editor, const CGSize& before) {
    v3_view_rect wanted = rectOf(editor.size());
    if (frame_ == nullptr ||
        v3_cpp_obj(frame_)->resize_view(frame_, asInterface<v3_plugin_view>(view_), &wanted) != V3_OK) {
        editor.setSize(before);
    }
}

v3_result Vst3View::connect(v3_connection_point** controller) {
    link_.setController(controller);
    return V3_OK;
}

v3_result Vst3View::disconnect() {
    link_.closed();
    link_.setController(nullptr);
    return V3_OK;
}

// A host without a run loop would leave the editor standing still.
void Vst3View::startClock() {
    for (v3_run_loop** loop : {runLoopOf(frame_), runLoopOf(context_)}) {
        if (loop != nullptr && loop_ == nullptr &&
            v3_cpp_obj(loop)->register_timer(loop, asInterface<v3_timer_handler>(timer_), kTimerPeriod) ==
                V3_OK) {
            loop_ = loop;
        } else if (loop != nullptr) {
            v3_cpp_obj_unref(loop);
        }
    }
    if (const auto editor = liveEditor(); editor != nullptr && loop_ == nullptr) {
        editor->startService([this] { tick(); });
    }
}

void Vst3View::stopClock() {
    if (loop_ != nullptr) {
        v3_run_loop** const loop = std::exchange(loop_, nullptr);
        v3_cpp_obj(loop)->unregister_timer(loop, asInterface<v3_timer_handler>(timer_));
        v3_cpp_obj_unref(loop);
    }
    if (const auto editor = liveEditor()) {
        editor->stopService();
    }
}

void Vst3View::tick() {
    const auto editor = liveEditor();
    if (editor == nullptr || !attached_) {
        return;
    }
    retain(); // the host may close the editor in answer to a move
    editor->pump();
    sendEdits(*editor);
    release();
}

void Vst3View::sendEdits(Vst3Editor& editor) {
    for (const Vst3Editor::Edit& edit : editor.takeEdits()) {
        if (!editor.isAlive()) {
            return; // the host has removed the plug-in in answer to a move
        }
        link_.tell(edit);
        editor.told(edit);
    }
}

} // namespace qor::vst3
