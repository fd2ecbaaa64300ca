#include "cli/batch/HashFile.h"
#include "support/EnvironmentVariable.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using cli::HashFile;
using testing::Optional;

TEST(HashFile, KnowsNothingAtFirst) {
    HashFile file;
    EXPECT_EQ(file.find("a"), std::nullopt);
    EXPECT_EQ(file.problem(), std::nullopt);
}

TEST(HashFile, KeepsTheLastNumberOfEachName) {
    HashFile file;
    EXPECT_TRUE(file.put("a", 1));
    EXPECT_TRUE(file.put("b", 2));
    EXPECT_TRUE(file.put("a", 0));
    EXPECT_THAT(file.find("a"), Optional(0U)) << "which is not the same as none";
    EXPECT_THAT(file.find("b"), Optional(2U));
    EXPECT_EQ(file.find("c"), std::nullopt);
}

TEST(HashFile, KeepsAllOfThemWhenItGrows) {
    HashFile file;
    constexpr unsigned many = 20'000;
    for (unsigned i = 0; i < many; ++i)
        ASSERT_TRUE(file.put(QByteArray::number(i), i));
    for (unsigned i = 0; i < many; ++i)
        ASSERT_THAT(file.find(QByteArray::number(i)), Optional(i));
    EXPECT_EQ(file.find("-1"), std::nullopt);
}

TEST(HashFile, WithoutAFolderFails) {
    const EnvironmentVariable folder("TMPDIR", "/nonexistent");
    HashFile file;
    EXPECT_FALSE(file.put("a", 1));
    EXPECT_EQ(file.problem(), "the temporary files can't be used: No such file or directory");
}

}  // namespace
}  // namespace leafwright::test
