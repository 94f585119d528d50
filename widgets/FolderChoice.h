#pragma once

#include <QString>

#include <functional>
#include <optional>

class QWidget;

// The one folder chooser of the application, and what it stands for, decided
// apart from the dialog so it can be checked without one.
namespace FolderChoice {

// Runs once, later, with the chosen folder, or with nothing when cancelled.
using Done = std::function<void(const std::optional<QString> &folder)>;

// Which folder an accepted chooser stands for. Callers differ in what they
// ask the user: a folder to put something in reads the highlighted entry as
// the choice, as a folder dialog's selection does, while a setting phrased as
// "choose the parent folder" means the folder being looked at.
enum class Answer {
    // The folder the chooser shows (see shownFolder()), whatever entry is
    // highlighted inside it.
    ShownFolder,
    // The entry highlighted inside it, or the folder it shows when nothing
    // is highlighted; a typed path goes where the dialog itself takes it.
    SelectedEntry,
};

// What the chooser is asked: shown window-modally on `window`, opened at
// `start`, its accept button reading `prompt`, answering with `answer`.
struct Request {
    QWidget *window = nullptr;
    QString start;
    QString prompt;
    Answer answer = Answer::ShownFolder;
};

// Asks for a folder for a setting that holds `stored`, of which the caller
// will append `appended` to the chosen folder; it opens at startFolder() of
// the two. Folders only, new folders allowed.
void choose(QWidget *window, const QString &prompt, Answer answer, const QString &stored,
            const QString &appended, Done done);

// Stands in for the dialog for the rest of the process (tests answer it
// without a person); an empty function restores the dialog.
using Chooser = std::function<void(const Request &request, Done done)>;
void setChooser(Chooser chooser);

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
