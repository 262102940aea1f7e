#include "platform/audio/AUParameterNode.h"

#include "platform/audio/AUParameterGroup.h"

#include <algorithm>
#include <atomic>

namespace platform {

std::string AUParameterNode::keyPath() const {
    if (parent_ == nullptr) {
        return identifier_;
    }
    const std::string above = parent_->parent() == nullptr ? std::string() : parent_->keyPath() + ".";
    return above + identifier_;
}

AUParameterObserverToken AUParameterNode::tokenByAddingParameterObserver(AUParameterObserver observer) {
    static std::atomic<AUParameterObserverToken> lastToken{0};
    const AUParameterObserverToken token = lastToken.fetch_add(1, std::memory_order_relaxed) + 1;
    const std::lock_guard lock(mutex_);
    observers_.push_back({token, std::move(observer), &RunLoop::current()});
    return token;
}

void AUParameterNode::removeParameterObserver(AUParameterObserverToken token) {
    AUParameterObserver removed; // dropped outside the lock: it may own anything
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(observers_.begin(), observers_.end(),
                                    [token](const Registration& r) { return r.token == token; });
    if (found != observers_.end()) {
        removed = std::move(found->observer);
        observers_.erase(found);
    }
}

std::size_t AUParameterNode::parameterObserverCount() const {
    const std::lock_guard lock(mutex_);
    return observers_.size();
}

bool AUParameterNode::isRegistered(AUParameterObserverToken token) const {
    return std::any_of(observers_.begin(), observers_.end(),
                       [token](const Registration& r) { return r.token == token; });
}

void AUParameterNode::notifyObservers(AUParameterAddress address, AUValue value,
                                      AUParameterObserverToken originator) {
    const std::lock_guard lock(mutex_);
    const std::vector<Registration> registered = observers_; // an observer may change the list
    for (const Registration& registration : registered) {
        if (registration.token != originator && isRegistered(registration.token)) {
            const RunLoop::Scope scope(*registration.loop);
            registration.observer(address, value);
        }
    }
}

} // namespace platform
