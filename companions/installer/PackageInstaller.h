#pragma once

#include "companions/installer/ComponentChecks.h"

#include <QObject>
#include <QStringList>

#include <memory>

// How an installation ended, as the window tells it.
struct InstallOutcome
{
    enum class Kind { Installed, Cancelled, Failed, NeedsRefresh };
    Kind kind = Kind::Failed;
    QString sentence;
    // Whether pressing Install again can help: not when there is nothing to
    // install with, nor when the packages cannot be trusted.
    bool canRetry = true;
};

// The system's own way of installing software, one run at a time: PackageKit
// on Linux, Apple's command line tools and Homebrew on macOS. Nothing here
// blocks; every run ends with exactly one finished(), never from within
// install() itself.
class PackageInstaller : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // What install() would ask the package manager for; empty when it cannot
    // help with these components (the command shown instead explains them).
    virtual QStringList packagesFor(const QList<ComponentChecks::Component> &missing) const = 0;
    // refreshFirst: update the package lists before looking the packages up.
    virtual void install(const QList<ComponentChecks::Component> &missing, bool refreshFirst) = 0;
    // Asks the running installation to stop; honoured only while cancellable.
    virtual void cancel() = 0;

    // This system's installer; cmake is wanted at cmakeProgram.
    static std::unique_ptr<PackageInstaller> forThisSystem(const QString &cmakeProgram);

    // How every installer ends when all went well, or when the user stopped it.
    static InstallOutcome installed();
    static InstallOutcome cancelled();

signals:
    // 0..100, or -1 while the package manager cannot tell.
    void progressChanged(int percent);
    // What is happening now, for the status line.
    void statusChanged(const QString &status);
    void cancellableChanged(bool cancellable);
    // Text a package manager prints as it works, shown as it comes.
    void outputReceived(const QString &text);
    void finished(const InstallOutcome &outcome);
};
