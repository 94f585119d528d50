#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

// Rules about submodules and workspace paths that several operations share.
// Pure functions, so they can be checked without a window.

// The module URLs of a .gitmodules text, taken by position: the text is split
// at blanks and line feeds only, and every eighth token from position 7 on is
// a URL, as long as it comes before the last token. This matches the layout
// git writes (header line, tab-indented path and url lines); any other layout
// yields whatever tokens stand at those positions.
QStringList moduleURLsFromGitmodules(const QString &text);

// The folder name a module is cloned into: the URL split at ".", "/" and "-",
// last token but one ("…/emu-lang.git" gives "lang"). A URL of fewer than two
// tokens has no name: ok is set to false and an empty string returned.
QString moduleNameFromURL(const QString &url, bool *ok = nullptr);

// Whether a module entry may go into the shell line "git clone --progress
// URL NAME". The URL comes from a downloaded .gitmodules, so it is treated as
// a stranger's text: it is accepted only when bash passes it to git as one
// word, unchanged, and git cannot take it for an option. That holds for the
// ordinary forms (https, http, ssh, git and file URLs, scp-style user@host:path,
// plain paths) made of ASCII letters, digits and -._~:/@%+=, and nothing else.
// Refused besides: a leading "-" (git would read an option) or "~" (bash
// would put the home folder there), a word that looks like an assignment and
// holds "~" (bash expands it after "=" and ":" there), and "::" in the URL
// (git starts the helper program a transport::address names). The name must
// also be one folder inside the workspace: not empty, ".", "..", nor holding
// "/".
enum class ModuleEntryVerdict {
    Accepted,
    NoName,  // no folder name can be derived (or only "." or "..")
    Unsafe,  // the URL or the name could run or change something
};
ModuleEntryVerdict checkModuleEntry(const QString &url, const QString &name);

// "yyyy-MM-dd HH.mm.ss" in local time; appended with "." to a folder the
// user keeps.
QString dateSuffix(const QDateTime &when);
// Where a folder the user keeps beside a fresh one goes: its path, ".", the
// date suffix.
QString keptPath(const QString &folder, const QDateTime &when);

// Whether any file-system item (file, folder, or the target of a link) is
// reachable at path. Errors count as "no".
bool pathExists(const QString &path);

// File operations whose failures the operations ignore (the tool that runs
// next reports what is wrong). Each returns whether it worked.
//
// Removes a file, a link (not its target) or a folder with its contents.
bool removeItem(const QString &path);
// Renames from to to; refuses when to exists.
bool moveItem(const QString &from, const QString &to);
// Whether path is a folder (not a link to one) with nothing in it, hidden
// items included: what a clone leaves where a module goes.
bool isEmptyFolder(const QString &path);
// Whether removeItem(folder) would take any of paths with it: folder is one
// of them or holds one, links resolved as the system resolves them (a link
// at folder itself goes alone), and folders compared by identity, not by
// name, so another route to the same folder is seen through.
bool wouldRemoveAny(const QString &folder, const QStringList &paths);

// A file's text when it can be read and is valid UTF-8; nothing otherwise.
std::optional<QString> readUtf8File(const QString &path);

// Registering appends the whole .gitmodules text to the repository's config,
// where git obeys every setting it finds: a stranger's file could name a
// program (core.fsmonitor, core.sshCommand, an alias, an include, a submodule
// "update = !command") that the next git pull runs. Registration therefore
// takes only what git itself writes there: [submodule "name"] sections with
// the keys path, url, branch, shallow, ignore, fetchRecurseSubmodules and
// update (checkout, rebase, merge or none), blank lines and comments. Returns
// the 1-based number of the first line that is anything else, 0 when there
// is none.
int firstForeignGitmodulesLine(const QString &text);

// The text that registers the modules: the pristine config, a line feed, the
// .gitmodules text, nothing merged. A text that could not be read stands as
// "(null)".
QString registeredConfigText(const std::optional<QString> &config,
                             const std::optional<QString> &gitmodules);
