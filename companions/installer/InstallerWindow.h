#pragma once

#include "companions/installer/ComponentChecks.h"
#include "companions/installer/PackageInstaller.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class Installer;
}
class QThread;

// The component installer's window: lists what ZELMOR Helper needs and
// whether each is installed, installs what is missing through the system's
// package manager, and shows the command that does the same in a terminal.
// It is checking, ready (with the sentence of the last installation, if
// any) or installing; after every installation it checks again.
class InstallerWindow : public QWidget
{
    Q_OBJECT

public:
    // Checks begin at once, against searchPath (in PATH's form) and cmake at
    // cmakeProgram. Without an installer the system's own is used.
    InstallerWindow(ComponentChecks::Platform platform, QString searchPath, QString cmakeProgram,
                    std::unique_ptr<PackageInstaller> installer = {}, QWidget *parent = nullptr);
    ~InstallerWindow() override;

    // Starts the checks again; ignored while they run or while installing.
    void checkAgain();
    bool isChecking() const;
    bool isInstalling() const;

    // Installs what the last check found missing; ignored unless Install
    // is offered.
    void install();
    // Refreshes the package lists once, then installs.
    void refreshAndInstall();
    // Asks the running installation to stop, when it can.
    void cancel();

    QList<ComponentChecks::Result> results() const;
    // What the command field shows: one command a line, empty when nothing
    // is missing.
    QString installCommand() const;
    // Puts the command on the clipboard.
    void copyCommand();

signals:
    void checksFinished();

protected:
    void changeEvent(QEvent *event) override;

private:
    void showChecking();
    void showResults(const QList<ComponentChecks::Result> &results);
    void startInstall(bool refreshFirst);
    void finishInstall(const InstallOutcome &outcome);
    void updateControls();
    void escape();

    std::unique_ptr<Ui::Installer> m_ui;
    ComponentChecks::Platform m_platform;
    QString m_searchPath;
    QString m_cmakeProgram;
    std::unique_ptr<PackageInstaller> m_installer;
    QThread *m_thread = nullptr;
    QList<ComponentChecks::Result> m_results;
    bool m_installing = false;
    bool m_cancellable = false;
    // How the last installation ended; shown until the next one starts.
    std::optional<InstallOutcome> m_outcome;
};
