#include "workflow/FailureDiagnosis.h"

#include "workflow/AppController.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>

#include <optional>

// The tools translate their messages when the user's language asks for it,
// so each rule knows the wording of every language this application speaks
// (as git, gcc, make, bash, coreutils and the C library print them on
// Debian). Messages the tools never translate (curl's, ssh's, cmake's) are
// matched in English only.

namespace {

// The context of the texts in the string table.
struct FailureDiagnosis
{
    Q_DECLARE_TR_FUNCTIONS(FailureDiagnosis)
};

QRegularExpression pattern(const char *alternatives)
{
    // Unicode classes: French puts a no-break space before a colon.
    return QRegularExpression(QString::fromUtf8(alternatives),
                              QRegularExpression::CaseInsensitiveOption
                                  | QRegularExpression::UseUnicodePropertiesOption);
}

const QRegularExpression LocalChanges =
    pattern("local changes to the following files would be overwritten"
            "|untracked working tree files would be overwritten"
            "|lokalen Änderungen in den folgenden Dateien"
            "|modifications locales aux fichiers suivants"
            "|cambios locales de los siguientes archivos");

const QRegularExpression Conflict =
    pattern("(?:Merge conflict in|Merge-Konflikt in|Conflit de fusion dans|Conflicto de fusión en)"
            " (.+)$");

const QRegularExpression Divergent =
    pattern("^(?!hint|Hinweis|astuce|ayuda).*(?:divergent branches|abweichenden Branches"
            "|branches divergentes|ramas divergentes)");

const QRegularExpression NotEmpty = pattern("already exists and is not an empty directory"
                                            "|existiert bereits und ist kein leeres Verzeichnis"
                                            "|existe déjà et n'est pas un répertoire vide"
                                            "|ya existe y no es un directorio vacío");

const QRegularExpression DiskFull =
    pattern("No space left on device|kein Speicherplatz mehr verfügbar"
            "|Aucun espace disponible sur le périphérique|No queda espacio en el dispositivo");

// ssh's "Permission denied (publickey)" is about the server, not a folder.
const QRegularExpression Permission =
    pattern("^(?!.*\\(publickey).*(?:Permission denied|Keine Berechtigung|Permission non accordée"
            "|Permiso denegado|Read-only file system|Dateisystem ist nur lesbar"
            "|accessible en lecture seulement|de sólo lectura)");

const QRegularExpression Network =
    pattern("Could not resolve host|Could not resolve proxy|Temporary failure in name resolution"
            "|Name or service not known|Failed to connect|Couldn't connect to server"
            "|Connection refused|Verbindungsaufbau abgelehnt|Connexion refusée|Conexión rehusada"
            "|timed out|Network is unreachable");

const QRegularExpression Access =
    pattern("Authentication failed|could not read (?:Username|Password)|Repository not found"
            "|Permission denied \\(publickey"
            "|repository '.*' (?:not found|does not exist)"
            "|Repository '.*' (?:nicht gefunden|existiert nicht)"
            "|dépôt '.*' (?:non trouvé|n'existe pas)"
            "|repositorio '.*' (?:no encontrado|no existe)"
            "|Could not read from remote repository|Konnte nicht vom Remote-Repository lesen"
            "|Impossible de lire le dépôt distant|No se pudo leer del repositorio remoto");

const QRegularExpression CommandNotFound =
    pattern("([^\\s:]+)\\s*: (?:command not found|Kommando nicht gefunden|commande introuvable"
            "|orden no encontrada)");

const QList<QRegularExpression> Packages{
    QRegularExpression(QStringLiteral("Could NOT find (\\S+)")),
    QRegularExpression(QStringLiteral("package configuration file provided by \"([^\"]+)\"")),
    QRegularExpression(QStringLiteral("Package '([^']+)', required by '[^']*', not found")),
};

const QRegularExpression CompilerError = pattern(
    "^(?!make)(\\S.*?):(\\d+):(?:\\d+:)?\\s+(?:fatal error|error|schwerwiegender Fehler|Fehler"
    "|erreur fatale|erreur|error fatal)\\s*:");

struct Found
{
    QString line;
    QRegularExpressionMatch match;
    int index = -1;
    const QStringList *lines = nullptr;
};

// The first line matching re, standard error before standard output.
std::optional<Found> findLine(const StageResult &stage, const QRegularExpression &re)
{
    for (const QStringList *lines : {&stage.errorLines, &stage.outputLines}) {
        for (int i = 0; i < lines->size(); ++i) {
            QRegularExpressionMatch match = re.match(lines->at(i));
            if (match.hasMatch())
                return Found{lines->at(i).trimmed(), match, i, lines};
        }
    }
    return std::nullopt;
}

// The line a tool ends on when nothing more telling was found.
QString lastLine(const StageResult &stage)
{
    static const QRegularExpression word(QStringLiteral("\\w"));
    for (const QStringList *lines : {&stage.errorLines, &stage.outputLines}) {
        for (auto it = lines->crbegin(); it != lines->crend(); ++it)
            if (it->contains(word))
                return it->trimmed();
    }
    return {};
}

Diagnosis make(FailureKind kind, QString sentence, QString evidence, FailureAction action,
               QString subject)
{
    return Diagnosis{kind, std::move(sentence), std::move(evidence), action, std::move(subject)};
}

// The compile's third child, after cmake and make: cp into the output folder.
constexpr int CompileCopyStage = 2;

bool isCopyStage(const StageResult &stage)
{
    return stage.tag == AppController::TagCompile && stage.stage == CompileCopyStage;
}

Diagnosis toolMissing(const QString &tool, const QString &evidence)
{
    return make(FailureKind::ToolMissing,
                FailureDiagnosis::tr("%1 is not installed. Install Essentials installs it.").arg(tool),
                evidence, FailureAction::InstallEssentials, tool);
}

Diagnosis permission(bool output, const Surroundings &s, const QString &evidence)
{
    if (output)
        return make(FailureKind::Permission,
                    FailureDiagnosis::tr(
                        "You may not write to the output folder %1. Choose another folder.")
                        .arg(s.output),
                    evidence, FailureAction::ChooseOutput, s.output);
    return make(
        FailureKind::Permission,
        FailureDiagnosis::tr("You may not write to the workspace folder %1. Choose another folder.")
            .arg(s.workspace),
        evidence, FailureAction::ChooseWorkspace, s.workspace);
}

// The path as the user chose it: below the workspace, relative to it.
QString shownPath(const QString &path, const QString &workspace)
{
    if (!workspace.isEmpty() && path.startsWith(workspace + QLatin1Char('/')))
        return path.mid(workspace.size() + 1);
    return path;
}

std::optional<Diagnosis> pullBlocked(const StageResult &stage)
{
    const QString sentence = FailureDiagnosis::tr(
        "Changes made in the workspace stand in the way of the update. Keep the workspace "
        "aside and download the sources again.");
    const QString withFiles = FailureDiagnosis::tr(
        "Changes made in the workspace to %1 stand in the way of the update. Keep the "
        "workspace aside and download the sources again.");
    if (auto found = findLine(stage, LocalChanges)) {
        // git lists the files below its message, each indented by a tab.
        QStringList files;
        for (int i = found->index + 1; i < found->lines->size(); ++i) {
            const QString &line = found->lines->at(i);
            if (line.startsWith(QLatin1Char('\t')))
                files << line.trimmed();
            else if (!files.isEmpty())
                break;
        }
        const QString list = files.join(QStringLiteral(", "));
        return make(FailureKind::PullBlocked, list.isEmpty() ? sentence : withFiles.arg(list),
                    found->line, FailureAction::MoveAsideAndDownload, list);
    }
    QStringList conflicts;
    QString evidence;
    for (const QStringList *lines : {&stage.errorLines, &stage.outputLines}) {
        for (const QString &line : *lines) {
            const QRegularExpressionMatch match = Conflict.match(line);
            if (!match.hasMatch())
                continue;
            if (evidence.isEmpty())
                evidence = line.trimmed();
            conflicts << match.captured(1).trimmed();
        }
    }
    if (!conflicts.isEmpty()) {
        const QString list = conflicts.join(QStringLiteral(", "));
        return make(FailureKind::PullBlocked, withFiles.arg(list), evidence,
                    FailureAction::MoveAsideAndDownload, list);
    }
    if (auto found = findLine(stage, Divergent))
        return make(FailureKind::PullBlocked, sentence, found->line,
                    FailureAction::MoveAsideAndDownload, QString());
    return std::nullopt;
}

QString formattedSize(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

} // namespace

Diagnosis diagnoseFailure(const StageResult &stage, const Surroundings &s)
{
    if (stage.notStarted) {
        if (!s.workspaceWritable)
            return permission(false, s, QString());
        if (!s.programFound)
            return toolMissing(stage.tool, QString());
        return make(FailureKind::Other,
                    FailureDiagnosis::tr("%1 could not be started.").arg(stage.tool), QString(),
                    FailureAction::None, stage.tool);
    }

    if (stage.tool == QLatin1String("git")) {
        if (auto blocked = pullBlocked(stage))
            return *blocked;
        if (auto found = findLine(stage, NotEmpty)) {
            // Only the download can move the folder aside; elsewhere the
            // folder is one of the modules, which the module operation
            // replaces itself.
            const bool download = stage.tag == AppController::TagClone;
            return make(
                FailureKind::WorkspaceNotEmpty,
                download
                    ? FailureDiagnosis::tr("The workspace folder %1 already exists but holds no "
                                           "download. Move it aside and download again.")
                          .arg(s.workspace)
                    : FailureDiagnosis::tr("A folder without a download is in the way of git."),
                found->line, download ? FailureAction::MoveAsideAndDownload : FailureAction::None,
                s.workspace);
        }
    }

    if (auto found = findLine(stage, DiskFull)) {
        const bool output =
            isCopyStage(stage) || (!s.output.isEmpty() && found->line.contains(s.output));
        const qint64 free = output ? s.outputFreeBytes : s.workspaceFreeBytes;
        const QString sentence =
            free >= 0 ? FailureDiagnosis::tr(
                            "The disk is full: it has %1 free. Free some space, then try again.")
                            .arg(formattedSize(free))
                      : FailureDiagnosis::tr("The disk is full. Free some space, then try again.");
        return make(FailureKind::DiskFull, sentence, found->line, FailureAction::TryAgain,
                    output ? s.output : s.workspace);
    }

    if (auto found = findLine(stage, Permission)) {
        const bool output =
            isCopyStage(stage) || (!s.output.isEmpty() && found->line.contains(s.output));
        return permission(output, s, found->line);
    }

    if (auto found = findLine(stage, Network))
        return make(FailureKind::Network,
                    FailureDiagnosis::tr(
                        "The server could not be reached. Check the internet connection, then "
                        "try again."),
                    found->line, FailureAction::TryAgain, QString());

    if (auto found = findLine(stage, Access))
        return make(FailureKind::Access,
                    FailureDiagnosis::tr(
                        "The repository was not found or asks for a login: its address is wrong, "
                        "or it is private."),
                    found->line, FailureAction::None, QString());

    if (auto found = findLine(stage, CommandNotFound))
        return toolMissing(found->match.captured(1), found->line);
    // The shell's status for a command it could not find.
    if (stage.status == 127 && !stage.signalled)
        return toolMissing(stage.tool, lastLine(stage));

    for (const QRegularExpression &re : Packages) {
        if (auto found = findLine(stage, re)) {
            const QString package = found->match.captured(1);
            return make(FailureKind::PackageMissing,
                        FailureDiagnosis::tr(
                            "CMake could not find %1, which compiling ZELMOR needs. Install "
                            "Essentials installs it.")
                            .arg(package),
                        found->line, FailureAction::InstallEssentials, package);
        }
    }

    if (auto found = findLine(stage, CompilerError)) {
        const QString file = shownPath(found->match.captured(1), s.workspace);
        const QString line = found->match.captured(2);
        return make(FailureKind::CompileError,
                    FailureDiagnosis::tr("The compiler stopped at an error in %1, line %2.")
                        .arg(file, line),
                    found->line, FailureAction::None, file + QLatin1Char(':') + line);
    }

    if (isCopyStage(stage) && !s.outputWritable)
        return permission(true, s, lastLine(stage));
    if (!s.workspaceWritable)
        return permission(false, s, lastLine(stage));

    const QString number = QString::number(stage.status);
    return make(FailureKind::Other,
                stage.signalled
                    ? FailureDiagnosis::tr("%1 was ended by signal %2.").arg(stage.tool, number)
                    : FailureDiagnosis::tr("%1 ended with status %2.").arg(stage.tool, number),
                lastLine(stage), FailureAction::None, stage.tool);
}

QString failureActionTitle(FailureAction action)
{
    switch (action) {
    case FailureAction::None:
        return {};
    case FailureAction::TryAgain:
        return FailureDiagnosis::tr("Try Again");
    case FailureAction::ChooseWorkspace:
    case FailureAction::ChooseOutput:
        return FailureDiagnosis::tr("Choose Another Folder...");
    case FailureAction::InstallEssentials:
        return FailureDiagnosis::tr("Install Essentials");
    case FailureAction::MoveAsideAndDownload:
        return FailureDiagnosis::tr("Move Aside and Download Again");
    }
    return {};
}
