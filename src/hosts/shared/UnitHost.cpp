#include "hosts/shared/UnitHost.h"

#include "kernel/ParameterTable.h"
#include "unit/UnitComponent.h"

#include <cmath>
#include <thread>
#include <utility>

namespace qor::host {

std::recursive_mutex& wholeProcessMutex() noexcept {
    static std::recursive_mutex mutex;
    return mutex;
}

UnitHost::UnitHost(const UnitHostOptions& options) : options_(options), loop_(*options.clock) {
    pullBlock_ = [this](AudioUnitRenderActionFlags* /*flags*/, const AudioTimeStamp* /*time*/,
                        std::uint32_t frames, long /*bus*/,
                        AudioBufferList* list) { return pull(frames, list); };
}

Result<std::unique_ptr<UnitHost>> UnitHost::create(const UnitHostOptions& options) {
    std::unique_ptr<UnitHost> host(new UnitHost(options));
    {
        const std::lock_guard process(wholeProcessMutex());
        const RunLoop::Scope scope(host->loop_);
        auto made = makeUnit();
        if (!made) {
            return made.error();
        }
        host->owned_ = std::move(made).value();
        host->live_ = host->owned_.get();
        host->shown_.store(host->owned_->unit->kernelAdapter.get());
    }
    if (options.serviced) {
        host->serviceThread_ = ServiceThread::acquire();
        host->serviceThread_->add(*host);
    }
    return host;
}

UnitHost::~UnitHost() {
    if (serviceThread_ != nullptr) {
        serviceThread_->remove(*this);
    }
    onUnitReplaced_ = nullptr;          // whoever wanted to know may be gone already
    const std::lock_guard lock(mutex_); // always before the process's
    const std::lock_guard process(wholeProcessMutex());
    const RunLoop::Scope scope(loop_);
    deactivate();
    loop_.pump();
    incoming_.reset();
    owned_.reset();
}

Result<std::unique_ptr<UnitHost::LiveUnit>> UnitHost::makeUnit() {
    auto unit = QOR_Limiter_Extension_AudioUnit::init(kQORLimiterComponent, {});
    if (!unit) {
        return unit.error();
    }
    auto live = std::make_unique<LiveUnit>();
    live->unit = std::move(unit).value();
    return live;
}

Result<void> UnitHost::activate(double sampleRate) {
    const std::lock_guard lock(mutex_);
    const RunLoop::Scope scope(loop_);
    deactivate();
    sampleRate_ = sampleRate;
    if (Result<void> allocated = allocate(*owned_); !allocated) {
        return allocated;
    }
    sampleTime_ = 0;
    bypass_.setSampleRate(sampleRate);
    bypass_.settle();
    live_ = owned_.get();
    active_ = true;
    return {};
}

Result<void> UnitHost::allocate(LiveUnit& live) const {
    QOR_Limiter_Extension_AudioUnit& unit = *live.unit;
    const Ref<AUAudioUnit> wrapped = unwrap(unit.effect).auAudioUnit();
    unit.setMaximumFramesToRender(kChunk);
    unwrap(wrapped).setMaximumFramesToRender(kChunk);
    // The unit's output bus is the wrapped unit's: what is set here is what it allocates for.
    const AVAudioFormat format(sampleRate_, 2);
    if (Result<void> set = unwrap(unit.outputBusses())[0].setFormat(format); !set) {
        return set;
    }
    if (Result<void> allocated = unit.allocateRenderResources(); !allocated) {
        unit.deallocateRenderResources();
        return allocated;
    }
    resendParameters(unit);
    live.render = unit.internalRenderBlock();
    return {};
}

void UnitHost::deactivate() {
    const std::lock_guard lock(mutex_);
    const RunLoop::Scope scope(loop_);
    if (!active_) {
        return;
    }
    active_ = false;
    next_.store(nullptr);
    if (incoming_ != nullptr) {
        takeIncomingUnit();
    }
    broken_.store(false);
    release(*owned_);
    live_ = owned_.get();
}

void UnitHost::release(LiveUnit& live) {
    live.render = nullptr;
    live.unit->deallocateRenderResources();
}

void UnitHost::reset() {
    const std::lock_guard lock(mutex_);
    const RunLoop::Scope scope(loop_);
    owned_->unit->reset();
    resendParameters(*owned_->unit);
    sampleTime_ = 0;
}

void UnitHost::resetInRender() noexcept {
    if (!broken_.load(std::memory_order_acquire)) {
        QOR_Limiter_Extension_AudioUnit& unit = *live_->unit;
        unit.kernelAdapter->reset();
        QOR_UNSEEN_BEGIN // the wrapped unit's virtual operation
        unwrap(unwrap(unit.effect).auAudioUnit()).reset();
        QOR_UNSEEN_END
        resendParameters(unit);
    }
    sampleTime_ = 0;
}

// Resetting opens the filter's edges wide, whatever their slots say, and an edge that is set while the other
// stands in its way is held at it: the lower one goes out of the way first.
void UnitHost::resendParameters(QOR_Limiter_Extension_AudioUnit& unit) noexcept {
    QOR_Limiter_ExtensionDSPKernelAdapter& adapter = *unit.kernelAdapter;
    const auto resend = [&adapter](AUParameterAddress address) {
        const auto number = static_cast<std::int32_t>(address);
        adapter.setParameterEx(number, adapter.getParameterEx(number));
    };
    for (const ParameterRow& row : kParameterTable) {
        if (row.address != kLimiterInputFilterHP && row.address != kLimiterInputFilterLP) {
            resend(row.address);
        }
    }
    constexpr auto kLower = static_cast<std::int32_t>(kLimiterInputFilterHP);
    const float lower = adapter.getParameterEx(kLower);
    adapter.setParameterEx(kLower, 0.0F);
    resend(kLimiterInputFilterLP);
    adapter.setParameterEx(kLower, lower);
}

Result<void> UnitHost::setParameter(AUParameterAddress address, float value,
                                    AUParameterObserverToken originator) {
    const ParameterRow* row = parameterRow(address);
    if (row == nullptr) {
        return NSError(NSOSStatusErrorDomain, kAudioUnitErr_InvalidParameter,
                       {{NSLocalizedDescriptionKey, "There is no parameter " + text(address) + "."}});
    }
    if (!std::isfinite(value)) {
        return NSError(
            NSOSStatusErrorDomain, kAudioUnitErr_InvalidParameter,
            {{NSLocalizedDescriptionKey, std::string("The value for ") + row->hostName + " is not finite."}});
    }
    const std::lock_guard lock(mutex_);
    const RunLoop::Scope scope(loop_);
    const float held = row->clamped(value);
    for (LiveUnit* live : {owned_.get(), incoming_.get()}) {
        if (live != nullptr) {
            unwrap(live->unit->parameterTree()->parameterWithAddress(address)).setValue(held, originator);
        }
    }
    return {};
}

void UnitHost::changeState(const Block<void(QOR_Limiter_Extension_AudioUnit&)>& change) {
    const std::lock_guard lock(mutex_);
    const std::lock_guard process(wholeProcessMutex());
    const RunLoop::Scope scope(loop_);
    for (LiveUnit* live : {owned_.get(), incoming_.get()}) {
        if (live != nullptr) {
            change(*live->unit);
            resendParameters(*live->unit);
        }
    }
}

void UnitHost::pump() {
    const std::lock_guard lock(mutex_);
    const RunLoop::Scope scope(loop_);
    replaceBrokenUnit();
    tellObservers();
    loop_.pump();
}

void UnitHost::service() {
    if (pumpedByHost_.load()) {
        return;
    }
    // A main thread that is busy with us pumps soon enough; waiting for it here would hold up other
    // instances.
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (lock.owns_lock()) {
        pump();
    }
}

// In two steps, with the render thread's move between them: a fresh unit is offered, the render thread takes
// it over and leaves the broken one behind, which can then go.
void UnitHost::replaceBrokenUnit() {
    if (!active_) {
        return;
    }
    const bool broken = broken_.load(std::memory_order_acquire);
    if (incoming_ != nullptr && !broken) {
        takeIncomingUnit();
        return;
    }
    if (!broken || incoming_ != nullptr) {
        return;
    }
    const std::lock_guard process(wholeProcessMutex());
    auto made = makeUnit();
    if (!made) {
        return; // the held-down input goes on; the next pump tries again
    }
    std::unique_ptr<LiveUnit> fresh = std::move(made).value();
    for (const ParameterRow& row : kParameterTable) {
        const float sound = row.clamped(parameter(row.address));
        unwrap(fresh->unit->parameterTree()->parameterWithAddress(row.address)).setValue(sound);
    }
    if (!allocate(*fresh)) {
        return;
    }
    incoming_ = std::move(fresh);
    next_.store(incoming_.get(), std::memory_order_release);
}

// The render thread has let go of the old unit by now; threads that read its values may still be at it.
void UnitHost::takeIncomingUnit() {
    shown_.store(incoming_->unit->kernelAdapter.get());
    while (readers_.load() != 0) {
        std::this_thread::yield();
    }
    const std::lock_guard process(wholeProcessMutex());
    release(*owned_);
    owned_ = std::move(incoming_);
    if (onUnitReplaced_) {
        onUnitReplaced_();
    }
}

// Only the newest value matters on the way up, and that stands in the kernel.
void UnitHost::tellObservers() {
    std::uint32_t moved = automated_.exchange(0, std::memory_order_acquire);
    const Ref<AUParameterTree> tree = owned_->unit->parameterTree();
    for (AUParameterAddress address = 0; moved != 0; ++address, moved >>= 1) {
        if ((moved & 1U) != 0) {
            unwrap(tree->parameterWithAddress(address)).valueDidChange(parameter(address));
        }
    }
}

float UnitHost::parameter(AUParameterAddress address) const noexcept {
    return Reading(*this)->getParameterEx(static_cast<std::int32_t>(address));
}

Meters UnitHost::meters() const noexcept {
    const Reading adapter(*this);
    return {adapter->getDynamicsValue1(), adapter->getDynamicsValue2(), adapter->getPeakValue1(),
            adapter->getPeakValue2()};
}

} // namespace qor::host
