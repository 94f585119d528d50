#pragma once

#include <QObject>
#include <QString>

// Desktop notifications. On Linux they go to org.freedesktop.Notifications on
// the session bus, without waiting for an answer; where no session bus or no
// notification service is there, nothing happens and nothing is reported.
// Other systems show nothing yet.
class DesktopNotifier : public QObject
{
    Q_OBJECT

public:
    // applicationName signs every notification; desktopId (a desktop entry's
    // name without ".desktop") gives it the entry's icon.
    DesktopNotifier(QString applicationName, QString desktopId, QObject *parent = nullptr);

    // Shows one notification. A later one replaces the previous one, so a
    // user who was away sees only the latest.
    void notify(const QString &summary, const QString &body);

private:
    QString m_applicationName;
    QString m_desktopId;
    uint m_lastId = 0;
};
