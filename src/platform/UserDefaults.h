#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

class QSettings;

namespace leafwright {

/// The user's settings by key, with a registered default for each that has one. A stored value that can't be
/// what is asked for (the file may have been edited by hand) counts as absent: the default is in force.
/// For one thread.
class UserDefaults : public QObject {
    Q_OBJECT

public:
    /// Settings in memory only.
    UserDefaults();
    /// Settings kept in an INI file, which is made at the first write. What can't be read or written is
    /// logged, and holds as long as this lives.
    explicit UserDefaults(const QString &filePath);
    ~UserDefaults() override;
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    /// Adds the values that are in force until others are set; never stored.
    void registerDefaults(const QHash<QString, QVariant> &defaults);

    /// False if there is none. As texts, "true", "yes" and "1" are true, "false", "no" and "0" false.
    bool boolForKey(const QString &key) const;
    /// 0 if there is none.
    int integerForKey(const QString &key) const;
    /// 0 if there is none. Of a whole number as well.
    double doubleForKey(const QString &key) const;
    /// Null if there is none; an empty text that is set is not null.
    QString stringForKey(const QString &key) const;
    /// Null if there is none.
    QByteArray dataForKey(const QString &key) const;

    /// Sets a bool, a number, a text or data. Nothing, or a null text or data, removes what is stored.
    void setValue(const QString &key, const QVariant &value);
    /// Removes what is stored; the registered default is in force again.
    void removeValue(const QString &key);

Q_SIGNALS:
    /// What is in force for the key is another now.
    void valueChanged(const QString &key);

private:
    QVariant stored(const QString &key) const;
    QVariant inForce(const QString &key) const;
    void store(const QString &key, const QVariant &value);
    template <typename Value>
    Value read(const QString &key, std::optional<Value> (*convert)(const QVariant &)) const;

    std::unique_ptr<QSettings> settings_;  ///< Null for settings in memory.
    QHash<QString, QVariant> values_;      ///< Those in memory, which hold before those of the file.
    QHash<QString, QVariant> registered_;
};

}  // namespace leafwright
