#include "damage/Damage.h"

#include <algorithm>
#include <random>

namespace leafwright::test {

namespace {

class Mutator {
public:
    Mutator(const QList<QByteArray> &files, quint64 seed) : files_(files), random_(seed) {}

    QByteArray run() {
        QByteArray bytes = anyFile();
        constexpr int mostChanges = 8;
        for (int left = 1 + static_cast<int>(below(mostChanges)); left > 0 && !bytes.isEmpty(); --left)
            change(bytes);
        return bytes;
    }

private:
    enum Change { Bit, Byte, Digit, Truncation, Deletion, Repetition, Splice, changeCount };

    /// A number from 0, below the limit, which is not 0.
    qsizetype below(qsizetype limit) {
        return static_cast<qsizetype>(random_() % static_cast<quint64>(limit));
    }
    const QByteArray &anyFile() { return files_[below(files_.size())]; }

    void change(QByteArray &bytes) {
        const qsizetype at = below(bytes.size());
        const QByteArray piece = bytes.mid(at, 1 + below(longestPiece));
        switch (static_cast<Change>(below(changeCount))) {
            case Bit:
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(8)));
                break;
            case Byte:
                bytes[at] = static_cast<char>(below(256));
                break;
            case Digit:
                changeDigit(bytes, at);
                break;
            // One in some, or hardly a mutant would be whole enough to be written.
            case Truncation:
                if (below(4) == 0) bytes.truncate(at);
                break;
            case Deletion:
                bytes.remove(at, piece.size());
                break;
            case Repetition:
                bytes.insert(below(bytes.size()), piece);
                break;
            default:
                splice(bytes, at);
                break;
        }
    }

    /// Offsets, references, lengths and counts are made of them.
    void changeDigit(QByteArray &bytes, qsizetype at) {
        const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
        const auto found = std::find_if(bytes.begin() + at, bytes.end(), isDigit);
        if (found != bytes.end()) *found = static_cast<char>('0' + below(10));
    }

    void splice(QByteArray &bytes, qsizetype at) {
        const QByteArray &other = anyFile();
        const QByteArray piece = other.mid(below(other.size()), 1 + below(longestPiece));
        bytes.replace(at, below(2) == 0 ? piece.size() : 0, piece);
    }

    static constexpr qsizetype longestPiece = 2000;

    const QList<QByteArray> &files_;
    std::mt19937_64 random_;
};

}  // namespace

QByteArray mutant(const QList<QByteArray> &files, quint64 seed) {
    return Mutator(files, seed).run();
}

}  // namespace leafwright::test
