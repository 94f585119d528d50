#include "settings/LoginAgent.h"

#include "platform/Bundle.h"
#include "platform/UserFolders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamWriter>

namespace {

#ifdef Q_OS_MACOS
const QString AgentFileFormat = QStringLiteral("/%1.plist");
#else
const QString AgentFileFormat = QStringLiteral("/%1.desktop");
#endif

// Desktop Entry values of type string: a backslash and the control
// characters are escaped. Applied after the Exec quoting, because readers
// undo it first.
QString escapeStringValue(const QString &value)
{
    QString out;
    out.reserve(value.size());
    for (const QChar c : value) {
        switch (c.unicode()) {
        case '\\': out += QStringLiteral("\\\\"); break;
        case '\n': out += QStringLiteral("\\n"); break;
        case '\t': out += QStringLiteral("\\t"); break;
        case '\r': out += QStringLiteral("\\r"); break;
        default: out += c; break;
        }
    }
    return out;
}

QString agentFileFor(const QString &companionBundle)
{
    const auto info = Bundle::readInfo(companionBundle);
    if (!info)
        return {};
    return LoginAgent::agentsFolder() + AgentFileFormat.arg(info->identifier);
}

} // namespace

namespace LoginAgent {

QString agentsFolder()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("%1/Library/LaunchAgents").arg(QDir::homePath());
#else
    return UserFolders::config() + QStringLiteral("/autostart");
#endif
}

QString agentFilePath()
{
    return agentFileFor(Bundle::statusbarAppPath());
}

bool isInstalled()
{
    const QString path = agentFilePath();
    return !path.isEmpty() && QFileInfo::exists(path);
}

void install()
{
    const QString companion = Bundle::statusbarAppPath();
    const auto info = Bundle::readInfo(companion);
    // Without the companion there is neither a label nor a program to name.
    if (!info)
        return;
    const QString path = agentsFolder() + AgentFileFormat.arg(info->identifier);

    // An existing file is the user's (or an earlier install's) and is kept,
    // even when it names a companion that has moved since.
    const QFileInfo entry(path);
    if (entry.exists() && !entry.isDir())
        return;

    const QString executable = Bundle::executablePath(companion);
#ifdef Q_OS_MACOS
    const QByteArray content = launchAgentPlist(info->identifier, executable);
#else
    const QByteArray content =
        autostartEntry(info->name.isEmpty() ? info->identifier : info->name, executable);
#endif
    // Written in place. The agents folder is deliberately not created: when
    // it is missing, or a folder stands at the file's path, opening fails and
    // nothing is written.
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    file.write(content);
}

void uninstall()
{
    const QString path = agentFilePath();
    if (path.isEmpty())
        return;
    const QFileInfo entry(path);
    if (entry.isDir() && !entry.isSymLink())
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
}

QByteArray launchAgentPlist(const QString &label, const QString &executable)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(-1);
    xml.writeStartDocument();
    xml.writeDTD(QStringLiteral(
        "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"));
    xml.writeStartElement(QStringLiteral("plist"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    xml.writeStartElement(QStringLiteral("dict"));
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("Label"));
    xml.writeTextElement(QStringLiteral("string"), label);
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("ProgramArguments"));
    xml.writeStartElement(QStringLiteral("array"));
    // One string, blanks included: launchd passes it on without a shell.
    xml.writeTextElement(QStringLiteral("string"), executable);
    xml.writeTextElement(QStringLiteral("string"), QStringLiteral("-runMode"));
    xml.writeTextElement(QStringLiteral("string"), QStringLiteral("autoLaunched"));
    xml.writeEndElement();
    xml.writeTextElement(QStringLiteral("key"), QStringLiteral("RunAtLoad"));
    xml.writeEmptyElement(QStringLiteral("true"));
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndDocument();
    return out;
}

QByteArray autostartEntry(const QString &name, const QString &executable)
{
    const QString exec = desktopExecArgument(executable) + QStringLiteral(" -runMode autoLaunched");
    QString entry;
    entry += QStringLiteral("[Desktop Entry]\n");
    entry += QStringLiteral("Type=Application\n");
    entry += QStringLiteral("Name=") + escapeStringValue(name) + QLatin1Char('\n');
    entry += QStringLiteral("Exec=") + exec + QLatin1Char('\n');
    entry += QStringLiteral("X-GNOME-Autostart-enabled=true\n");
    return entry.toUtf8();
}

QString desktopExecArgument(const QString &argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    bool mustQuote = argument.isEmpty();
    for (const QChar c : argument)
        mustQuote = mustQuote || reserved.contains(c);

    QString arg;
    if (mustQuote) {
        arg += QLatin1Char('"');
        for (const QChar c : argument) {
            if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$')
                || c == QLatin1Char('\\'))
                arg += QLatin1Char('\\');
            arg += c;
        }
        arg += QLatin1Char('"');
    } else {
        arg = argument;
    }
    // "%" introduces a field code even inside quotes.
    arg.replace(QLatin1Char('%'), QStringLiteral("%%"));
    return escapeStringValue(arg);
}

} // namespace LoginAgent
