// The half of an instance that belongs to the main thread.
#include "hosts/clap/ClapInstance.h"

#include "hosts/clap/ClapEvents.h"
#include "hosts/clap/ClapParameters.h"
#include "hosts/clap/ClapState.h"
#include "hosts/clap/ClapStream.h"

#include <cmath>
#include <mutex>
#include <string>
#include <vector>

namespace qor::clap {

namespace {

// Beyond these no audio device goes, and the limiter's arithmetic has not been looked at.
constexpr double kLowestRate = 1000.0;
constexpr double kHighestRate = 1536000.0;

} // namespace

bool ClapInstance::init() {
    host_.askForExtensions();
    runtime_ = host::PluginRuntime::acquire();
    auto made = host::UnitHost::create();
    if (!made) {
        host_.log(LogSeverity::error,
                  ("QOR Limiter could not be made: " + made.error().localizedDescription()).c_str());
        return false;
    }
    unit_ = std::move(made).value();
    pulse_.emplace(host_, *unit_);
    editor_ = std::make_unique<ClapEditor>(*unit_, host_, edits_, *pulse_);
    return true;
}

bool ClapInstance::activate(double sampleRate) {
    if (!(sampleRate >= kLowestRate && sampleRate <= kHighestRate)) {
        host_.log(LogSeverity::error, ("QOR Limiter can't run at " + text(sampleRate) + " Hz").c_str());
        return false;
    }
    if (const Result<void> ready = unit_->activate(sampleRate); !ready) {
        host_.log(LogSeverity::error, ("QOR Limiter can't run at " + text(sampleRate) +
                                       " Hz: " + ready.error().localizedDescription())
                                          .c_str());
        return false;
    }
    active_.store(true, std::memory_order_relaxed);
    return true;
}

void ClapInstance::deactivate() {
    active_.store(false, std::memory_order_relaxed);
    unit_->deactivate();
}

bool ClapInstance::save(const clap_ostream_t* stream) {
    std::vector<std::uint8_t> bytes;
    {
        const std::lock_guard lock(unit_->mutex());
        bytes = saveInstance(*unit_);
    }
    if (writeAll(stream, bytes)) {
        return true;
    }
    host_.log(LogSeverity::error, "QOR Limiter's state was not saved: the host's stream did not take it");
    return false;
}

bool ClapInstance::load(const clap_istream_t* stream) {
    const auto bytes = readAll(stream);
    if (!bytes) {
        host_.log(LogSeverity::error,
                  "QOR Limiter's state was not loaded: the host's stream failed or has no end");
        return false;
    }
    if (const Result<void> restored = restoreInstance(*unit_, *bytes); !restored) {
        host_.log(LogSeverity::error,
                  ("QOR Limiter's state was not loaded: " + restored.error().localizedDescription()).c_str());
        return false;
    }
    host_.valuesChanged();
    return true;
}

bool ClapInstance::value(clap_id id, double& value) const {
    if (!isKnownParameter(id)) {
        return false;
    }
    const std::lock_guard lock(unit_->mutex()); // the service thread may put a fresh unit in place
    value = id == kBypassId ? (unit_->isBypassed() ? 1.0 : 0.0) : static_cast<double>(unit_->parameter(id));
    return true;
}

void ClapInstance::onMainThread() {
    pulse_->answered();
    unit_->pump();
    editor_->pump();
}

// Without frames nothing is rendered, and the tree hears of the values at once.
void ClapInstance::flushInactive(const clap_input_events_t* events) {
    const std::uint32_t count = eventCount(events);
    for (std::uint32_t i = 0; i < count; ++i) {
        const clap_event_header_t* const header = events->get(events, i);
        if (const auto bypass = toBypassEvent(header)) {
            unit_->setBypassed(bypass->bypassed);
            continue;
        }
        if (const host::HostEvent event = toHostEvent(header); event.kind == host::HostEventKind::Parameter) {
            // The event holds a known address and a finite value, so nothing is left to refuse.
            static_cast<void>(unit_->setParameter(event.address, event.value));
        }
    }
}

void ClapInstance::flush(const clap_input_events_t* events, const clap_output_events_t* edits) {
    if (!isActive()) {
        flushInactive(events);
    } else {
        clap_process_t block{};
        block.in_events = events;
        render(block);
    }
    sendEdits(edits_, edits, 0);
}

// The input filter rings on for a moment; the limiter itself adds nothing to silence.
std::uint32_t ClapInstance::tail() const noexcept {
    return static_cast<std::uint32_t>(std::lround(unit_->sampleRate())); // a second
}

} // namespace qor::clap
