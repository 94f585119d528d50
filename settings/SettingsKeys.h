#pragma once

#include <QString>

// The eight keys of the settings domain. The texts are the stored key names
// and must never change, or existing users lose their settings.
namespace SettingsKeys {
inline const QString QuitStatusbarApp = QStringLiteral("Quit Statusbar App Main App quits");
inline const QString DefaultNameZELMOR = QStringLiteral("Default name ZELMOR");
inline const QString Log = QStringLiteral("log");
inline const QString Initialization = QStringLiteral("Initialization");
inline const QString FirstLaunch = QStringLiteral("First Launch");
inline const QString Workspace = QStringLiteral("Workspace");
inline const QString Output = QStringLiteral("Output");
inline const QString AppLocation = QStringLiteral("App Location");

inline const QString DefaultWorkspace = QStringLiteral("/Developer/ZELMOR");
inline const QString DefaultOutput = QStringLiteral("/Developer/ZELMOR/Output");
} // namespace SettingsKeys
