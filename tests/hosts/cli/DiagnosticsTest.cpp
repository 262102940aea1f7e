// Runs the built program's diagnostics command.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using test::Outcome;
using test::runProgram;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(Diagnostics, PrintTheNodeItsUnitAndTheUnitsBusesInThisOrder) {
    const Outcome outcome = runProgram({"diagnostics"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.output,
                StartsWith("AUPeakLimiter::nodeDiagnostics(): ---------------------------------------------\n"
                           " - node name: "));
    std::size_t at = 0;
    for (const char* line :
         {"\n - node unit: ", "\n -- unit all parameter values: ", "\n -- unit input bus count: 1\n",
          "\n --- bus 0 type: input\n", "\n -- unit output bus count: 1\n", "\n --- bus 0 type: output\n",
          "\n -- unit midi cable count: ", "\n - node output presentation latency: "}) {
        const std::size_t found = outcome.output.find(line, at);
        ASSERT_NE(found, std::string::npos) << line;
        at = found;
    }
}

TEST(Diagnostics, HoldNoneOfTheLinesOfTheUnitsConstruction) {
    const Outcome outcome = runProgram({"diagnostics"});
    EXPECT_THAT(outcome.output, Not(HasSubstr("unit received parameter")));
    EXPECT_THAT(outcome.output, Not(HasSubstr("AUExtension::init()")));
}

TEST(Diagnostics, ToAFullDeviceIsAFailure) {
    const Outcome outcome =
        runProgram({"diagnostics"}, [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("cannot write to standard output"));
}
