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
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, done](int result) {
        dialog->deleteLater();
        const QUrl shown = dialog->directoryUrl();
        if (result != QDialog::Accepted || !shown.isLocalFile() || shown.toLocalFile().isEmpty()) {
            done(std::nullopt);
            return;
        }
        // The name field has no accessor of its own; Qt names it.
        auto *nameField = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        done(shownFolder(shown.toLocalFile(), nameField ? nameField->text() : QString(),
                         QDir::homePath(), isExistingFolder));
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

void choose(QWidget *window, const QString &prompt, const QString &stored,
            const QString &appended, Done done)
{
    const Request request{window, startFolder(stored, appended, QDir::homePath(), isExistingFolder),
                          prompt};
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
