#include <gtest/gtest.h>
TEST(Frame, Placeholder) { EXPECT_TRUE(true); }
