#pragma once

#include "cli/Command.h"

namespace leafwright::cli {

/// `info FILE`: what kind of file it is.
class InfoCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `labels FILE`: the page labels.
class LabelsCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `outline FILE`: the outline as JSON, plus lines or indented text.
class OutlineCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `text FILE`: the runs of text that heading detection works on.
class TextCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `fonts FILE`: the font census and the heading level map guessed from it.
class FontsCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `contents FILE -o OUT`: reads a PDF, or many, as a reader does, and makes what it finds the outline.
class ContentsCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
    bool limitsTime(const QCommandLineParser &arguments) const override;
};

/// `autotoc FILE -o OUT`: makes the headings of a document, or of many, its outline.
class AutoTOCCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
    bool limitsTime(const QCommandLineParser &arguments) const override;
};

/// `minitoc FILE --page N --text SAMPLE -o OUT`: adds an entry with every heading that looks like the sample.
class MiniTOCCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `apply FILE TREE -o OUT`: writes an outline given as text, in any form that can be read.
class ApplyCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `batch COMMAND...`: does the files that standard input tells.
class BatchCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
    bool limitsTime(const QCommandLineParser &arguments) const override;
};

/// `report LOG...`: what came of batches, as a page of HTML or as CSV.
class ReportCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

/// `run STEPS FILE`: plays a script of commands and gestures on a document with its window.
class RunCommand final : public Command {
public:
    CommandInfo info() const override;
    ExitCode run(const QCommandLineParser &arguments, Console &console) const override;
};

}  // namespace leafwright::cli
