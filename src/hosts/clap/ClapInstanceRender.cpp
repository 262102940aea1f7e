// The half of an instance that runs on the audio thread.
#include "hosts/clap/ClapInstance.h"

#include "hosts/clap/ClapEvents.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace qor::clap {

namespace {

/// The two channels of a port; null where the host gives none. Only the first port counts, and only 32-bit
/// samples, which are all that the ports were declared with.
template <class Buffers>
std::array<float*, 2> channelsOf(Buffers* buffers, std::uint32_t portCount) noexcept {
    std::array<float*, 2> channels{};
    if (buffers == nullptr || portCount == 0 || buffers->data32 == nullptr) {
        return channels;
    }
    for (std::uint32_t c = 0; c < 2 && c < buffers->channel_count; ++c) {
        channels[c] = buffers->data32[c];
    }
    return channels;
}

/// A host that gives more channels or ports than were declared gets silence there.
void silenceSurplus(const clap_process_t& block) noexcept {
    for (std::uint32_t port = 0; block.audio_outputs != nullptr && port < block.audio_outputs_count; ++port) {
        clap_audio_buffer_t& buffer = block.audio_outputs[port];
        buffer.constant_mask = 0;
        for (std::uint32_t c = port == 0 ? 2 : 0; buffer.data32 != nullptr && c < buffer.channel_count; ++c) {
            if (buffer.data32[c] != nullptr) {
                std::fill_n(buffer.data32[c], block.frames_count, 0.0F);
            }
        }
    }
}

/// The moves of the host's bypass within a block, in the order of their frames.
class BypassMoves {
public:
    /// Returns whether the list also moves parameters of the unit. A move behind the block's end, or ahead of
    /// one that came before it in the list, is held at the nearest frame.
    bool collect(const clap_input_events_t* events, std::uint32_t frames) noexcept QOR_NONBLOCKING {
        bool anyParameter = false;
        std::uint32_t reached = 0;
        const std::uint32_t count = eventCount(events);
        for (std::uint32_t i = 0; i < count; ++i) {
            QOR_UNSEEN_BEGIN // the host's callback
            const clap_event_header_t* const header = events->get(events, i);
            QOR_UNSEEN_END
            if (const auto move = toBypassEvent(header)) {
                reached = frames == 0 ? 0 : std::clamp(move->frame, reached, frames - 1);
                add({reached, move->bypassed});
            } else {
                anyParameter = anyParameter || toHostEvent(header).kind == host::HostEventKind::Parameter;
            }
        }
        return anyParameter;
    }
    std::span<const BypassEvent> all() const noexcept { return {moves_.data(), count_}; }

private:
    /// A host may send any number of moves; beyond these in one block only the last one counts.
    static constexpr std::size_t kMost = 64;

    void add(const BypassEvent& move) noexcept {
        if (count_ != 0 && (moves_[count_ - 1].frame == move.frame || count_ == kMost)) {
            moves_[count_ - 1].bypassed = move.bypassed;
        } else {
            moves_[count_++] = move;
        }
    }

    std::array<BypassEvent, kMost> moves_{};
    std::size_t count_ = 0;
};

} // namespace

bool ClapInstance::startProcessing() noexcept {
    return isActive();
}

void ClapInstance::reset() noexcept {
    if (isActive()) {
        unit_->resetInRender();
        unit_->settleBypass();
    }
}

clap_process_status ClapInstance::process(const clap_process_t& block) noexcept {
    if (!isActive()) {
        return CLAP_PROCESS_ERROR;
    }
    render(block);
    sendEdits(edits_, block.out_events, block.frames_count == 0 ? 0 : block.frames_count - 1);
    silenceSurplus(block);
    const bool unusable = block.frames_count != 0 && block.audio_outputs_count != 0 &&
                          (block.audio_outputs == nullptr || block.audio_outputs[0].data32 == nullptr);
    return unusable ? CLAP_PROCESS_ERROR : CLAP_PROCESS_CONTINUE;
}

// The block is cut where the host's bypass moves, so that the crossfade begins on that frame.
void ClapInstance::render(const clap_process_t& block) noexcept {
    const auto input = channelsOf(block.audio_inputs, block.audio_inputs_count);
    const auto output = channelsOf(block.audio_outputs, block.audio_outputs_count);
    const auto stretch = [&](std::uint32_t start, std::uint32_t end, bool isLast) {
        const float* in[2];
        float* out[2];
        for (std::size_t c = 0; c < 2; ++c) {
            in[c] = input[c] == nullptr ? nullptr : input[c] + start;
            out[c] = output[c] == nullptr ? nullptr : output[c] + start;
        }
        unit_->render(in, out, end - start, StretchEvents(block.in_events, start, end, isLast));
    };

    BypassMoves moves;
    const bool anyParameter = moves.collect(block.in_events, block.frames_count);
    std::uint32_t position = 0;
    for (const BypassEvent& move : moves.all()) {
        if (move.bypassed == unit_->isBypassed()) {
            continue;
        }
        if (move.frame > position) {
            stretch(position, move.frame, false);
            position = move.frame;
        }
        unit_->setBypassed(move.bypassed);
    }
    stretch(position, block.frames_count, true);
    if (anyParameter) {
        pulse_->ask();
    }
}

} // namespace qor::clap
