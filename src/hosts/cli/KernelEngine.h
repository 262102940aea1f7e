// The kernel alone as a render engine, by way of its adapter: no final limiter, no corrections.
#pragma once

#include "hosts/cli/RenderEngine.h"
#include "kernel/QOR_Limiter_Extension_Parameters.h"

namespace qor::cli {

class KernelEngine final : public RenderEngine {
public:
    KernelEngine();

    Result<void> allocate(double sampleRate) override;
    void setParameter(AUParameterAddress address, float value) override;
    void setRawParameter(std::int32_t address, float value) override;
    Result<void> render(std::int64_t sampleTime, std::uint32_t frames, const AURenderEvent* events,
                        const float* const input[2], float* const output[2]) override;
    MeterValues meters() override;

private:
    Ref<QOR_Limiter_ExtensionDSPKernelAdapter> adapter_;
    QOR_Limiter_Extension_Parameters parameters_;
    AUInternalRenderBlock renderBlock_;
    AURenderPullInputBlock pullBlock_;
    const float* const* input_ = nullptr; // of the render call in progress
};

} // namespace qor::cli
