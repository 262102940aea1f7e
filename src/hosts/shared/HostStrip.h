// The controls below the panel for what the panel itself has none for.
#pragma once

#include "hosts/shared/EditorModel.h"
#include "hosts/shared/ValueEntry.h"
#include "platform/view/View.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <string>

namespace qor::host {

/// Mode, input filter, final limiter and presets, and a line that tells what moves. Follows the tree through
/// `show`. Main thread.
class HostStrip {
public:
    static constexpr std::string_view kLayoutKey = "strip";
    static constexpr double kHeight = 52.0; // points

    /// The model and the presenter must outlive the strip.
    HostStrip(EditorModel& model, UIViewController& presenter);

    /// Makes the views. Fails if the layout doesn't fit.
    Result<void> load(const LayoutResource& layout);
    const Ref<UIView>& view() const noexcept { return view_; }

    /// A parameter has become this.
    void show(AUParameterAddress address, float value);
    /// The line: a value with its unit while it moves, or what went wrong.
    void tell(const std::string& text);
    void tellValue(AUParameterAddress address, float value);
    /// Opens the text field over a place, in the units of the host's subviews.
    void enterValue(UIView& host, const CGRect& place, AUParameterAddress address);
    /// Sets a parameter as a person does, and tells it.
    void set(AUParameterAddress address, float value);

private:
    LayoutBindings bindings();
    void chooseMode();
    void choosePreset();
    void takePreset(const PresetEntry& preset);
    void askForPresetName();
    void askToDeletePreset(const PresetEntry& preset);
    /// The name on the button, of a preset that all values now are of; empty for none.
    void namePreset(const std::string& name);
    void showPresetName();
    void fail(const std::string& caption, const NSError& error);
    void slid(UISlider& slider, AUParameterAddress address);

    EditorModel& model_;
    UIViewController& presenter_;
    Ref<UIView> view_;
    Ref<UIButton> presetButton_;
    Ref<UIButton> modeButton_;
    Ref<UIButton> finalButton_;
    Ref<UISlider> highPassSlider_;
    Ref<UISlider> lowPassSlider_;
    Ref<UIButton> highPassValue_;
    Ref<UIButton> lowPassValue_;
    Ref<UILabel> info_;
    std::string presetName_;
    std::string noPresetTitle_; // of the button, as the layout has it
    std::array<float, kParameterCount> presetValues_{};
    std::bitset<kParameterCount> changed_; // what has another value than the preset by now
    ValueEntry entry_;
};

} // namespace qor::host
