#pragma once

#include <QString>

// The user's own folders that the desktop names, worked out in one place.
namespace UserFolders {

// Where per-user configuration lives: $XDG_CONFIG_HOME, or ~/.config when it
// is unset or relative (a relative value is invalid and ignored, which Qt
// does not do by itself). On macOS, ~/Library/Preferences.
QString config();

} // namespace UserFolders
