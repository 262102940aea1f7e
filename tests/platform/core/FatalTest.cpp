#include "platform/core/Fatal.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

TEST(FatalDeathTest, PrintsTheMessageAndAborts) {
    EXPECT_DEATH(platform::fatalError("the reason"), "^the reason\n$");
}

TEST(FatalDeathTest, UnwrapAndImplicitUnwrapHaveTheirOwnWords) {
    std::optional<int> none;
    const std::shared_ptr<int> null;
    EXPECT_DEATH((void)platform::unwrap(none),
                 "^Unexpectedly found nil while unwrapping an Optional value\n$");
    EXPECT_DEATH((void)platform::unwrapImplicit(null),
                 "^Unexpectedly found nil while implicitly unwrapping an Optional value\n$");
}

TEST(Fatal, UnwrapGivesTheValueByReference) {
    std::optional<int> some = 3;
    platform::unwrap(some) = 4;
    EXPECT_EQ(*some, 4);
}
