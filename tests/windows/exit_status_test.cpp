// The exit status of an end that nobody caught is the runtime's: on Windows 3, as the manual says.
#include <gtest/gtest.h>

#include "support/conversion.h"

TEST(ExitStatus, OfAnUnknownOptionIs3) {
    EXPECT_EQ(testsupport::runProgram({"--no-such-option"}).exitStatus, 3);
}

TEST(ExitStatus, OfALogsNameOfThreeCharactersIs3) {
    EXPECT_EQ(testsupport::runProgram({"-f", "a.b"}, "", "a.b").exitStatus, 3);
}
