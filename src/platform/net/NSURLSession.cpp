#include "platform/net/NSURLSession.h"

#include "platform/net/Transfer.h"

#include <optional>

namespace platform {

NSURLSession::~NSURLSession() {
    for (Running& request : running_) {
        request.thread.request_stop(); // all at once; the list's end joins them
    }
}

NSURLSession& NSURLSession::sharedSession() {
    static NSURLSession session;
    return session;
}

void NSURLSession::data(const URLRequest& request, const Completion& completion) {
    RunLoop::Remote loop = RunLoop::current().remote();
    const std::lock_guard lock(mutex_);
    dropFinished();
    Running& running = running_.emplace_back();
    running.thread = std::jthread([&running, request, loop, completion](const std::stop_token& stop) mutable {
        Result<Transferred> loaded = transfer(request, stop);
        if (!stop.stop_requested()) {
            const auto answer = makeRef<Result<Answer>>(
                loaded ? Result<Answer>(Answer{std::move(loaded.value().data), loaded.value().response})
                       : Result<Answer>(loaded.error()));
            loop.async([answer, completion] { completion(*answer); });
        }
        running.finished.store(true, std::memory_order_release);
    });
}

void NSURLSession::waitUntilIdle() {
    const std::lock_guard lock(mutex_);
    for (Running& request : running_) {
        if (request.thread.joinable()) {
            request.thread.join();
        }
    }
    running_.clear();
}

void NSURLSession::dropFinished() {
    running_.remove_if(
        [](const Running& request) { return request.finished.load(std::memory_order_acquire); });
}

} // namespace platform
