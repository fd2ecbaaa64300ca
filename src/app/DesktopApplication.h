#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

namespace leafwright {

/// The program on the session's message bus: makes it run once a session, and lets the desktop start it, show
/// it and open files in it (interface org.freedesktop.Application of the Desktop Entry Specification).
class DesktopApplication : public QObject {
    Q_OBJECT

public:
    /// The name on the bus, and that of the desktop entry.
    static QString name();

    /// @param bus may be without connection; then nothing works, and nothing fails
    explicit DesktopApplication(QDBusConnection bus);
    ~DesktopApplication() override;

    /// Takes the name on the bus. @return false without a bus, or if another instance has the name
    bool listen();
    /// Hands files to the instance that has the name; without any, it is to show itself.
    /// @param paths absolute
    /// @return whether it has taken them
    bool handOver(const QStringList &paths) const;

Q_SIGNALS:
    /// Files are to be opened.
    void filesReceived(const QStringList &paths);
    /// The program is to show itself.
    void activated();

private:
    QDBusConnection bus_;
};

/// What the bus sees of DesktopApplication; the slots are the interface's methods.
class DesktopApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    DesktopApplicationAdaptor(DesktopApplication &application, QDBusConnection bus);

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): moc reads it
public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    /// Always refused: the desktop entry names no actions.
    void ActivateAction(const QString &actionName, const QVariantList &parameter,
                        const QVariantMap &platformData, const QDBusMessage &message);

private:
    DesktopApplication &application_;
    QDBusConnection bus_;
};

}  // namespace leafwright
