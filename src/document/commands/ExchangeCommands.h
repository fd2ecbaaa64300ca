#pragma once

#include "exchange/ReadOutline.h"

#include <QStringList>

namespace leafwright {

class MyDocument;

/// The outline to and from files that other programs, and people, read and write.
class ExchangeCommands {
public:
    /// Registers the commands. @param document must outlive this
    explicit ExchangeCommands(MyDocument &document);

    /// Writes the outline to a file the user chooses, in the format that its name's extension says. Never
    /// over the PDF.
    void exportOutline();
    /// Reads an outline from a file the user chooses. Where there is one already, asks whether the new one
    /// takes its place or comes behind it. What can't be read is told with its line, and changes nothing;
    /// labels that no page has are told, too.
    void importOutline();

    /// Why the last export or import came to nothing; absent where it did not, and where it was cancelled.
    const std::optional<QString> &problem() const { return problem_; }

    /// Whether there is anything to export.
    bool canExport() const;
    /// Whether the outline may be edited.
    bool canImport() const;

private:
    enum class Existing { Replaced, Kept };

    std::optional<QString> write(const QString &path, QStringList &notices) const;
    OutlineTree read(const QString &path, Existing existing, QStringList &notices) const;
    std::optional<Existing> askForExisting() const;
    QStringList whatIsLost(const MyOutlineItem &outline) const;
    void put(MyOutlineItem &outline, Existing existing);
    void tell(const QString &name, const QStringList &messages) const;

    MyDocument &document_;
    std::optional<QString> problem_;
};

}  // namespace leafwright
