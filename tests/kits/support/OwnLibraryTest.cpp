#include "tests/support/Test.h"

#include <OwnLibrary.h>

TEST(OwnLibrary, IsFoundBesideTheProgramOrWhereItIsInstalled)
{
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(find_own_file(program.filename()), program);
    const std::string missing = find_own_file("missing");
    EXPECT_TRUE(missing.starts_with((program.parent_path() / "../").native()));
    EXPECT_TRUE(missing.ends_with("/tarvex/missing"));
    testing::internal::CaptureStderr();
    EXPECT_TRUE(OwnFunction<void (*)()>("types", "tarvex_ask_type_database"));
    EXPECT_FALSE(OwnFunction<void (*)()>("missing", "any"));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(said.starts_with("Cannot load <libtarvex-missing.so>: /")) << said;
}
