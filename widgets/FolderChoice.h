#pragma once

#include <QString>

#include <functional>

// What a folder chooser stands for, decided apart from the dialog so it can
// be checked without one.
namespace FolderChoice {

// Answers whether a folder exists at a path.
using IsFolder = std::function<bool(const QString &path)>;
bool isExistingFolder(const QString &path);

// The folder a chooser shows when the user accepts it. A path typed into its
// name field (absolute, "~/…", or relative with a '/') is where a native
// panel goes before it can end, so an existing folder there is the one
// shown; a bare name only picks an entry inside the shown folder, which does
// not count. `shown` is the folder the dialog displayed, `home` the user's
// home folder for "~".
QString shownFolder(const QString &shown, const QString &typed, const QString &home,
                    const IsFolder &isFolder);

// Where a chooser opens for a setting that holds `stored`: at the folder
// that, chosen again, gives back the stored path (`appended` is what the
// chooser adds to the chosen folder, empty when nothing), or the stored
// path's parent when no folder can; then the nearest of those folders' own
// ancestors that exists. Home when the stored path is empty or relative.
QString startFolder(const QString &stored, const QString &appended, const QString &home,
                    const IsFolder &isFolder);

} // namespace FolderChoice
