#include "hosts/shared/HostStrip.h"

#include "hosts/shared/ChoiceMenu.h"
#include "hosts/shared/ParameterUnits.h"

#include <algorithm>
#include <utility>

namespace qor::host {

namespace {

const ParameterRow& rowOf(AUParameterAddress address) {
    return unwrap(parameterRow(address));
}

} // namespace

HostStrip::HostStrip(EditorModel& model, UIViewController& presenter)
    : model_(model), presenter_(presenter),
      entry_([this](const ParameterRow& row, float value) { set(row.address, value); },
             [this](const ParameterRow& row) {
                 // As short as the line; what was typed has just been seen.
                 tell(std::string(row.hostName) + ": type 0 to 100");
             }) {}

LayoutBindings HostStrip::bindings() {
    LayoutBindings bindings;
    bindings.outlet("presetButton", presetButton_);
    bindings.outlet("modeButton", modeButton_);
    bindings.outlet("finalButton", finalButton_);
    bindings.outlet("highPassSlider", highPassSlider_);
    bindings.outlet("lowPassSlider", lowPassSlider_);
    bindings.outlet("highPassValue", highPassValue_);
    bindings.outlet("lowPassValue", lowPassValue_);
    bindings.outlet("info", info_);
    bindings.controlAction("onPreset", [this](UIControl&) { choosePreset(); });
    bindings.controlAction("onMode", [this](UIControl&) { chooseMode(); });
    bindings.controlAction("onFinalLimiter", [this](UIControl&) {
        set(kLimiterFinalLimiter, model_.parameter(kLimiterFinalLimiter) == 1.0F ? 0.0F : 1.0F);
    });
    bindings.controlAction("onHighPass",
                           [this](UIControl&) { slid(*highPassSlider_, kLimiterInputFilterHP); });
    bindings.controlAction("onLowPass", [this](UIControl&) { slid(*lowPassSlider_, kLimiterInputFilterLP); });
    const auto entry = [this](AUParameterAddress address) {
        return [this, address](UIControl& sender) {
            enterValue(unwrap(sender.superview()), sender.frame(), address);
        };
    };
    bindings.controlAction("onHighPassValue", entry(kLimiterInputFilterHP));
    bindings.controlAction("onLowPassValue", entry(kLimiterInputFilterLP));
    return bindings;
}

Result<void> HostStrip::load(const LayoutResource& layout) {
    auto made = layout.instantiate(kLayoutKey, bindings());
    if (!made) {
        return made.error();
    }
    view_ = made.value();
    noPresetTitle_ = presetButton_->title();
    return {};
}

void HostStrip::slid(UISlider& slider, AUParameterAddress address) {
    set(address, slider.value());
}

void HostStrip::set(AUParameterAddress address, float value) {
    if (const auto done = model_.setParameter(address, value); !done) {
        tell(done.error().localizedDescription());
        return;
    }
    const float now = model_.parameter(address);
    show(address, now);
    tellValue(address, now);
}

void HostStrip::show(AUParameterAddress address, float value) {
    const auto slide = [value](UISlider& slider, UIButton& text) {
        if (!slider.isTracking()) {
            slider.setValue(value);
        }
        text.setTitle(fixedText(static_cast<double>(value) * 100.0, 1) + " %");
    };
    switch (address) {
    case kLimiterMode:
        modeButton_->setTitle(parameterValueText(rowOf(address), value));
        break;
    case kLimiterInputFilterHP:
        slide(*highPassSlider_, *highPassValue_);
        break;
    case kLimiterInputFilterLP:
        slide(*lowPassSlider_, *lowPassValue_);
        break;
    case kLimiterFinalLimiter:
        finalButton_->setSelected(value == 1.0F);
        break;
    default:
        break;
    }
    if (!presetName_.empty() && address < kParameterCount) {
        changed_.set(address, value != presetValues_[address]);
        showPresetName();
    }
}

void HostStrip::tell(const std::string& text) {
    info_->setText(text);
}

void HostStrip::tellValue(AUParameterAddress address, float value) {
    tell(labelledText(rowOf(address), value));
}

void HostStrip::enterValue(UIView& host, const CGRect& place, AUParameterAddress address) {
    constexpr double kFieldWidth = 56.0;
    constexpr double kFieldHeight = 18.0;
    const CGRect field = CGRectMake(CGRectGetMidX(place) - kFieldWidth / 2.0,
                                    CGRectGetMidY(place) - kFieldHeight / 2.0, kFieldWidth, kFieldHeight);
    entry_.open(host, field, rowOf(address), model_.parameter(address));
}

void HostStrip::chooseMode() {
    const ParameterRow& row = rowOf(kLimiterMode);
    const std::vector<std::string> names(row.valueNames.begin(), row.valueNames.end());
    const float now = row.clamped(model_.parameter(kLimiterMode));
    presenter_.presentViewController(
        makeRef<ChoiceMenu>(names, static_cast<std::size_t>(now),
                            [this](std::size_t chosen) { set(kLimiterMode, static_cast<float>(chosen)); }),
        true);
}

void HostStrip::choosePreset() {
    const std::vector<PresetEntry> presets = model_.presets();
    std::vector<std::string> names;
    std::size_t current = 0;
    for (const PresetEntry& preset : presets) {
        if (preset.name == presetName_) {
            current = names.size();
        }
        names.push_back(preset.isFactory ? preset.name : preset.name + "  (own)");
    }
    const bool mayDelete =
        current < presets.size() && presets[current].name == presetName_ && !presets[current].isFactory;
    if (mayDelete) {
        names.push_back("Delete \"" + presetName_ + "\"...");
    }
    names.emplace_back("Save as...");
    presenter_.presentViewController(
        makeRef<ChoiceMenu>(names, current,
                            [this, presets, current, mayDelete](std::size_t chosen) {
                                if (chosen < presets.size()) {
                                    takePreset(presets[chosen]);
                                } else if (mayDelete && chosen == presets.size()) {
                                    askToDeletePreset(presets[current]);
                                } else {
                                    askForPresetName();
                                }
                            }),
        true);
}

void HostStrip::takePreset(const PresetEntry& preset) {
    if (const auto done = model_.load(preset); !done) {
        fail("Preset", done.error());
        return;
    }
    namePreset(preset.name);
    tell("Preset  " + preset.name);
}

void HostStrip::namePreset(const std::string& name) {
    presetName_ = name;
    changed_.reset();
    for (const ParameterRow& row : kParameterTable) {
        presetValues_[row.address] = model_.parameter(row.address);
    }
    showPresetName();
}

void HostStrip::showPresetName() {
    presetButton_->setTitle(presetName_.empty() ? noPresetTitle_
                                                : presetName_ + (changed_.any() ? " *" : ""));
}

void HostStrip::askForPresetName() {
    const auto dialog =
        makeRef<UIAlertController>("Save preset", "The name of the preset:", UIAlertControllerStyle::alert);
    dialog->addTextFieldWithConfigurationHandler([this](UITextField& field) {
        field.setPlaceholder("name");
        field.setText(presetName_);
    });
    const Weak<UIAlertController> weak = dialog;
    dialog->addAction(
        makeRef<UIAlertAction>("Save", UIAlertActionStyle::default_, [this, weak](UIAlertAction&) {
            const auto answered = weak.lock();
            if (!answered) {
                return;
            }
            const std::string name = answered->textFields()->front()->text().value_or("");
            if (const auto done = model_.save(name); !done) {
                fail("Preset", done.error());
                return;
            }
            namePreset(name);
            tell("Saved  " + name);
        }));
    dialog->addAction(makeRef<UIAlertAction>("Cancel", UIAlertActionStyle::cancel));
    presenter_.presentViewController(dialog, true);
}

void HostStrip::askToDeletePreset(const PresetEntry& preset) {
    const auto dialog = makeRef<UIAlertController>(
        "Delete preset", "Delete \"" + preset.name + "\" for good?", UIAlertControllerStyle::alert);
    dialog->addAction(
        makeRef<UIAlertAction>("Delete", UIAlertActionStyle::default_, [this, preset](UIAlertAction&) {
            if (const auto done = model_.remove(preset); !done) {
                fail("Preset", done.error());
                return;
            }
            namePreset("");
            tell("Deleted  " + preset.name);
        }));
    dialog->addAction(makeRef<UIAlertAction>("Cancel", UIAlertActionStyle::cancel));
    presenter_.presentViewController(dialog, true);
}

void HostStrip::fail(const std::string& caption, const NSError& error) {
    const auto dialog =
        makeRef<UIAlertController>(caption, error.localizedDescription(), UIAlertControllerStyle::alert);
    dialog->addAction(makeRef<UIAlertAction>("OK", UIAlertActionStyle::default_));
    presenter_.presentViewController(dialog, true);
}

} // namespace qor::host
