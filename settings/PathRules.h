#pragma once

#include <QString>

#include <optional>

// How the workspace and output paths are formed from what the user picks or
// types, in the preferences and in the first-launch wizard alike. Paths are
// appended to as text, never normalised: a trailing "/" stays and yields "//".
namespace PathRules {

enum class Folder { Workspace, Output };

// The setting that holds the folder.
QString settingsKey(Folder which);

// What a folder chooser appends to the folder the user picks: the default
// folder names when `defaultName` is 1, nothing otherwise (the wizard always
// passes 1). The output folder then sits in a "ZELMOR" of its own beside the
// chosen folder, not inside the workspace, unless both were chosen alike.
QString appendedByChooser(Folder which, int defaultName);
QString fromChosenFolder(Folder which, const QString &folder, int defaultName);

// The output folder inside a workspace that carries the default name.
QString outputInWorkspace(const QString &workspace);

// Turning the default-name switch on: each field is extended from its own
// text unless that text already holds the default name anywhere (a
// case-sensitive substring test). Nothing means "leave the field alone".
std::optional<QString> withDefaultName(Folder which, const QString &text);

} // namespace PathRules
