#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// Application bundles: "<Name>.app/Contents/{Info.plist,MacOS/<exe>}". Every
// program of this project ships in one, on every platform, so these few
// functions are the only place that knows the layout.
namespace Bundle {

struct Info
{
    QString identifier; // CFBundleIdentifier
    QString executable; // CFBundleExecutable
    QString name;       // CFBundleName
    QString version;    // CFBundleShortVersionString
};

// Reads "<bundle>/Contents/Info.plist"; nothing when it is missing or has no
// identifier and executable.
std::optional<Info> readInfo(const QString &bundlePath);
// The same from the file's contents (an XML property list).
std::optional<Info> parseInfo(const QByteArray &plist);
// "<bundle>/Contents/MacOS/<CFBundleExecutable>", or empty.
QString executablePath(const QString &bundlePath);

// The bundle the running program lives in; when it was not started from a
// bundle, the folder it was started from.
QString mainBundlePath();
// Replaces mainBundlePath() for the rest of the process (tests that need a
// real bundle tree).
void setMainBundlePath(const QString &path);
// The main bundle's identifier, from its Info.plist, else the built-in one.
QString mainBundleIdentifier();

QString statusbarAppPath(); // .../Contents/Library/LoginItems/ZELMORHelperStatusbarApp.app
QString installerAppPath(); // .../Contents/Library/ZELMORInstallComponets.app

// Starts the bundle's program detached. A bundle that cannot be read or
// started fails quietly: one line on standard error, false returned.
bool launchApplication(const QString &bundlePath, const QStringList &arguments = {});

// Puts "<main bundle>/Contents/Helpers" first on PATH, so children find the
// bundle's own tools (on Linux, `defaults`) before any other.
void exposeHelpersOnPath();

} // namespace Bundle
