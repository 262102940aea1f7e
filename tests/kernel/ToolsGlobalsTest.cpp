#include "TOOLS/SOURCES/CString.h"
#include "kernel/QOR_Limiter_ExtensionDSPKernelAdapter.h"

#include <gtest/gtest.h>

#include <memory>

// This program's own unit has no globals of the tools, so those that are counted are the library's and the
// adapter's.
TEST(KernelAdapter, ItsUnitHasAnInvalidAndAnEmptyStringOfItsOwn) {
    const auto adapter = std::make_unique<qor::QOR_Limiter_ExtensionDSPKernelAdapter>();
    // The library's two and its shared result string, and the adapter's two; the count starts at -1.
    EXPECT_EQ(RVK::CString::count, 3 + 2 - 1);
}
