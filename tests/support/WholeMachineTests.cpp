// Linked into a test program, lets each of its tests have the whole machine.
#include "tests/support/Test.h"
#include "tests/support/WholeMachine.h"

namespace {
class WholeMachine : public testing::Environment {
    void SetUp() override { ASSERT_TRUE(TakeWholeMachine()); }
};

[[maybe_unused]] const testing::Environment* const gMachine =
    testing::AddGlobalTestEnvironment(new WholeMachine);
} // namespace
