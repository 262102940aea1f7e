// The whole unit as a render engine, driven as the plug-ins drive it.
#pragma once

#include "hosts/cli/RenderEngine.h"
#include "hosts/shared/UnitHost.h"

#include <memory>
#include <vector>

namespace qor::cli {

class UnitEngine final : public RenderEngine {
public:
    /// With `plainPull` the final limiter is fed with the dry input, as the unit by itself asks for it.
    static Result<std::unique_ptr<UnitEngine>> create(bool plainPull);

    Result<void> allocate(double sampleRate) override;
    Result<void> setParameter(AUParameterAddress address, float value) override;
    void setRawParameter(std::int32_t address, float value) override;
    Result<void> render(std::int64_t sampleTime, std::span<const AutomationEvent> events,
                        std::uint32_t frames, const float* const input[2], float* const output[2]) override;
    MeterValues meters() override;
    std::uint64_t breakdowns() const override { return host_->replacements(); }

private:
    explicit UnitEngine(std::unique_ptr<host::UnitHost> host) : host_(std::move(host)) {}

    std::unique_ptr<host::UnitHost> host_;
    std::vector<host::HostEvent> events_;
};

} // namespace qor::cli
