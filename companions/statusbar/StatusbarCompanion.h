#pragma once

#include "companions/statusbar/StatusbarOptions.h"
#include "platform/CompanionChannel.h"

#include <QObject>

#include <memory>

class QAction;
class QMenu;
class QSystemTrayIcon;

// The status-bar companion: a tray icon whose menu opens ZELMOR Helper or
// quits, and which shows the operation ZELMOR Helper runs. It owns the
// channel, so there is one per user.
class StatusbarCompanion : public QObject
{
    Q_OBJECT

public:
    StatusbarCompanion(QString identifier, QString mainBundle, StatusbarOptions options,
                       QObject *parent = nullptr);
    ~StatusbarCompanion() override;

    // Takes the channel and, unless headless, puts the icon in the tray.
    // False when another instance already holds the channel.
    bool start();

    QMenu *menu() const;
    QString toolTip() const;

signals:
    // "Quit" from the menu or a quit request over the channel.
    void quitRequested();

private:
    void showStatus(const CompanionChannel::Status &status);
    void clearStatus();
    void openMainApplication();
    void applyToolTip(const QString &tip);

    QString m_mainBundle;
    StatusbarOptions m_options;
    CompanionChannelServer m_channel;
    std::unique_ptr<QMenu> m_menu;
    QAction *m_statusAction = nullptr;
    QAction *m_statusSeparator = nullptr;
    // Declared after the menu it refers to, so it goes first.
    std::unique_ptr<QSystemTrayIcon> m_tray;
    QString m_toolTip;
};
