// The unit's way into the editor: assignment, parameters and meters.
#include "interface/AudioUnitViewController.h"

#include "interface/ParameterDiagnostics.h"
#include "platform/files/Files.h"

#include <utility>

namespace qor {

Result<Ref<AUAudioUnit>>
AudioUnitViewController::createAudioUnit(const AudioComponentDescription& description) {
    auto made = QOR_Limiter_Extension_AudioUnit::init(description, {});
    if (!made) {
        return made.error();
    }
    setAudioUnit(made.value());
    return Ref<AUAudioUnit>(audioUnit_);
}

void AudioUnitViewController::setAudioUnit(Ref<QOR_Limiter_Extension_AudioUnit> unit) {
    audioUnit_ = std::move(unit);
    print("AU Diagnostics: AUAudioUnit::didSet()");
    dispatchAsyncMain([strong = self()] {
        if (!strong->isViewLoaded()) {
            print("AU Diagnostics: WARNING: Plugin view is not loaded.");
            return;
        }
        print("AU Diagnostics: We are about to connect the audio unit to its view controller.");
        unwrapImplicit(strong->mainView).setViewController(strong);
        strong->setPaths();
        strong->connectParameters();
        strong->updateView();
    });
}

void AudioUnitViewController::setPaths() {
    if (!audioUnit_) {
        print("Error: could not set paths, audio unit is nil.");
        return;
    }
    const std::vector<URL> documents = FileManager::defaultManager().URLsForDirectory(
        SearchPathDirectory::documentDirectory, SearchPathDomainMask::userDomainMask);
    const std::optional<URL> first = documents.empty() ? std::optional<URL>() : documents.front();
    print("Audio Unit's documents path is: " + unwrap(first).path());
    const std::optional<URL> resources = Bundle::main().resourceURL();
    print("Audio Unit's resources path is: " + unwrap(resources).path());
}

void AudioUnitViewController::connectParameters() {
    if (!audioUnit_) {
        print("AU Diagnostics: WARNING: The audio unit is nil.");
        return;
    }
    print("AU Diagnostics: Retriving parameters from the audio unit: ");
    parameterTree = audioUnit_->parameterTree();
    if (!parameterTree) {
        print("AU Diagnostics: Retriving the parameter tree from the audio unit failed.");
        return;
    }
    print("ExtensionViewController: Extracting at the parameter tree: ");
    extractParameters("parameterTree", parameterTree.get(), 0);
    parameters = parameterTree->allParameters();
    const Weak<UIViewController> weak = weak_from_this();
    parameterObserverToken_ =
        parameterTree->tokenByAddingParameterObserver([weak](AUParameterAddress address, AUValue value) {
            const auto strong = std::static_pointer_cast<AudioUnitViewController>(weak.lock());
            if (!strong) {
                print("AU Diagnostics: The strong self shit is nil.");
                return;
            }
            dispatchAsyncMain([strong, address, value] {
                unwrapImplicit(strong->mainView).setParameter(static_cast<std::int64_t>(address), value);
            });
        });
    if (parameterObserverToken_ == 0) {
        print("ERROR: Could not initialize parameter observer.");
    } else {
        print("AU Diagnostics: Connected parameters to the plugins interface.");
    }
}

void AudioUnitViewController::extractParameters(const std::string& /*name*/, const AUParameterGroup* tree,
                                                std::int64_t level) {
    if (tree == nullptr) {
        print("ExtensionViewController: The parameter group has no children.");
        return;
    }
    for (const Ref<AUParameterNode>& child : tree->children()) {
        const auto group = std::dynamic_pointer_cast<AUParameterGroup>(child);
        if (!group) {
            continue;
        }
        for (const Ref<AUParameter>& parameter : group->allParameters()) {
            parameters.push_back(parameter);
            printParameter(*parameter, level + 1);
        }
        extractParameters(group->displayName(), group.get(), level + 1);
    }
}

void AudioUnitViewController::updateView() {
    if (!audioUnit_) {
        return;
    }
    const std::vector<Ref<AUParameter>> shown = parameters;
    for (const Ref<AUParameter>& parameter : shown) {
        unwrapImplicit(mainView).setParameter(static_cast<std::int64_t>(parameter->address()),
                                              parameter->value());
    }
}

void AudioUnitViewController::setParameter(std::int64_t address, float value) {
    const Ref<AUParameter> parameter =
        unwrap(parameterTree).parameterWithAddress(static_cast<AUParameterAddress>(address));
    if (!parameter) {
        print("AudioUnitViewController: ERROR: The parameter address " + text(address) +
              " is not available.");
        return;
    }
    parameter->setValue(value);
}

float AudioUnitViewController::getParameter(std::int64_t address) {
    if (!parameterTree) {
        return 0.0F;
    }
    const Ref<AUParameter> parameter =
        parameterTree->parameterWithAddress(static_cast<AUParameterAddress>(address));
    if (!parameter) {
        print("AudioUnitViewController: ERROR: The parameter address " + text(address) +
              " is not available.");
        return 0.0F;
    }
    return parameter->value();
}

void AudioUnitViewController::onTimer(NSTimer* /*instance*/) {
    constexpr std::int32_t kBypass = 7;
    if (!audioUnit_) {
        print("WARNING: The Audio unit is not initialized.");
        return;
    }
    if (audioUnit_->shouldBypassEffect() || !isViewVisible(unwrapImplicit(mainView)) ||
        audioUnit_->getParameter(kBypass) != 0.0F) {
        return;
    }
    unwrapImplicit(displayView)
        .setCompressionValues(audioUnit_->getDynamicsValue1(), audioUnit_->getDynamicsValue2());
    unwrapImplicit(displayView).setOutputValues(audioUnit_->getPeakValue1(), audioUnit_->getPeakValue2());
}

} // namespace qor
