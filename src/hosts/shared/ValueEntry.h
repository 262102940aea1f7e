// A text field that opens over a value and goes again.
#pragma once

#include "kernel/ParameterTable.h"
#include "platform/view/View.h"

namespace qor::host {

/// Enter takes the value, escape or a click elsewhere leaves it as it was.
class ValueEntry {
public:
    /// Called with a value inside the parameter's range.
    using OnValue = Block<void(const ParameterRow&, float)>;
    /// Called with a text that is no value of the parameter.
    using OnRefusal = Block<void(const ParameterRow&)>;

    ValueEntry(OnValue onValue, OnRefusal onRefusal);
    ~ValueEntry();
    ValueEntry(const ValueEntry&) = delete;
    ValueEntry& operator=(const ValueEntry&) = delete;

    /// Opens over a place of `host`, which must be in a window.
    void open(UIView& host, const CGRect& place, const ParameterRow& row, float value);
    void close();
    bool isOpen() const noexcept { return field_ != nullptr; }

private:
    void take();

    OnValue onValue_;
    OnRefusal onRefusal_;
    Ref<UITextField> field_;
    const ParameterRow* row_ = nullptr;
};

} // namespace qor::host
