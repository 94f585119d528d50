#pragma once

#include <QIcon>

// The artwork the bundle carries: the hicolor PNG sizes rendered from
// resources/icons at build time, compiled into the programs so a window or the
// tray shows them without an installed icon theme or an SVG plugin.
namespace AppIcons {

// The names of the installed desktop entries and icons. Each program passes
// its own to QGuiApplication::setDesktopFileName, so the desktop matches its
// windows to the entry (its name, its icon).
inline constexpr char ApplicationId[] = "org.zelmor.ZELMORHelper";
inline constexpr char CompanionId[] = "org.zelmor.ZELMORHelperStatusbarApp";

// "org.zelmor.ZELMORHelper": the application, its windows and the installer.
QIcon application();
// "org.zelmor.ZELMORHelperStatusbarApp": the status-bar companion's tray icon.
QIcon companion();

} // namespace AppIcons
