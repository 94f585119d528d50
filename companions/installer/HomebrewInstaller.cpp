#include "companions/installer/HomebrewInstaller.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

using ComponentChecks::Component;
using ComponentChecks::Platform;
using Kind = InstallOutcome::Kind;

namespace {

// git, make and the compilers all come with Apple's command line tools.
bool needsCommandLineTools(const QList<Component> &missing)
{
    for (const Component component :
         {Component::Git, Component::Make, Component::CCompiler, Component::CxxCompiler}) {
        if (missing.contains(component))
            return true;
    }
    return false;
}

QStringList formulasFor(const QList<Component> &missing)
{
    QStringList formulas;
    if (missing.contains(Component::CMake))
        formulas << QStringLiteral("cmake");
    if (missing.contains(Component::Sdl2))
        formulas << QStringLiteral("sdl2");
    return formulas;
}

} // namespace

HomebrewInstaller::HomebrewInstaller(QObject *parent) : PackageInstaller(parent) {}

HomebrewInstaller::~HomebrewInstaller()
{
    if (m_process) {
        m_process->disconnect(this);
        m_process->kill();
        m_process->waitForFinished(); // after a kill: at once
    }
}

QStringList HomebrewInstaller::packagesFor(const QList<Component> &missing) const
{
    // Homebrew needs the command line tools, and is itself installed from a
    // terminal: until both are there, only the tools can be asked for.
    if (needsCommandLineTools(missing))
        return {QStringLiteral("xcode-select")};
    if (missing.contains(Component::Homebrew))
        return {};
    return formulasFor(missing);
}

void HomebrewInstaller::install(const QList<Component> &missing, bool)
{
    if (m_process || packagesFor(missing).isEmpty())
        return;
    m_cancelled = false;
    m_commandLineTools = needsCommandLineTools(missing);
    if (m_commandLineTools) {
        start(QStringLiteral("/usr/bin/xcode-select"), {QStringLiteral("--install")});
        return;
    }
    const QString path =
        ComponentChecks::searchPathFor(Platform::MacOS, qEnvironmentVariable("PATH"));
    const QString brew =
        QStandardPaths::findExecutable(QStringLiteral("brew"), path.split(QLatin1Char(':')));
    emit statusChanged(tr("Installing with Homebrew"));
    start(brew, QStringList{QStringLiteral("install")} + formulasFor(missing));
}

void HomebrewInstaller::cancel()
{
    if (m_process && !m_commandLineTools) {
        m_cancelled = true;
        m_process->terminate();
    }
}

void HomebrewInstaller::start(const QString &program, const QStringList &arguments)
{
    m_process = new QProcess(this);
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setStandardInputFile(QProcess::nullDevice());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Programs started from the Finder see a minimal PATH; brew runs tools
    // from its own folder.
    environment.insert(
        QStringLiteral("PATH"),
        ComponentChecks::searchPathFor(Platform::MacOS, environment.value(QStringLiteral("PATH"))));
    m_process->setProcessEnvironment(environment);
    connect(m_process, &QProcess::readyRead, this,
            [this] { emit outputReceived(QString::fromLocal8Bit(m_process->readAll())); });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end({Kind::Failed,
                 tr("The installer could not be started. Run the command below in a terminal."),
                 false});
    });
    connect(m_process, &QProcess::finished, this,
            [this](int exitCode, QProcess::ExitStatus status) {
                if (m_cancelled)
                    end(cancelled());
                else if (m_commandLineTools)
                    end({Kind::Installed,
                         tr("Apple's installer for the command line tools has opened. When it has "
                            "finished, click Install again for the rest."),
                         true});
                else if (status == QProcess::NormalExit && exitCode == 0)
                    end(installed());
                else
                    end({Kind::Failed,
                         tr("Homebrew could not install the packages; its output above says why."),
                         true});
            });
    emit progressChanged(-1);
    emit cancellableChanged(!m_commandLineTools);
    m_process->start(program, arguments);
}

void HomebrewInstaller::end(const InstallOutcome &outcome)
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    m_process->deleteLater();
    m_process = nullptr;
    emit cancellableChanged(false);
    emit finished(outcome);
}
