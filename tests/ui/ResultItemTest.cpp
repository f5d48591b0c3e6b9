#include "ui/ResultItem.h"

#include <gtest/gtest.h>

TEST(ResultItem, HoldsTheFirstEightRatesOnly)
{
    ResultItem item("Strings");
    for (int slot = -1; slot < 20; slot++)
        item.Rate(slot, float(slot) + 0.5f);
    EXPECT_EQ(item.Quantity(), 8);
    EXPECT_EQ(item.Rate(0), 0.5f);
    EXPECT_EQ(item.Rate(7), 7.5f);
}

TEST(ResultItem, CountsARateThatReplacesAnother)
{
    ResultItem item("Strings");
    item.Rate(3, 1);
    item.Rate(3, 2);
    EXPECT_EQ(item.Quantity(), 2);
    EXPECT_EQ(item.Rate(3), 2);
    item.Quantity(1);
    EXPECT_EQ(item.Quantity(), 1);
}

TEST(ResultItem, TakesAMissingTextForAnEmptyOne)
{
    ResultItem item(nullptr);
    item.Units(nullptr);
    EXPECT_STREQ(item.Description(), "");
    EXPECT_STREQ(item.Units(), "");
}
