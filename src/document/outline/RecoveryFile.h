#pragma once

#include "document/outline/KeptOutline.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <variant>
#include <vector>

namespace leafwright {

/// A file in which the outline of a PDF is kept until it is saved, so that a later run of the program finds
/// it where this one crashes. Its name, "HASH-XXXXXX.outline", tells of which PDF by the hash of the path.
/// Beside it stands "HASH-XXXXXX.lock", which the program that owns it keeps locked: what nobody has locked
/// is left from one that has ended. So two programs, or two documents, with the same PDF never write the same
/// file. Nobody but the user can read them.
///
/// For one thread at a time.
class RecoveryFile {
public:
    /// What was left behind for a PDF.
    struct LeftBehind {
        std::vector<std::unique_ptr<RecoveryFile>> files;  ///< The latest first.
        QStringList problems;                              ///< Of what can't be read: a path each, and why.
    };
    /// Why a file can't be read.
    struct Unreadable {
        QString reason;
        bool isDamaged;  ///< It was read, and is not what was written.
    };

    /// Takes a new name for a PDF; makes the folder, for the user alone, where it is not there.
    /// @return the file, with nothing kept in it yet, or why there can be none
    static std::variant<std::unique_ptr<RecoveryFile>, QString> make(const QString &folder,
                                                                     const QString &pdf);
    /// Takes the files of a PDF that were left behind: for its path, for another path to the same file, and
    /// for one where its content is no longer, since it was moved. What is damaged is set aside as
    /// "HASH-XXXXXX.damaged".
    static LeftBehind leftBehindFor(const QString &folder, const QString &pdf);
    /// Removes what was left behind of PDF files four weeks after they were first missed in folders that are
    /// there, which their locks say; what is damaged, once it is as old; and locks without a file.
    /// @param now milliseconds since the start of 1970, UTC
    static void removeForgotten(const QString &folder, qint64 now);

    /// The greatest KeptOutline::order in a folder; 0 for none.
    static int latestOrder(const QString &folder);

    /// Leaves the file to whoever comes next.
    ~RecoveryFile();
    RecoveryFile(const RecoveryFile &) = delete;
    RecoveryFile &operator=(const RecoveryFile &) = delete;

    /// The path of the PDF that it was made or kept for.
    const QString &pdf() const { return pdf_; }
    /// Whether its lock still stands in the folder, so that no other program takes it for left behind.
    bool isThere() const;
    /// Keeps an outline in place of the one that was kept before; whatever fails, that one stays.
    /// @return why it is not kept
    std::optional<QString> write(const KeptOutline &outline);
    /// What is kept.
    std::variant<KeptOutline, Unreadable> read() const;
    /// Nothing is kept any more. @return why it still is
    std::optional<QString> remove();

private:
    RecoveryFile(QByteArray path, int lock, QString pdf)
        : path_(std::move(path)), lock_(lock), pdf_(std::move(pdf)) {}
    static std::unique_ptr<RecoveryFile> take(const QByteArray &path, const QString &pdf);
    QString setAside();

    QByteArray path_;  ///< Without the suffix.
    int lock_;
    QString pdf_;
};

}  // namespace leafwright
