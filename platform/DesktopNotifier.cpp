#include "platform/DesktopNotifier.h"

#ifndef Q_OS_MACOS
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#endif

DesktopNotifier::DesktopNotifier(QString applicationName, QString desktopId, QObject *parent)
    : QObject(parent), m_applicationName(std::move(applicationName)),
      m_desktopId(std::move(desktopId))
{
}

void DesktopNotifier::notify(const QString &summary, const QString &body)
{
#ifdef Q_OS_MACOS
    Q_UNUSED(summary)
    Q_UNUSED(body)
#else
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    QVariantMap hints;
    hints.insert(QStringLiteral("desktop-entry"), m_desktopId);
    call << m_applicationName << m_lastId << m_desktopId << summary << body << QStringList()
         << hints << qint32(-1);
    // Asynchronous: a missing service answers with an error later, which is
    // simply dropped; the event loop never waits for the bus.
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *finished) {
                const QDBusPendingReply<uint> reply = *finished;
                if (reply.isValid())
                    m_lastId = reply.value();
                finished->deleteLater();
            });
#endif
}
