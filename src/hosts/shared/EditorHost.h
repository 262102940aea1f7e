// Owns an editor for as long as its instance lives, and joins it to a unit.
#pragma once

#include "hosts/shared/EditGestures.h"
#include "hosts/shared/EditorModel.h"
#include "hosts/shared/HostStrip.h"
#include "hosts/shared/KnobAssistant.h"
#include "hosts/shared/ServiceThread.h"
#include "interface/AudioUnitViewController.h"
#include "platform/view/View.h"

#include <memory>
#include <mutex>

namespace qor::host {

struct EditorHostOptions {
    /// Pumps the editor's run loop while no window is open.
    bool serviced = true;
    const Clock* clock = &steadyClock();
};

/// The view is loaded on the first open and the unit assigned right behind it, so that the two are joined
/// exactly once; closing only detaches the window. Main thread, apart from the service thread while closed.
/// Whatever touches the window's input or views does so within a `Turn`.
class EditorHost final : private Serviced {
public:
    /// What an editor is best shown at, in points.
    static constexpr CGSize kPreferredSize{.width = 512.0, .height = 340.0 + HostStrip::kHeight};

    /// Fails if the layout is missing or broken, or the user has no document directory. The model must
    /// outlive the host.
    static Result<std::unique_ptr<EditorHost>> create(EditorModel& model,
                                                      const EditorHostOptions& options = {});
    /// Ends the run loop with its timers and tasks, and takes what was registered off the tree.
    ~EditorHost() override;
    EditorHost(const EditorHost&) = delete;
    EditorHost& operator=(const EditorHost&) = delete;

    /// Fills a window, which must stay until `close`.
    void open(UIWindow& window);
    void close();
    bool isOpen() const noexcept { return window_ != nullptr; }

    /// From the host's idle call while open, some fifty times a second.
    void pump();
    RunLoop& runLoop() noexcept { return *loop_; }

    /// The model has another unit now: the surface follows it.
    void unitReplaced();

    /// Told, within a `Turn`, what a person moves; automation and what the host sets are left out.
    void setEditSink(EditSink sink) { gestures_.setSink(std::move(sink)); }

    /// Holds the model's lock and makes the editor's run loop the current one. What moves a parameter
    /// meanwhile is a person's doing.
    class Turn {
    public:
        explicit Turn(EditorHost& host) : host_(host), lock_(host.model_.mutex()), scope_(*host.loop_) {
            ++host_.turns_;
        }
        ~Turn() {
            if (--host_.turns_ == 0) {
                host_.gestures_.settle(host_.isTouched());
            }
        }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        EditorHost& host_;
        std::lock_guard<std::recursive_mutex> lock_;
        RunLoop::Scope scope_;
    };

    /// Absent before the first open.
    const Ref<AudioUnitViewController>& controller() const noexcept { return controller_; }
    const Ref<UIView>& view() const noexcept { return container_; }
    /// What this editor has registered on the tree, 0 or more. For tests.
    std::size_t registrations() const noexcept;

private:
    EditorHost(EditorModel& model, const EditorHostOptions& options, Ref<const LayoutResource> layout);

    void build();
    void observe();
    void forgetTree();
    void service() override;
    void setServiced(bool serviced);
    bool isTouched() const noexcept { return window_ != nullptr && window_->isTouched(); }

    EditorModel& model_;
    const EditorHostOptions options_;
    Ref<const LayoutResource> layout_;
    std::unique_ptr<RunLoop> loop_;
    Ref<AudioUnitViewController> controller_;
    Ref<UIView> container_;
    std::unique_ptr<HostStrip> strip_;
    std::unique_ptr<KnobAssistant> knobs_;
    Ref<AUParameterTree> tree_; // where the registrations are
    AUParameterObserverToken stripToken_ = 0;
    UIWindow* window_ = nullptr;
    EditGestures gestures_;
    int turns_ = 0;          // how deep in turns the main thread is
    bool following_ = false; // the model brings what automation has moved
    std::shared_ptr<ServiceThread> serviceThread_;
    bool registered_ = false; // with the service thread
};

} // namespace qor::host
