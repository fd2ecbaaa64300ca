#include "platform/UserDefaults.h"

#include "files/FileName.h"
#include "files/FileReading.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSettings>

#include <algorithm>
#include <array>
#include <cmath>
#include <sys/stat.h>

namespace leafwright {

namespace {

/// QSettings takes slashes for groups and merges neighbouring ones, and keys may be URLs.
QString escaped(QString key) {
    return key.replace(u'%', QStringLiteral("%25"))
        .replace(u'/', QStringLiteral("%2F"))
        .replace(u'\\', QStringLiteral("%5C"));
}

bool isNothing(const QVariant &value) {
    switch (value.typeId()) {
        case QMetaType::UnknownType:
        case QMetaType::Nullptr:
            return true;
        case QMetaType::QString:
            return value.toString().isNull();
        case QMetaType::QByteArray:
            return value.toByteArray().isNull();
        default:
            return false;
    }
}

// What comes from a file is text, whatever it was when it was set; what was set since has its own type.

std::optional<int> toInteger(const QVariant &value) {
    switch (value.typeId()) {
        case QMetaType::Bool:
            return value.toBool() ? 1 : 0;
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::QString: {
            bool isNumber = false;
            const int number = value.toString().trimmed().toInt(&isNumber);
            return isNumber ? std::optional(number) : std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

std::optional<double> toDouble(const QVariant &value) {
    switch (value.typeId()) {
        case QMetaType::Double:
        case QMetaType::QString: {
            bool isNumber = false;
            const double number = value.toString().trimmed().toDouble(&isNumber);
            return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
        }
        default:
            return toInteger(value);
    }
}

std::optional<bool> toBool(const QVariant &value) {
    const auto text = value.typeId() == QMetaType::QString ? value.toString().trimmed().toLower() : QString();
    if (text == u"true" || text == u"yes") return true;
    if (text == u"false" || text == u"no") return false;
    const std::optional<int> number = toInteger(value);
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<QString> toText(const QVariant &value) {
    switch (value.typeId()) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::Double:
            return value.toString();
        case QMetaType::QString: {
            const QString text = value.toString();
            return text.isNull() ? QStringLiteral("") : text;
        }
        default:
            return std::nullopt;
    }
}

std::optional<QByteArray> toData(const QVariant &value) {
    if (value.typeId() != QMetaType::QByteArray) return std::nullopt;
    const QByteArray data = value.toByteArray();
    return data.isNull() ? QByteArray("") : data;
}

void logFailure(const QSettings &settings) {
    if (settings.status() == QSettings::NoError) return;
    const char *what = settings.status() == QSettings::FormatError
                           ? "leafwright: some of the settings can't be understood:"
                           : "leafwright: the settings can't be read or written:";
    qWarning().noquote() << what << settings.fileName();
}

/// Whether a path leads to nothing yet, or to a file. Reading a named pipe would wait for a writer.
bool mayBeFile(const QString &path) {
    struct stat status = {};
    return ::stat(fileNameBytes(path).constData(), &status) != 0 || S_ISREG(status.st_mode);
}

/// The character of an escape's digits, of which Qt lets the last 16 bits count.
QChar escapedCharacter(QStringView digits, int base) {
    constexpr qsizetype enough = 6;  // digits; octal ones have three bits each
    return QChar(char16_t(digits.right(enough).toUInt(nullptr, base) & 0xffffU));
}

/// The text of a file of settings without what may not change what a value is: escapes, quotes, blanks,
/// continued lines and whatever is not printable ASCII, such as a byte order mark.
QString plainText(const QString &text) {
    static const QRegularExpression passedOver(QStringLiteral("\\\\(?:x([0-9A-Fa-f]+)|([0-7]+)|.)|[^!#-~]"),
                                               QRegularExpression::DotMatchesEverythingOption);
    QString plain;
    qsizetype end = 0;
    for (auto matches = passedOver.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        plain += QStringView(text).sliced(end, match.capturedStart() - end);
        end = match.capturedEnd();
        constexpr int hexadecimal = 16;
        constexpr int octal = 8;
        if (match.hasCaptured(1)) plain += escapedCharacter(match.capturedView(1), hexadecimal);
        if (match.hasCaptured(2)) plain += escapedCharacter(match.capturedView(2), octal);
    }
    plain += QStringView(text).sliced(end);
    return plain;
}

/// How values begin, behind what stands before one, that Qt reads as its own data.
constexpr std::array foreignValues{QLatin1StringView("=@Variant("), QLatin1StringView(",@Variant("),
                                   QLatin1StringView("=@DateTime("), QLatin1StringView(",@DateTime(")};

/// Whether a file of settings has values that Leafwright never writes, and that Qt would read with the trust
/// it has in its own data: some of them bring the program down.
bool hasForeignValues(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    // Not by a regular expression: it would match nothing in a text with half a pair of surrogates, which an
    // escape may be.
    const QString plain = plainText(QString::fromLatin1(file.readAll()));
    return std::ranges::any_of(foreignValues, [&](QLatin1StringView begin) { return plain.contains(begin); });
}

/// Whether the settings can be written now. Writing them takes no time, so who has had the lock for a second
/// has left it behind; QSettings would wait half a minute for that to be true, and forever for what is no
/// file.
bool canLock(const QString &filePath) {
    constexpr int oldEnough = 1000;  // milliseconds
    constexpr int patience = 2000;   // milliseconds
    const QString path = filePath + QLatin1String(".lock");
    if (!mayBeFile(path)) return false;
    QLockFile lock(path);
    lock.setStaleLockTime(oldEnough);
    // Where there is no folder yet, QSettings makes it.
    return !fileExists(path) || lock.tryLock(patience);
}

}  // namespace

UserDefaults::UserDefaults() = default;

UserDefaults::UserDefaults(const QString &filePath) {
    if (!mayBeFile(filePath)) {
        qWarning().noquote() << "leafwright: the settings are no file, and not kept:" << filePath;
        return;
    }
    if (hasForeignValues(filePath)) {
        qWarning().noquote()
            << "leafwright: the settings hold what Leafwright never writes, and are not kept:" << filePath;
        return;
    }
    settings_ = std::make_unique<QSettings>(filePath, QSettings::IniFormat);
    logFailure(*settings_);
}

UserDefaults::~UserDefaults() = default;

void UserDefaults::registerDefaults(const QHash<QString, QVariant> &defaults) {
    registered_.insert(defaults);
}

QVariant UserDefaults::stored(const QString &key) const {
    const auto own = values_.constFind(key);
    if (own != values_.constEnd()) return *own;
    return settings_ ? settings_->value(escaped(key)) : QVariant();
}

QVariant UserDefaults::inForce(const QString &key) const {
    const QVariant value = stored(key);
    return value.isValid() ? value : registered_.value(key);
}

template <typename Value>
Value UserDefaults::read(const QString &key, std::optional<Value> (*convert)(const QVariant &)) const {
    if (const auto value = convert(stored(key))) return *value;
    return convert(registered_.value(key)).value_or(Value());
}

bool UserDefaults::boolForKey(const QString &key) const {
    return read(key, toBool);
}

int UserDefaults::integerForKey(const QString &key) const {
    return read(key, toInteger);
}

double UserDefaults::doubleForKey(const QString &key) const {
    return read(key, toDouble);
}

QString UserDefaults::stringForKey(const QString &key) const {
    return read(key, toText);
}

QByteArray UserDefaults::dataForKey(const QString &key) const {
    return read(key, toData);
}

void UserDefaults::setValue(const QString &key, const QVariant &value) {
    const QVariant before = inForce(key);
    store(key, isNothing(value) ? QVariant() : value);
    if (inForce(key) != before) Q_EMIT valueChanged(key);
}

void UserDefaults::removeValue(const QString &key) {
    setValue(key, QVariant());
}

void UserDefaults::store(const QString &key, const QVariant &value) {
    if (!settings_ || !canLock(settings_->fileName())) {
        if (settings_)
            qWarning().noquote() << "leafwright: the settings are locked:" << settings_->fileName();
        values_.insert(key, value);
        return;
    }
    values_.remove(key);
    if (value.isValid()) {
        settings_->setValue(escaped(key), value);
    } else {
        settings_->remove(escaped(key));
    }
    // Settings change rarely; written at once, none is lost in a crash and a failure is known.
    settings_->sync();
    logFailure(*settings_);
}

}  // namespace leafwright
