#include "widgets/FolderChoice.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QUrl>

namespace FolderChoice {

namespace {

Chooser &chooserHook()
{
    static Chooser hook;
    return hook;
}

// The folder an accepted dialog stands for, or nothing when it names no
// local folder.
std::optional<QString> answerOf(const QFileDialog &dialog, Answer answer)
{
    // Qt's own dialog selects a highlighted entry, else a typed path, else
    // the folder it shows.
    const QUrl url = answer == Answer::SelectedEntry ? dialog.selectedUrls().value(0)
                                                     : dialog.directoryUrl();
    if (!url.isLocalFile() || url.toLocalFile().isEmpty())
        return std::nullopt;
    if (answer == Answer::SelectedEntry)
        return url.toLocalFile();
    // The name field has no accessor of its own; Qt names it.
    const auto *nameField = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    return shownFolder(url.toLocalFile(), nameField ? nameField->text() : QString(),
                       QDir::homePath(), isExistingFolder);
}

void openDialog(const Request &request, Done done)
{
    auto *dialog = new QFileDialog(request.window);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly, true);
    // Qt's own dialog, because some platform dialogs (the desktop portal)
    // report only the folder they started in, not the one they show.
    dialog->setOption(QFileDialog::DontUseNativeDialog, true);
    dialog->setLabelText(QFileDialog::Accept, request.prompt);
    dialog->setDirectory(request.start);
    // Window-modal: the window behind stays drawn and answers everything
    // but input while the user browses.
    dialog->setWindowModality(Qt::WindowModal);
    QObject::connect(dialog, &QDialog::finished, dialog,
                     [dialog, done, answer = request.answer](int result) {
                         dialog->deleteLater();
                         done(result == QDialog::Accepted ? answerOf(*dialog, answer)
                                                          : std::nullopt);
                     });
    dialog->open();
}

QString expandHome(const QString &path, const QString &home)
{
    if (path == QLatin1String("~"))
        return home;
    if (path.startsWith(QLatin1String("~/")))
        return home + path.mid(1);
    return path;
}

QString parentOf(const QString &cleanPath)
{
    const qsizetype slash = cleanPath.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : cleanPath.left(slash);
}

} // namespace

void choose(QWidget *window, const QString &prompt, Answer answer, const QString &stored,
            const QString &appended, Done done)
{
    const Request request{window, startFolder(stored, appended, QDir::homePath(), isExistingFolder),
                          prompt, answer};
    if (chooserHook())
        chooserHook()(request, std::move(done));
    else
        openDialog(request, std::move(done));
}

void setChooser(Chooser chooser)
{
    chooserHook() = std::move(chooser);
}

bool isExistingFolder(const QString &path)
{
    return QFileInfo(path).isDir();
}

QString shownFolder(const QString &shown, const QString &typed, const QString &home,
                    const IsFolder &isFolder)
{
    const bool isPath = typed.startsWith(QLatin1Char('/')) || typed == QLatin1String("~")
                        || typed.startsWith(QLatin1String("~/")) || typed.contains(QLatin1Char('/'));
    if (!isPath)
        return shown;
    QString path = expandHome(typed, home);
    if (!path.startsWith(QLatin1Char('/')))
        path = shown + QLatin1Char('/') + path;
    path = QDir::cleanPath(path);
    return isFolder(path) ? path : shown;
}

QString startFolder(const QString &stored, const QString &appended, const QString &home,
                    const IsFolder &isFolder)
{
    const QString path = expandHome(stored, home);
    if (!path.startsWith(QLatin1Char('/')))
        return home;
    QString folder;
    if (appended.isEmpty())
        folder = path;
    else if (path.endsWith(appended))
        folder = path.left(path.size() - appended.size());
    else
        folder = parentOf(QDir::cleanPath(path));
    folder = folder.isEmpty() ? QStringLiteral("/") : QDir::cleanPath(folder);
    while (!isFolder(folder)) {
        if (folder == QLatin1String("/"))
            return home;
        folder = parentOf(folder);
    }
    return folder;
}

} // namespace FolderChoice
