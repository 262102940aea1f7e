#include "hosts/clap/ClapPulse.h"

#include <cstdint>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace qor::clap {

namespace {

constexpr std::uint32_t kPeriod = 20; // ms
constexpr long kNanosecondsPerMillisecond = 1000000;

} // namespace

ClapPulse::ClapPulse(const ClapHost& host, host::UnitHost& unit)
    : host_(host), unit_(unit), timer_(host.registerTimer(kPeriod)) {
    unit_.setPumpedByHost(timer_.has_value());
}

ClapPulse::~ClapPulse() {
    endWindow();
    if (timer_) {
        host_.unregisterTimer(*timer_);
    }
}

void ClapPulse::beginWindow(int input) {
    endWindow();
    if (host_.registerDescriptor(input)) {
        input_ = input;
    }
    if (timer_ || startTimerDescriptor()) {
        return;
    }
    unanswered_ = 0;
    told_ = false;
    serviceThread_ = host::ServiceThread::acquire();
    serviceThread_->add(*this);
}

void ClapPulse::endWindow() {
    if (input_ >= 0) {
        host_.unregisterDescriptor(std::exchange(input_, -1));
    }
    stopTimerDescriptor();
    if (serviceThread_ != nullptr) {
        serviceThread_->remove(*this);
        serviceThread_.reset();
    }
}

bool ClapPulse::startTimerDescriptor() {
    const int made = ::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
    if (made < 0) {
        return false;
    }
    const timespec period{.tv_sec = 0, .tv_nsec = kPeriod * kNanosecondsPerMillisecond};
    const itimerspec schedule{.it_interval = period, .it_value = period};
    if (::timerfd_settime(made, 0, &schedule, nullptr) != 0 || !host_.registerDescriptor(made)) {
        ::close(made);
        return false;
    }
    timerDescriptor_ = made;
    return true;
}

void ClapPulse::stopTimerDescriptor() {
    if (timerDescriptor_ >= 0) {
        host_.unregisterDescriptor(timerDescriptor_);
        ::close(std::exchange(timerDescriptor_, -1));
    }
}

void ClapPulse::ask() noexcept {
    if (!timer_ && !asked_.exchange(true)) {
        QOR_UNSEEN_BEGIN // the host's callback
        host_.requestCallback();
        QOR_UNSEEN_END
    }
}

void ClapPulse::answered() noexcept {
    asked_.store(false);
    if (timerDescriptor_ >= 0) {
        std::uint64_t expirations = 0; // readable no longer; nothing to read if another call came first
        static_cast<void>(::read(timerDescriptor_, &expirations, sizeof expirations));
    }
}

void ClapPulse::tick() noexcept {
    if (!asked_.exchange(true)) {
        unanswered_ = 0;
        host_.requestCallback();
        return;
    }
    ++unanswered_;
    if (unanswered_ % kTicksUntilRepeat == 0) {
        host_.requestCallback(); // the first one may have been lost
    }
    if (unanswered_ >= kTicksUntilTold && !told_) {
        told_ = true;
        unit_.setPumpedByHost(false);
        host_.log(
            LogSeverity::hostMisbehaving,
            "QOR Limiter's editor stands still: the host offers neither timers nor descriptors, and has "
            "not answered request_callback for two seconds");
    }
}

} // namespace qor::clap
