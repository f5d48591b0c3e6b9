#include "Check.h"

#include "tests/support/Test.h"

TEST(Check, EndsTheProgramWithWhatDoesNotHold)
{
    EXPECT_DEATH(
        CheckFailure("a < b", "file", 7).Stream() << 9, "^file:7: <a < b> does not hold 9\n");
}
