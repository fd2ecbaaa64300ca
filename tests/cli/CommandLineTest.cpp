#include "cli/CommandLine.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <cstdio>
#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::vector<std::string> commandNames() {
    std::vector<std::string> names;
    for (const auto &command : cli::commands())
        names.push_back(command->info().name.toStdString());
    return names;
}

/// Wrong usage says what is wrong and how it is right, on standard error only.
void expectWrongUsage(const QStringList &arguments, const std::string &problem) {
    SCOPED_TRACE(qPrintable(arguments.join(u' ')));
    const CliResult result = runCli(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr(problem));
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("usage: leafwright-cli " + arguments.first().toStdString()));
    EXPECT_EQ(result.out, "");
}

TEST(CommandLine, HelpListsEveryCommand) {
    for (const char *option : {"--help", "-h", "help"}) {
        const CliResult result = runCli({option});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, "");
        for (const auto &command : cli::commands()) {
            EXPECT_THAT(result.out.toStdString(), HasSubstr("  " + command->info().name.toStdString() + ' '));
            EXPECT_THAT(result.out.toStdString(), HasSubstr(command->info().summary.toStdString()));
        }
    }
}

TEST(CommandLine, CommandsAreTheseInThisOrder) {
    EXPECT_THAT(commandNames(), ElementsAre("info", "labels", "outline", "text", "fonts", "contents",
                                            "autotoc", "minitoc", "apply", "run", "batch", "report"));
}

TEST(CommandLine, EveryCommandExplainsItself) {
    for (const auto &command : cli::commands()) {
        const cli::CommandInfo info = command->info();
        SCOPED_TRACE(qPrintable(info.name));
        for (const char *option : {"--help", "-h"}) {
            const CliResult result = runCli({info.name, option});
            EXPECT_EQ(result.exitCode, 0);
            EXPECT_EQ(result.err, "");
            const std::string out = result.out.toStdString();
            EXPECT_THAT(out, StartsWith("Usage: leafwright-cli " + info.name.toStdString() + ' '));
            EXPECT_THAT(out, HasSubstr(info.summary.toStdString()));
            for (const cli::Argument &argument : info.arguments)
                EXPECT_THAT(out, HasSubstr(argument.name.toStdString()));
            for (const QCommandLineOption &known : info.options)
                EXPECT_THAT(out, HasSubstr("-" + known.names().last().toStdString()));
        }
    }
}

TEST(CommandLine, VersionIsOneLine) {
    for (const char *option : {"--version", "-v"}) {
        const CliResult result = runCli({option});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(result.out.toStdString(), testing::MatchesRegex("leafwright-cli [0-9]+\\.[0-9.]+\n"));
    }
}

TEST(CommandLine, NoCommandIsWrongUsage) {
    const CliResult result = runCli({});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "leafwright-cli: no command given; try --help\n");
    EXPECT_EQ(result.out, "");
}

TEST(CommandLine, UnknownCommandIsNamed) {
    const CliResult result = runCli({"frobnicate", "file.pdf"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "leafwright-cli: there is no command \"frobnicate\"; try --help\n");
    EXPECT_EQ(result.out, "");
}

TEST(CommandLine, UnknownOptionIsWrongUsageEverywhere) {
    for (const auto &command : cli::commands()) {
        expectWrongUsage({command->info().name, "--frobnicate", "a", "b"}, "frobnicate");
    }
}

TEST(CommandLine, MissingArgumentIsNamed) {
    for (const char *command : {"info", "labels", "outline", "text", "fonts"}) {
        expectWrongUsage({command}, "FILE is missing");
    }
    expectWrongUsage({"autotoc"}, "FILE... is missing");
    expectWrongUsage({"apply"}, "FILE is missing");
    expectWrongUsage({"apply", "file.pdf"}, "TREE is missing");
}

TEST(CommandLine, SurplusArgumentIsNamed) {
    for (const char *command : {"info", "labels", "outline", "text", "fonts"}) {
        expectWrongUsage({command, "file.pdf", "surplus.pdf"}, "unexpected argument \"surplus.pdf\"");
    }
    expectWrongUsage({"apply", "file.pdf", "tree.json", "surplus"}, "unexpected argument \"surplus\"");
}

TEST(CommandLine, OptionWithoutItsValueIsWrongUsage) {
    expectWrongUsage({"outline", "file.pdf", "--format"}, "format");
    expectWrongUsage({"text", "file.pdf", "--page"}, "page");
    expectWrongUsage({"autotoc", "file.pdf", "-o"}, "o");
}

TEST(CommandLine, AnEmptyValueIsWrongUsage) {
    for (const QStringList &command :
         {QStringList{"run", "steps.json", "a.pdf"}, {"apply", "a.pdf", "tree"}, {"autotoc", "a.pdf"}})
        expectWrongUsage(command + QStringList{"-o", ""}, "--output OUT: the value is empty");
    expectWrongUsage({"run", "steps.json", "a.pdf", "--report="}, "--report R: the value is empty");
    expectWrongUsage({"autotoc", "a.pdf", "-o", "b.pdf", "--map", ""}, "--map MAP: the value is empty");
    expectWrongUsage({"autotoc", "a.pdf", "--out-dir", ""}, "--out-dir DIR: the value is empty");
    expectWrongUsage({"contents", "a.pdf", "-o", "b.pdf", "-o", ""}, "--output OUT: the value is empty");
    expectWrongUsage({"fonts", "a.pdf", "--save-map", ""}, "--save-map MAP: the value is empty");
    expectWrongUsage({"autotoc", "a.pdf", "-o", "b.pdf", "--max-depth="},
                     "--max-depth N: the value is empty");
    expectWrongUsage({"text", "a.pdf", "--page="}, "--page N: the value is empty");
}

TEST(CommandLine, CommandsThatWriteWantAnOutput) {
    expectWrongUsage({"apply", "file.pdf", "tree.json"}, "-o OUT is missing");
    expectWrongUsage({"autotoc", "file.pdf"}, "either -o OUT or --out-dir DIR must be given");
}

TEST(CommandLine, MissingFileFailsInOneLine) {
    const TempDir dir;
    const QString path = dir.path("missing.pdf");
    for (const QStringList &arguments :
         {QStringList{"info", path}, {"labels", path}, {"outline", path}, {"text", path}, {"fonts", path}}) {
        const CliResult result = runCli(arguments);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.err, "leafwright-cli: " + path.toUtf8() + ": there is no such file\n");
        EXPECT_EQ(result.out, "");
    }
}

TEST(CommandLine, WhatIsNoPdfIsRefusedWithTheReason) {
    const TempDir dir;
    saveBytes(dir.path("empty.pdf"), {});
    saveBytes(dir.path("text.pdf"), "This is no PDF.\n");
    for (const char *name : {"empty.pdf", "text.pdf"}) {
        const CliResult result = runCli({"outline", dir.path(name)});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.err.toStdString(), HasSubstr("this is not a PDF that can be read"));
        EXPECT_EQ(result.out, "");
    }
    EXPECT_THAT(runCli({"info", dir.path("empty.pdf")}).err.toStdString(), HasSubstr("the file is empty"));
}

TEST(CommandLine, FolderIsRefusedWithTheReason) {
    const TempDir dir;
    const CliResult result = runCli({"info", dir.path(".")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("the file can't be read"));
}

TEST(CommandLine, ResultThatCannotBeWrittenIsAFailure) {
    const TempDir dir;
    const QString path = savePdf(dir, "a.pdf", 1);
    std::FILE *full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    std::FILE *err = std::tmpfile();
    {
        cli::Console console(full, err);
        EXPECT_EQ(cli::runCommandLine({"labels", path}, console), 1);
    }
    EXPECT_GT(std::ftell(err), 0);
    std::fclose(full);
    std::fclose(err);
}

}  // namespace
}  // namespace leafwright::test
