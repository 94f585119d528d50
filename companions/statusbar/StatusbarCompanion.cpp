#include "companions/statusbar/StatusbarCompanion.h"

#include "platform/AppIcons.h"
#include "platform/Bundle.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>

StatusbarCompanion::StatusbarCompanion(QString identifier, QString mainBundle,
                                       StatusbarOptions options, QObject *parent)
    : QObject(parent),
      m_mainBundle(std::move(mainBundle)),
      m_options(options),
      m_channel(std::move(identifier)),
      m_menu(std::make_unique<QMenu>())
{
    // Screen readers announce the menu by this name when the tray opens it.
    m_menu->setAccessibleName(tr("ZELMOR Helper"));
    m_statusAction = m_menu->addAction(QString());
    m_statusAction->setEnabled(false);
    m_statusSeparator = m_menu->addSeparator();
    m_menu->addAction(tr("Open ZELMOR Helper"), this, &StatusbarCompanion::openMainApplication);
    m_menu->addSeparator();
    m_menu->addAction(tr("Quit"), this, &StatusbarCompanion::quitRequested);
    clearStatus();

    connect(&m_channel, &CompanionChannelServer::quitRequested, this,
            &StatusbarCompanion::quitRequested);
    connect(&m_channel, &CompanionChannelServer::statusReceived, this,
            &StatusbarCompanion::showStatus);
    connect(&m_channel, &CompanionChannelServer::problemReceived, this,
            &StatusbarCompanion::showStatus);
    connect(&m_channel, &CompanionChannelServer::idleReceived, this,
            &StatusbarCompanion::clearStatus);
    // ZELMOR Helper went away without saying "idle" (it quit or crashed in
    // the middle of an operation): nothing runs any more.
    connect(&m_channel, &CompanionChannelServer::publisherGone, this,
            &StatusbarCompanion::clearStatus);
}

StatusbarCompanion::~StatusbarCompanion()
{
    // The channel outlives the menu; a connection it closes on its way out
    // must not reach the menu's actions, which are gone by then.
    disconnect(&m_channel, nullptr, this, nullptr);
}

bool StatusbarCompanion::start()
{
    if (!m_channel.listen())
        return false;
    if (m_options.headless)
        return true;

    m_tray = std::make_unique<QSystemTrayIcon>(AppIcons::companion());
    m_tray->setContextMenu(m_menu.get());
    m_tray->setToolTip(m_toolTip);
#ifndef Q_OS_MACOS
    // Most Linux trays only open the menu on a right click; a left click is
    // what users try first.
    connect(m_tray.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    m_menu->popup(QCursor::pos());
            });
#endif
    m_tray->show();
    if (!m_options.autoLaunched && QSystemTrayIcon::supportsMessages()) {
        m_tray->showMessage(tr("ZELMOR Helper"), tr("ZELMOR Helper Statusbar App is running."),
                            QSystemTrayIcon::Information, 4000);
    }
    return true;
}

QMenu *StatusbarCompanion::menu() const
{
    return m_menu.get();
}

QString StatusbarCompanion::toolTip() const
{
    return m_toolTip;
}

void StatusbarCompanion::showStatus(const CompanionChannel::Status &status)
{
    m_statusAction->setText(statusSummary(status));
    m_statusAction->setVisible(true);
    m_statusSeparator->setVisible(true);
    applyToolTip(statusToolTip(&status));
}

void StatusbarCompanion::clearStatus()
{
    m_statusAction->setText(QString());
    m_statusAction->setVisible(false);
    m_statusSeparator->setVisible(false);
    applyToolTip(statusToolTip(nullptr));
}

void StatusbarCompanion::applyToolTip(const QString &tip)
{
    m_toolTip = tip;
    if (m_tray)
        m_tray->setToolTip(tip);
}

void StatusbarCompanion::openMainApplication()
{
    // A running ZELMOR Helper handles being started again itself: the new
    // start hands over to it, which brings its window forward (on macOS the
    // launcher does so before that).
    Bundle::launchApplication(m_mainBundle);
}
