// Numbers in sentences.

#include "base/counted.h"

#include <gtest/gtest.h>

namespace zarven::tool::counted_test {
namespace {

TEST(Counted, OnlyOneIsSingular) {
    EXPECT_EQ(counted(0, "module"), "0 modules");
    EXPECT_EQ(counted(1, "CA PID"), "1 CA PID");
    EXPECT_EQ(counted(2, "module"), "2 modules");
}

} // namespace
} // namespace zarven::tool::counted_test
