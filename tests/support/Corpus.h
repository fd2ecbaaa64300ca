#pragma once

#include <QString>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace leafwright::test {

/// Names, without ".pdf", of the real files to try the program on; one that stands for them where they are
/// not at hand, so that the tests can be seen to be skipped.
std::vector<std::string> corpusNames();

/// A file's name as part of a test's name, which may hold letters, digits and underscores only.
std::string corpusTestName(const testing::TestParamInfo<std::string> &test);

/// A test for a real file, whose name is the parameter. Skipped where the file is not there.
class CorpusTest : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override;

    /// The file's path.
    static QString pdf();
    /// The path of what an independent reader found in it.
    static QString expectation();
};

}  // namespace leafwright::test

/// Runs the tests of a suite on every real file.
#define LEAFWRIGHT_FOR_CORPUS(Suite)                                                            \
    INSTANTIATE_TEST_SUITE_P(Corpus, Suite, testing::ValuesIn(leafwright::test::corpusNames()), \
                             leafwright::test::corpusTestName)
