#include "hosts/shared/EditorHost.h"

#include "platform/files/Files.h"

#include <algorithm>
#include <utility>

namespace qor::host {

namespace {

constexpr const char* kLayoutFile = "EditorLayout.plist";

/// The panel's root view above, the strip below. The strip grows and shrinks with the window like the panel.
class EditorContainer : public UIView {
public:
    EditorContainer(Ref<UIView> panel, Ref<UIView> strip)
        : panel_(std::move(panel)), strip_(std::move(strip)) {}
    void layoutSubviews() override {
        UIView::layoutSubviews();
        const CGSize room = bounds().size;
        constexpr CGSize kPreferred = EditorHost::kPreferredSize;
        const double scale =
            std::clamp(std::min(room.width / kPreferred.width, room.height / kPreferred.height), 0.25, 4.0);
        const double below = std::min(HostStrip::kHeight * scale, room.height);
        panel_->setFrame(CGRectMake(0.0, 0.0, room.width, room.height - below));
        strip_->setTransform(CGAffineTransformMakeScale(scale, scale)); // about the strip's centre
        const CGSize own{.width = room.width / scale, .height = HostStrip::kHeight};
        strip_->setFrame(CGRectMake((room.width - own.width) / 2.0, room.height - (below + own.height) / 2.0,
                                    own.width, own.height));
    }

private:
    Ref<UIView> panel_;
    Ref<UIView> strip_;
};

NSError editorError(std::string text) {
    return {LayoutErrorDomain, 2, {{NSLocalizedDescriptionKey, std::move(text)}}};
}

/// A model that nothing is asked of, for trying a layout.
class NoModel final : public EditorModel {
public:
    std::recursive_mutex& mutex() override { return mutex_; }
    Ref<QOR_Limiter_Extension_AudioUnit> unit() override { return nullptr; }
    Result<void> setParameter(AUParameterAddress /*address*/, float /*value*/) override { return {}; }
    float parameter(AUParameterAddress /*address*/) override { return 0.0F; }
    void editorDidOpen(bool /*open*/) override {}
    void pump() override {}
    std::vector<PresetEntry> presets() override { return {}; }
    Result<void> load(const PresetEntry& /*preset*/) override { return {}; }
    Result<void> save(const std::string& /*name*/) override { return {}; }

private:
    std::recursive_mutex mutex_;
};

} // namespace

Result<std::unique_ptr<EditorHost>> EditorHost::create(EditorModel& model, const EditorHostOptions& options) {
    const std::optional<URL> resources = Bundle::main().resourceURL();
    if (!resources) {
        return editorError("The program's resources can't be found; install it anew or set " +
                           Bundle::main().overrideVariable() + " to their directory");
    }
    if (FileManager::defaultManager()
            .URLsForDirectory(SearchPathDirectory::documentDirectory, SearchPathDomainMask::userDomainMask)
            .empty()) {
        return editorError("The user's document directory can't be told; set HOME");
    }
    auto layout = LayoutResource::load(resources->appendingPathComponent(kLayoutFile));
    if (!layout) {
        return layout.error();
    }
    if (auto checked = AudioUnitViewController::checkLayout(layout.value()); !checked) {
        return checked.error();
    }
    NoModel nobody;
    UIViewController nowhere;
    if (auto checked = HostStrip(nobody, nowhere).load(layout.value()); !checked) {
        return checked.error();
    }
    return std::unique_ptr<EditorHost>(
        new EditorHost(model, options, makeRef<const LayoutResource>(std::move(layout).value())));
}

EditorHost::EditorHost(EditorModel& model, const EditorHostOptions& options, Ref<const LayoutResource> layout)
    : model_(model), options_(options), layout_(std::move(layout)),
      loop_(std::make_unique<RunLoop>(*options.clock)) {}

EditorHost::~EditorHost() {
    close();
    setServiced(false);
    const std::lock_guard lock(model_.mutex());
    forgetTree();
    if (controller_) {
        // An open dialog and its presenter hold each other.
        if (const Ref<UIViewController> dialog = controller_->presentedViewController()) {
            dialog->dismissViewController(false);
        }
    }
    // The loop's timers and tasks hold the controller, and the surface and the controller each other.
    loop_.reset();
    knobs_.reset();
    if (controller_) {
        controller_->mainView->onScrollWheel = nullptr;
        controller_->mainView->removeAllActions();
        controller_->mainView->delegate = nullptr;
        controller_->mainView->setViewController(nullptr);
    }
    strip_.reset();
    container_.reset();
    controller_.reset();
}

void EditorHost::build() {
    controller_ = makeRef<AudioUnitViewController>(layout_);
    const Ref<UIView>& panel = controller_->view();
    strip_ = std::make_unique<HostStrip>(model_, *controller_);
    if (auto loaded = strip_->load(*layout_); !loaded) {
        fatalError(loaded.error().localizedDescription()); // checked in `create`
    }
    container_ = makeRef<EditorContainer>(panel, strip_->view());
    container_->setBackgroundColor(UIColor(0.07, 0.07, 0.07, 1.0));
    container_->addSubview(panel);
    container_->addSubview(strip_->view());
    knobs_ = std::make_unique<KnobAssistant>(model_, *strip_, *controller_->mainView);
    controller_->setAudioUnit(model_.unit());
    observe();
    loop_->pump(); // the connection
}

void EditorHost::observe() {
    tree_ = unwrap(model_.unit()).parameterTree();
    // Within this editor's loop: what the observer queues lands there.
    stripToken_ =
        unwrap(tree_).tokenByAddingParameterObserver([this](AUParameterAddress address, AUValue value) {
            if (turns_ != 0 && !following_) {
                gestures_.changed(address, value, isTouched());
            }
            dispatchAsyncMain([this, address, value] { strip_->show(address, value); });
        });
    for (const ParameterRow& row : kParameterTable) {
        strip_->show(row.address, model_.parameter(row.address));
    }
}

void EditorHost::forgetTree() {
    if (!tree_) {
        return;
    }
    tree_->removeParameterObserver(std::exchange(stripToken_, 0));
    tree_->removeParameterObserver(controller_->parameterObserverToken());
    tree_.reset();
}

void EditorHost::open(UIWindow& window) {
    close();
    setServiced(false);
    const Turn turn(*this);
    if (!controller_) {
        build();
    }
    window_ = &window;
    window.setRootView(container_);
    model_.editorDidOpen(true);
}

void EditorHost::close() {
    if (window_ == nullptr) {
        return;
    }
    {
        const Turn turn(*this);
        window_->cancelTouches();
        std::exchange(window_, nullptr)->setRootView(nullptr);
        model_.editorDidOpen(false);
    }
    setServiced(true);
}

void EditorHost::pump() {
    const Turn turn(*this);
    following_ = true;
    model_.pump();
    following_ = false;
    loop_->pump();
}

void EditorHost::unitReplaced() {
    if (!controller_) {
        return;
    }
    const Turn turn(*this);
    forgetTree();
    controller_->setAudioUnit(model_.unit());
    observe();
    loop_->pump();
}

std::size_t EditorHost::registrations() const noexcept {
    return tree_ ? tree_->parameterObserverCount() : 0;
}

void EditorHost::service() {
    const Turn turn(*this);
    loop_->pump();
}

void EditorHost::setServiced(bool serviced) {
    if (!options_.serviced || serviced == registered_) {
        return;
    }
    registered_ = serviced;
    if (serviced) {
        serviceThread_ = ServiceThread::acquire();
        serviceThread_->add(*this);
    } else {
        serviceThread_->remove(*this);
        serviceThread_.reset();
    }
}

} // namespace qor::host
