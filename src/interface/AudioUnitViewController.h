// The editor's controller and the host's factory: joins the audio unit to the surface, places the panel, and
// holds the dialogs ready.
#pragma once

#include "interface/PluginFrameEx.h"
#include "interface/QORDynamicsDisplayView.h"
#include "interface/QORLimiterView.h"
#include "interface/QORLimiterViewDelegate.h"
#include "platform/audio/AUAudioUnitFactory.h"
#include "platform/audio/Audio.h"
#include "platform/view/AUViewController.h"
#include "platform/view/View.h"
#include "unit/QOR_Limiter_Extension_AudioUnit.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qor {

/// Main thread only, apart from the parameter observer's first step. Lives in a `Ref`; its meter timer and
/// its queued tasks keep it alive until their run loop ends. An outlet that is absent when it is needed stops
/// the process.
class AudioUnitViewController : public AUViewController,
                                public AUAudioUnitFactory,
                                public QORLimiterViewDelegate,
                                public UIDocumentPickerDelegate {
public:
    /// The panel's layout, loaded with the view; without one the outlets are for others to fill. A layout
    /// that can't be loaded stops the process: hosts check it first.
    explicit AudioUnitViewController(Ref<const LayoutResource> layout = nullptr);

    /// The key of the panel's view tree in the layout.
    static constexpr std::string_view kLayoutKey = "panel";
    /// Why the layout can't be used, if so.
    static Result<void> checkLayout(const LayoutResource& layout);

    void onQORLimiterViewParameter(std::int64_t address, float value) override;
    void onQORLimiterViewOption(std::int64_t address, float value) override;

    /// Makes the unit and keeps it; fails with the unit's own error.
    Result<Ref<AUAudioUnit>> createAudioUnit(const AudioComponentDescription& description) override;
    const Ref<QOR_Limiter_Extension_AudioUnit>& audioUnit() const noexcept { return audioUnit_; }
    /// Queues the connection of the surface to the unit's parameters; each assignment connects anew.
    virtual void setAudioUnit(Ref<QOR_Limiter_Extension_AudioUnit> unit);
    /// Writes the document and resource paths to the log.
    virtual void setPaths();

    void loadView() override;
    void viewDidLoad() override;
    void viewDidLayoutSubviews() override;
    void prepare(const UIStoryboardSegue& segue, void* sender) override;

    bool useObservers = true;   // never consulted
    bool touchesLocked = false; // a control has the finger: pans stop
    bool isSizeable = true;     // false: frozen, pan and pinch do nothing

    // Outlets.
    Ref<PluginFrameEx> pluginFrame;
    Ref<UIView> pluginView; // the panel, moved and scaled
    Ref<QORDynamicsDisplayView> displayView;
    Ref<QORLimiterView> mainView;
    Ref<UIView> infoView; // the banner
    Ref<UILabel> infoMessage;
    Ref<UIButton> contrastButton;
    virtual void onContrastButton(UIButton& sender);
    Ref<UISlider> brightnessSlider;
    virtual void onBrightnessSlider(UISlider& sender);
    Ref<UIButton> freezeButton;
    virtual void onFreezeButton(UIButton& sender);
    Ref<UIPanGestureRecognizer> panGesture;
    virtual void onPanGesture(UIPanGestureRecognizer& sender);
    /// Moves a frame; nothing calls it.
    virtual void doTranslationTransform(UIView& view, const CGRect& origin, const CGPoint& position);
    Ref<UIPinchGestureRecognizer> pinchGesture;
    virtual void onPinchGesture(UIPinchGestureRecognizer& sender);
    /// Scales a frame about its centre if it stays from 256 to 2048 wide; nothing calls it.
    virtual void doScalingTransform(UIView& view, const CGRect& origin, double scaling);
    Ref<UITapGestureRecognizer> doubleTapGesture;
    virtual void onDoubleTapGesture(UITapGestureRecognizer& sender);
    Ref<UITapGestureRecognizer> tapGesture;
    virtual void onTapGesture(UITapGestureRecognizer& sender);
    Ref<UILongPressGestureRecognizer> longPressGesture;
    virtual void onlongPressGesture(UILongPressGestureRecognizer& sender);

    /// Shows every parameter's value on the surface.
    virtual void updateView();
    virtual void centerpluginView();
    double ratio = 0.6640625; // the panel's height over its width
    bool fitToHeight = true;  // which length fits first in a wide window
    /// Fits the panel into `w` by `h` points.
    virtual void resetpluginView(double w, double h, double inset = 0.0);
    /// Whether everything from the view up to the window can be seen.
    virtual bool isViewVisible(UIView& view);
    /// The meters, every 0.04 seconds.
    virtual void onTimer(NSTimer* instance);

    /// A parameter of the tree; one that isn't there is logged. Without a tree the first stops the process.
    void setParameter(std::int64_t address, float value);
    float getParameter(std::int64_t address);
    /// The banner grows and fades in, and goes again.
    void showInfo(const std::string& string);
    void hideInfo();

    // Dialogs. None is connected to anything.
    void alert(const std::string& caption, const std::string& message, Block<void()> completion = nullptr);
    void alertQuestion(const std::string& caption, const std::string& question,
                       Block<void()> completion = nullptr);
    void alertFileName(const std::string& _for, const std::string& defaultName);
    void alertFileName2(const std::string& _for, const std::string& defaultName);
    void openFilePicker();
    void documentPicker_didPickDocumentAt(UIDocumentPickerViewController& picker, const URL& url) override;
    void documentPicker_didPickDocumentsAt(UIDocumentPickerViewController& picker,
                                           const std::vector<URL>& urls) override;
    void documentPickerWasCancelled(UIDocumentPickerViewController& picker) override;
    std::string reasonForQuestion;
    std::string reasonForImport;

    /// For a host that ends the editor while the tree lives on: what was registered on the tree. 0 for
    /// nothing.
    AUParameterObserverToken parameterObserverToken() const noexcept { return parameterObserverToken_; }

private:
    friend struct AudioUnitViewControllerPeer; // tests

    Ref<AudioUnitViewController> self();
    LayoutBindings layoutBindings();
    void connectParameters();
    void extractParameters(const std::string& name, const AUParameterGroup* tree, std::int64_t level);
    void askForFileName(const std::string& message, const std::string& _for, const std::string& defaultName);
    void onFileName(const UIAlertController& dialog, const std::string& _for, const std::string& defaultName);

    Ref<const LayoutResource> layout_;
    Ref<QOR_Limiter_Extension_AudioUnit> audioUnit_;
    std::string startFolderForSegue = "QOR Limiter/"; // nothing reads it
    Ref<NSTimer> timer;
    bool lockAutoLayout = false; // during a pan or pinch
    CGRect controlFrame;         // where a gesture starts
    AUParameterObserverToken parameterObserverToken_ = 0;
    Ref<AUParameterTree> parameterTree;
    std::vector<Ref<AUParameter>> parameters;
    Ref<UIView> currentView; // what layout and gestures act on
};

} // namespace qor
