#pragma once

#include "companions/installer/PackageInstaller.h"

class QProcess;

// Installs on macOS: Apple's command line tools through their own installer
// (xcode-select --install opens it and returns), then cmake and SDL 2 with
// `brew install`, whose output the window shows as it comes. Homebrew itself
// is installed from a terminal (the window shows the command).
class HomebrewInstaller : public PackageInstaller
{
    Q_OBJECT

public:
    explicit HomebrewInstaller(QObject *parent = nullptr);
    ~HomebrewInstaller() override;

    QStringList packagesFor(const QList<ComponentChecks::Component> &missing) const override;
    void install(const QList<ComponentChecks::Component> &missing, bool refreshFirst) override;
    void cancel() override;

private:
    void start(const QString &program, const QStringList &arguments);
    void end(const InstallOutcome &outcome);

    QProcess *m_process = nullptr;
    bool m_commandLineTools = false;
    bool m_cancelled = false;
};
