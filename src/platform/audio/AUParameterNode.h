// What parameters and groups of parameters have in common: names, a place in the tree, callbacks, observers.
#pragma once

#include "platform/audio/AudioTypes.h"
#include "platform/core/Block.h"
#include "platform/core/Ref.h"
#include "platform/core/RunLoop.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace platform {

class AUParameter;
class AUParameterGroup;

/// Names a registered observer; 0 names none.
using AUParameterObserverToken = std::uint64_t;

using AUImplementorValueObserver = Block<void(AUParameter&, AUValue)>;
using AUImplementorValueProvider = Block<AUValue(AUParameter&)>;
/// The value may be absent: then the parameter's own is meant.
using AUImplementorStringFromValueCallback = Block<std::string(AUParameter&, const AUValue*)>;
using AUImplementorValueFromStringCallback = Block<AUValue(AUParameter&, const std::string&)>;
using AUParameterObserver = Block<void(AUParameterAddress, AUValue)>;

/// A node of the parameter tree. The callbacks hold for the node and all below it, a nearer one before one
/// further up; they are set before the tree is shared between threads. A node without a parent is a root.
class AUParameterNode {
public:
    AUParameterNode(const AUParameterNode&) = delete;
    AUParameterNode& operator=(const AUParameterNode&) = delete;
    virtual ~AUParameterNode() = default;

    const std::string& identifier() const noexcept { return identifier_; }
    const std::string& displayName() const noexcept { return displayName_; }
    /// The identifiers from below the root down to here, joined by points.
    std::string keyPath() const;
    AUParameterGroup* parent() const noexcept { return parent_; }

    /// Called on the thread that sets a value, before the observers.
    AUImplementorValueObserver implementorValueObserver;
    /// Called whenever a value is read.
    AUImplementorValueProvider implementorValueProvider;
    AUImplementorStringFromValueCallback implementorStringFromValueCallback;
    AUImplementorValueFromStringCallback implementorValueFromStringCallback;

    /// Registers an observer for the parameters at and below this node. It runs on the thread that sets the
    /// value, at once, within the run loop that is current now: what it queues lands on the registrant's
    /// loop, so that loop must outlive the registration. Any thread but the render thread.
    AUParameterObserverToken tokenByAddingParameterObserver(AUParameterObserver observer);
    /// Ends the registration; a call in progress on another thread is waited for. An unknown token does
    /// nothing.
    void removeParameterObserver(AUParameterObserverToken token);
    /// Registered observers at this node. For tests and diagnostics.
    std::size_t parameterObserverCount() const;

protected:
    AUParameterNode(std::string identifier, std::string displayName)
        : identifier_(std::move(identifier)), displayName_(std::move(displayName)) {}

    /// Tells this node's observers, `originator` left out.
    void notifyObservers(AUParameterAddress address, AUValue value, AUParameterObserverToken originator);

private:
    friend class AUParameter;
    friend class AUParameterGroup;

    struct Registration {
        AUParameterObserverToken token;
        AUParameterObserver observer;
        RunLoop* loop;
    };

    bool isRegistered(AUParameterObserverToken token) const;

    std::string identifier_;
    std::string displayName_;
    AUParameterGroup* parent_ = nullptr;
    mutable std::recursive_mutex mutex_; // an observer may register, remove and set values itself
    std::vector<Registration> observers_;
};

} // namespace platform
