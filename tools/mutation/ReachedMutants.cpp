#include "Mutant.h"

#include <cstdio>
#include <gtest/gtest.h>

// Writes, for each test, its name, source file, whether it passed, milliseconds and the mutants whose places
// it has reached, to the file that LEAFWRIGHT_REACHED names. Line "-" has those reached before the first
// test.

namespace leafwright {
namespace {

class ReachedMutants : public testing::EmptyTestEventListener {
public:
    explicit ReachedMutants(const char *path) : out_(std::fopen(path, "w")) {}
    ~ReachedMutants() override { std::fclose(out_); }

    void OnTestProgramStart(const testing::UnitTest & /*program*/) override { write("-", "-", true, 0); }
    void OnTestEnd(const testing::TestInfo &test) override {
        const std::string name = std::string(test.test_suite_name()) + "." + test.name();
        write(name.c_str(), test.file(), !test.result()->Failed(),
              static_cast<int>(test.result()->elapsed_time()));
    }

private:
    void write(const char *name, const char *file, bool passed, int milliseconds) {
        std::fprintf(out_, "%s\t%s\t%d\t%d\t", name, file, passed, milliseconds);
        for (int number = 0; number < mostMutants; ++number)
            if (reachedMutants[static_cast<size_t>(number)].exchange(false))
                std::fprintf(out_, " %d", number);
        std::fputs("\n", out_);
        std::fflush(out_);  // or a process that a test forks writes it again at its end
    }

    std::FILE *out_;
};

const bool isListening = [] {
    const char *path = std::getenv("LEAFWRIGHT_REACHED");
    if (path) testing::UnitTest::GetInstance()->listeners().Append(new ReachedMutants(path));
    return path != nullptr;
}();

}  // namespace
}  // namespace leafwright
