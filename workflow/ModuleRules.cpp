#include "workflow/ModuleRules.h"

#include "text/TextPieces.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

#include <climits>
#include <optional>
#include <utility>

#include <sys/stat.h>

namespace {

// One word that bash hands over literally, and git does not read as an
// option.
bool isPlainShellWord(QStringView word)
{
    if (word.isEmpty() || word.front() == u'-' || word.front() == u'~')
        return false;
    for (const QChar c : word) {
        const char16_t u = c.unicode();
        const bool plain = (u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z')
                           || (u >= u'0' && u <= u'9') || QStringView(u"-._~:/@%+=,").contains(c);
        if (!plain)
            return false;
    }
    // "NAME=..." is an assignment to bash, even as an argument: a "~" after
    // its "=" or any ":" becomes the home folder.
    const qsizetype equals = word.indexOf(u'=');
    if (equals > 0 && word.contains(u'~')) {
        const QStringView head = word.first(equals);
        bool identifier = !(head.front() >= u'0' && head.front() <= u'9');
        for (const QChar c : head)
            identifier = identifier && (c == u'_' || (c.unicode() < 128 && c.isLetterOrNumber()));
        if (identifier)
            return false;
    }
    return true;
}

} // namespace

ModuleEntryVerdict checkModuleEntry(const QString &url, const QString &name)
{
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return ModuleEntryVerdict::NoName;
    if (!isPlainShellWord(url) || url.contains(QLatin1String("::")))
        return ModuleEntryVerdict::Unsafe;
    if (!isPlainShellWord(name) || name.contains(u'/'))
        return ModuleEntryVerdict::Unsafe;
    return ModuleEntryVerdict::Accepted;
}

QStringList moduleURLsFromGitmodules(const QString &text)
{
    const QList<QStringView> tokens = TextPieces::splitAtAny(text, u" \n");
    // The last token is never looked at: an entry without a final line feed
    // loses its URL.
    const qsizetype limit = tokens.size() - 1;
    QStringList urls;
    if (limit < 8)
        return urls;
    for (qsizetype position = 7; position < limit; position += 8)
        urls.append(tokens.at(position).toString());
    return urls;
}

QString moduleNameFromURL(const QString &url, bool *ok)
{
    const QList<QStringView> tokens = TextPieces::splitAtAny(url, u"./-");
    const bool named = tokens.size() >= 2;
    if (ok)
        *ok = named;
    return named ? tokens.at(tokens.size() - 2).toString() : QString();
}

QString dateSuffix(const QDateTime &when)
{
    // QDateTime formats with the C locale's digits whatever the user's
    // locale, which is what a folder name needs.
    return when.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
}

QString keptPath(const QString &folder, const QDateTime &when)
{
    return folder + QLatin1Char('.') + dateSuffix(when);
}

bool pathExists(const QString &path)
{
    return !path.isEmpty() && QFileInfo::exists(path);
}

bool removeItem(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink())
        return QDir(path).removeRecursively();
    return QFile::remove(path);
}

bool moveItem(const QString &from, const QString &to)
{
    // QFileInfo::exists follows links; a dangling link at the target is still
    // something in the way.
    if (pathExists(to) || QFileInfo(to).isSymLink())
        return false;
    return QDir().rename(from, to);
}

bool isEmptyFolder(const QString &path)
{
    const QFileInfo info(path);
    return info.isDir() && !info.isSymLink()
           && QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System
                                 | QDir::NoDotAndDotDot);
}

namespace {

// A folder as the system knows it. Two spellings of one folder (through a
// bind mount, or differing in case on a case-insensitive volume such as a
// FAT stick or a macOS disk) have one identity, though no string comparison
// of their paths would tell.
std::optional<std::pair<dev_t, ino_t>> folderIdentity(const QString &path)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return std::pair(info.st_dev, info.st_ino);
}

} // namespace

bool wouldRemoveAny(const QString &folder, const QStringList &paths)
{
    // A link at folder goes alone; a folder that is not there takes nothing.
    const auto removed = QFileInfo(folder).isSymLink() ? std::nullopt : folderIdentity(folder);
    if (!removed)
        return false;
    for (const QString &path : paths) {
        // From the nearest part of path that exists (none of an empty path),
        // links resolved, the parents by name are the parents on disk.
        QString existing = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
        while (existing.size() > 1 && !QFileInfo::exists(existing))
            existing = QFileInfo(existing).path();
        QString at = QFileInfo(existing).canonicalFilePath();
        while (!at.isEmpty()) {
            if (folderIdentity(at) == removed)
                return true;
            at = at == QLatin1String("/") ? QString() : QFileInfo(at).path();
        }
    }
    return false;
}

std::optional<QString> readUtf8File(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

int firstForeignGitmodulesLine(const QString &text)
{
    static const QRegularExpression header(
        QStringLiteral(R"(^\[\s*submodule\s+"[^"\\]*"\s*\]\s*([#;].*)?$)"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression assignment(
        QStringLiteral(R"(^([A-Za-z][A-Za-z0-9-]*)\s*(=(.*))?$)"));
    static const QStringList plainKeys = {
        QStringLiteral("path"),   QStringLiteral("url"),    QStringLiteral("branch"),
        QStringLiteral("shallow"), QStringLiteral("ignore"), QStringLiteral("fetchrecursesubmodules")};
    static const QStringList updateModes = {QStringLiteral("checkout"), QStringLiteral("rebase"),
                                            QStringLiteral("merge"), QStringLiteral("none")};

    const QStringList lines = text.split(u'\n');
    bool inSection = false; // keys before the first section belong to no submodule
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        const int number = int(qMin<qsizetype>(i + 1, INT_MAX));
        if (line.isEmpty() || line.startsWith(u'#') || line.startsWith(u';'))
            continue;
        // A continuation joins the next line to this one as git reads it;
        // git never writes one here, so there is no need to follow it.
        if (line.endsWith(u'\\'))
            return number;
        if (line.startsWith(u'[')) {
            if (!header.match(line).hasMatch())
                return number;
            inSection = true;
            continue;
        }
        const QRegularExpressionMatch match = assignment.match(line);
        if (!inSection || !match.hasMatch())
            return number;
        const QString key = match.captured(1).toLower();
        if (key == QLatin1String("update")) {
            QString mode = match.captured(3).trimmed();
            if (mode.size() >= 2 && mode.startsWith(u'"') && mode.endsWith(u'"'))
                mode = mode.mid(1, mode.size() - 2);
            if (!updateModes.contains(mode.toLower()))
                return number;
        } else if (!plainKeys.contains(key)) {
            return number;
        }
    }
    return 0;
}

QString registeredConfigText(const std::optional<QString> &config,
                             const std::optional<QString> &gitmodules)
{
    const QString missing = QStringLiteral("(null)");
    return config.value_or(missing) + u'\n' + gitmodules.value_or(missing);
}
