#include "hosts/clap/ClapHost.h"

#include <cstdio>

namespace qor::clap {

template <class Extension>
const Extension* ClapHost::extension(const char* id) const noexcept {
    return host_->get_extension == nullptr ? nullptr
                                           : static_cast<const Extension*>(host_->get_extension(host_, id));
}

void ClapHost::askForExtensions() noexcept {
    params_ = extension<clap_host_params_t>(CLAP_EXT_PARAMS);
    timers_ = extension<clap_host_timer_support_t>(CLAP_EXT_TIMER_SUPPORT);
    descriptors_ = extension<HostDescriptors>(kExtDescriptors);
    gui_ = extension<clap_host_gui_t>(CLAP_EXT_GUI);
    threads_ = extension<clap_host_thread_check_t>(CLAP_EXT_THREAD_CHECK);
    log_ = extension<HostLog>(kExtLog);
}

void ClapHost::log(LogSeverity severity, const char* message) const noexcept {
    if (log_ != nullptr && log_->log != nullptr) {
        log_->log(host_, static_cast<std::int32_t>(severity), message);
    }
}

void ClapHost::requestCallback() const noexcept {
    if (host_->request_callback != nullptr) {
        host_->request_callback(host_);
    }
}

void ClapHost::valuesChanged() const noexcept {
    if (params_ != nullptr && params_->rescan != nullptr) {
        params_->rescan(host_, CLAP_PARAM_RESCAN_VALUES);
    }
}

void ClapHost::requestFlush() const noexcept {
    if (params_ != nullptr && params_->request_flush != nullptr) {
        params_->request_flush(host_);
    }
}

void ClapHost::requestResize(std::uint32_t width, std::uint32_t height) const noexcept {
    if (gui_ != nullptr && gui_->request_resize != nullptr) {
        gui_->request_resize(host_, width, height);
    }
}

void ClapHost::guiClosed(bool wasDestroyed) const noexcept {
    if (gui_ != nullptr && gui_->closed != nullptr) {
        gui_->closed(host_, wasDestroyed);
    }
}

std::optional<clap_id> ClapHost::registerTimer(std::uint32_t milliseconds) const noexcept {
    clap_id timer = CLAP_INVALID_ID;
    if (timers_ == nullptr || timers_->register_timer == nullptr ||
        !timers_->register_timer(host_, milliseconds, &timer)) {
        return std::nullopt;
    }
    return timer;
}

void ClapHost::unregisterTimer(clap_id timer) const noexcept {
    if (timers_ != nullptr && timers_->unregister_timer != nullptr) {
        timers_->unregister_timer(host_, timer);
    }
}

bool ClapHost::registerDescriptor(int descriptor) const noexcept {
    return descriptors_ != nullptr && descriptors_->add != nullptr &&
           descriptors_->add(host_, descriptor, kDescriptorReadable);
}

void ClapHost::unregisterDescriptor(int descriptor) const noexcept {
    if (descriptors_ != nullptr && descriptors_->remove != nullptr) {
        descriptors_->remove(host_, descriptor);
    }
}

bool ClapHost::checkThread(Promised promised, const char* call) const noexcept {
    if (threads_ == nullptr) {
        return true;
    }
    const bool wantsMain = promised == Promised::mainThread;
    const auto ask = wantsMain ? threads_->is_main_thread : threads_->is_audio_thread;
    if (ask == nullptr || ask(host_)) {
        return true;
    }
    char message[128];
    std::snprintf(message, sizeof message, "%s was not called on the %s thread", call,
                  wantsMain ? "main" : "audio");
    log(LogSeverity::hostMisbehaving, message);
    return false;
}

} // namespace qor::clap
