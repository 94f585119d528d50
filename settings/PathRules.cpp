#include "settings/PathRules.h"

#include "settings/SettingsKeys.h"

namespace {
const QString WorkspaceName = QStringLiteral("/ZELMOR");
const QString OutputName = QStringLiteral("/Output");
} // namespace

namespace PathRules {

QString settingsKey(Folder which)
{
    return which == Folder::Workspace ? SettingsKeys::Workspace : SettingsKeys::Output;
}

QString outputInWorkspace(const QString &workspace)
{
    return workspace + OutputName;
}

QString appendedByChooser(Folder which, int defaultName)
{
    if (defaultName != 1)
        return QString();
    return which == Folder::Workspace ? WorkspaceName : outputInWorkspace(WorkspaceName);
}

QString fromChosenFolder(Folder which, const QString &folder, int defaultName)
{
    return folder + appendedByChooser(which, defaultName);
}

std::optional<QString> withDefaultName(Folder which, const QString &text)
{
    const QString name = appendedByChooser(which, 1);
    if (text.contains(name, Qt::CaseSensitive))
        return std::nullopt;
    return text + name;
}

} // namespace PathRules
