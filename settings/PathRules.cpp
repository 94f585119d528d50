#include "settings/PathRules.h"

namespace {
const QString WorkspaceSuffix = QStringLiteral("/ZELMOR");
const QString OutputSuffix = QStringLiteral("/ZELMOR/Output");
} // namespace

namespace PathRules {

QString workspaceFromChosenFolder(const QString &folder, int defaultName)
{
    return defaultName == 1 ? folder + WorkspaceSuffix : folder;
}

QString outputFromChosenFolder(const QString &folder, int defaultName)
{
    return defaultName == 1 ? folder + OutputSuffix : folder;
}

std::optional<QString> workspaceWithDefaultName(const QString &text)
{
    if (text.contains(WorkspaceSuffix, Qt::CaseSensitive))
        return std::nullopt;
    return text + WorkspaceSuffix;
}

std::optional<QString> outputWithDefaultName(const QString &text)
{
    if (text.contains(OutputSuffix, Qt::CaseSensitive))
        return std::nullopt;
    return text + OutputSuffix;
}

} // namespace PathRules
