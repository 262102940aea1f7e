#include "hosts/shared/ServiceThread.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace qor::host {

namespace {

constexpr std::chrono::milliseconds kPeriod{20};

class Worker final : public ServiceThread {
public:
    Worker() : thread_([this] { run(); }) {}
    ~Worker() override {
        {
            const std::lock_guard lock(mutex_);
            ending_ = true;
        }
        wake_.notify_one();
        thread_.join();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void add(Serviced& serviced) override {
        const std::lock_guard lock(mutex_);
        serviced_.push_back(&serviced);
    }
    void remove(Serviced& serviced) override {
        const std::lock_guard lock(mutex_);
        std::erase(serviced_, &serviced);
    }

private:
    void run() {
        std::unique_lock lock(mutex_);
        while (!wake_.wait_for(lock, kPeriod, [this] { return ending_; })) {
            for (Serviced* serviced : serviced_) {
                serviced->service();
            }
        }
    }

    std::mutex mutex_;
    std::condition_variable wake_;
    bool ending_ = false;
    std::vector<Serviced*> serviced_;
    std::thread thread_;
};

} // namespace

std::shared_ptr<ServiceThread> ServiceThread::acquire() {
    static std::mutex mutex;
    static std::weak_ptr<Worker> running;
    const std::lock_guard lock(mutex);
    std::shared_ptr<Worker> worker = running.lock();
    if (worker == nullptr) {
        worker = std::make_shared<Worker>();
        running = worker;
    }
    return worker;
}

} // namespace qor::host
