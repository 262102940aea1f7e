// Loading in the background.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/Ref.h"
#include "platform/core/Result.h"
#include "platform/core/RunLoop.h"
#include "platform/files/Data.h"
#include "platform/net/URLRequest.h"
#include "platform/net/URLResponse.h"

#include <atomic>
#include <list>
#include <mutex>
#include <thread>

namespace platform {

/// Runs each request on a thread of its own. At its end it breaks off what is still under way, without
/// calling back.
class NSURLSession {
public:
    struct Answer {
        Data data;
        Ref<URLResponse> response;
    };
    using Completion = Block<void(Result<Answer>&)>;

    NSURLSession() = default;
    ~NSURLSession();
    NSURLSession(const NSURLSession&) = delete;
    NSURLSession& operator=(const NSURLSession&) = delete;

    /// The one that the process shares; ends with it.
    static NSURLSession& sharedSession();

    /// Starts a request and calls back once, on the run loop that is current now, unless that loop or the
    /// session ends first. An answer with any HTTP status is no failure.
    void data(const URLRequest& request, const Completion& completion);
    /// Waits until every request has handed its answer to its run loop.
    void waitUntilIdle();

private:
    struct Running {
        std::atomic<bool> finished{false};
        std::jthread thread; // ends ahead of `finished`
    };

    void dropFinished();

    std::mutex mutex_;
    std::list<Running> running_;
};

} // namespace platform
