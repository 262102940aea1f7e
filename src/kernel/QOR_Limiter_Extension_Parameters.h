// Builds the parameter tree from the parameter table and joins it to the kernel.
#pragma once

#include "kernel/QOR_Limiter_ExtensionDSPKernelAdapter.h"

#include <vector>

namespace qor {

class QOR_Limiter_Extension_AudioUnit;

/// One per audio unit, made right after the adapter and never replaced. Construction pushes every default
/// into the kernel. Values may be read and set on any thread but the render thread.
class QOR_Limiter_Extension_Parameters {
public:
    /// The tree's callbacks keep the adapter.
    explicit QOR_Limiter_Extension_Parameters(
        const Ref<QOR_Limiter_ExtensionDSPKernelAdapter>& kernelAdapter);
    QOR_Limiter_Extension_Parameters(const QOR_Limiter_Extension_Parameters&) = delete;
    QOR_Limiter_Extension_Parameters& operator=(const QOR_Limiter_Extension_Parameters&) = delete;
    virtual ~QOR_Limiter_Extension_Parameters() = default;

    virtual const Ref<QOR_Limiter_Extension_AudioUnit>& unit() const { return unit_; }
    virtual void setUnit(Ref<QOR_Limiter_Extension_AudioUnit> unit) { unit_ = std::move(unit); }
    /// In place.
    virtual Ref<QOR_Limiter_Extension_AudioUnit>& modifyUnit() { return unit_; }

    virtual const Ref<AUParameterTree>& parameterTree() const { return parameterTree_; }
    virtual void setParameterTree(Ref<AUParameterTree> tree) { parameterTree_ = std::move(tree); }
    /// In place.
    virtual Ref<AUParameterTree>& modifyParameterTree() { return parameterTree_; }

private:
    virtual const std::vector<Ref<AUParameterGroup>>& groups() const { return groups_; }
    virtual void setGroups(std::vector<Ref<AUParameterGroup>> groups) { groups_ = std::move(groups); }
    virtual std::vector<Ref<AUParameterGroup>>& modifyGroups() { return groups_; }

    void create();

    Ref<QOR_Limiter_Extension_AudioUnit> unit_; // nothing assigns it
    Ref<AUParameterTree> parameterTree_ = makeRef<AUParameterTree>();
    std::vector<Ref<AUParameterGroup>> groups_;
};

} // namespace qor
