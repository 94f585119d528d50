#pragma once

#include <QString>

// Where this user's local sockets and lock files live. A socket in a folder
// that anyone may write to can be taken first by another account, which then
// receives what was meant for us; only a folder that is ours alone will do.
namespace PrivateRuntime {

// $XDG_RUNTIME_DIR when it is set, absolute, ours and closed to others (0700);
// otherwise "<temp>/zelmor-runtime-<uid>", made with mode 0700 when missing.
// A fallback folder that exists but is not a real folder of ours, or is open
// to others, is refused: one line on standard error, an empty result.
QString directory();

// "<directory>/<name>", or empty when there is no private folder. Usable as a
// QLocalServer / QLocalSocket name: a name that is a path is taken as is.
QString socketPath(const QString &name);

// Whether path is a folder (not a link to one) owned by this user with no
// access for group or others. Pure apart from one lstat.
bool isPrivateFolder(const QString &path);

} // namespace PrivateRuntime
