// What the tests of states and presets share.
#pragma once

#include "hosts/shared/StateChunk.h"
#include "platform/core/Log.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace test {

/// A unit in a host without a service thread, its log lines dropped.
class StateHost : public testing::Test {
    // First, so that construction is quiet too.
    platform::LogSink& before_ = platform::setLogSink(platform::discardingSink());

protected:
    ~StateHost() override {
        host_.reset();
        platform::setLogSink(before_);
    }

    static std::unique_ptr<qor::host::UnitHost> makeHost() {
        qor::host::UnitHostOptions options;
        options.serviced = false;
        return std::move(qor::host::UnitHost::create(options)).value();
    }

    std::unique_ptr<qor::host::UnitHost> host_ = makeHost();
};

/// Any value inside each range, bit patterns of all sizes.
inline qor::host::ParameterValues randomValues(std::mt19937& random) {
    qor::host::ParameterValues values{};
    for (const qor::ParameterRow& row : qor::kParameterTable) {
        const auto part = static_cast<float>(random() % 16777217U) / 16777216.0F;
        values.at(row.address) = row.clamped(row.minimum + part * (row.maximum - row.minimum));
    }
    return values;
}

} // namespace test
