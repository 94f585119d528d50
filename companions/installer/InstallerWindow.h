#pragma once

#include "companions/installer/ComponentChecks.h"

#include <QWidget>

#include <memory>

namespace Ui {
class Installer;
}
class QThread;

// The component installer's window: lists what ZELMOR Helper needs, whether
// each is installed, and the command that installs what is missing.
class InstallerWindow : public QWidget
{
    Q_OBJECT

public:
    // Checks begin at once, against searchPath (in PATH's form) and cmake at
    // cmakeProgram.
    InstallerWindow(ComponentChecks::Platform platform, QString searchPath, QString cmakeProgram,
                    QWidget *parent = nullptr);
    ~InstallerWindow() override;

    // Starts the checks again; ignored while they run.
    void checkAgain();
    bool isChecking() const;

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

    std::unique_ptr<Ui::Installer> m_ui;
    ComponentChecks::Platform m_platform;
    QString m_searchPath;
    QString m_cmakeProgram;
    QThread *m_thread = nullptr;
    QList<ComponentChecks::Result> m_results;
};
