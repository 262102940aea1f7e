// A kernel with buffers attached.
#pragma once

#include "kernel/QOR_Limiter_Extension_DSPKernel.h"
#include "kernel/Samples.h"

#include <array>
#include <memory>

namespace test {

struct KernelHarness {
    explicit KernelHarness(int frames = 512)
        : in{wave(frames, 0.07F, 1.2F), wave(frames, 0.13F, 0.9F), wave(frames, 0.29F, 0.4F)},
          out{Samples(in[0].size()), Samples(in[0].size()), Samples(in[0].size())} {
        attach();
    }

    /// The values at which the input filter is out of the way and the modes are heard plainly.
    void makePlain() {
        kernel->setParameter(qor::kLimiterInputFilterHP, 0.0F);
        kernel->setParameter(qor::kLimiterInputFilterLP, 1.0F);
    }

    void attach() {
        platform::AudioBuffer* inBuffers = inList.list.mBuffers;
        platform::AudioBuffer* outBuffers = outList.list.mBuffers;
        for (std::size_t c = 0; c < 3; ++c) {
            inBuffers[c].mData = in[c].data();
            outBuffers[c].mData = out[c].data();
        }
        kernel->setBuffers(&inList.list, &outList.list);
    }

    void process() { kernel->process(static_cast<unsigned>(in[0].size()), 0); }

    std::unique_ptr<qor::QOR_Limiter_Extension_DSPKernel> kernel =
        std::make_unique<qor::QOR_Limiter_Extension_DSPKernel>();
    std::array<Samples, 3> in;
    std::array<Samples, 3> out;
    platform::AudioBufferListStorage<3> inList;
    platform::AudioBufferListStorage<3> outList;
};

} // namespace test
