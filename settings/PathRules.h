#pragma once

#include <QString>

#include <optional>

// How the preferences window forms the workspace and output paths. Paths are
// appended to as text, never normalised: a trailing "/" stays and yields "//".
namespace PathRules {

// Folder chooser results: with the default-name switch on, the default folder
// names are appended to the chosen folder. The output folder is then placed
// beside the chosen folder's own "ZELMOR", not inside the workspace.
QString workspaceFromChosenFolder(const QString &folder, int defaultName);
QString outputFromChosenFolder(const QString &folder, int defaultName);

// Turning the default-name switch on: each field is extended from its own
// text unless that text already holds the default name anywhere (a
// case-sensitive substring test). Nothing means "leave the field alone".
std::optional<QString> workspaceWithDefaultName(const QString &text);
std::optional<QString> outputWithDefaultName(const QString &text);

} // namespace PathRules
