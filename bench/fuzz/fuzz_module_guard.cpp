// libFuzzer target for the module guard: whatever a downloaded .gitmodules
// holds, an entry the guard accepts is one plain word for bash and no option
// for git, and its name is one folder inside the workspace.
//
// The input is taken as a .gitmodules text (its URLs by the registry's rule,
// each with the name the module rule derives) and, split at its first NUL,
// as a URL and a name of any shape.

#include "FuzzCheck.h"
#include "workflow/ModuleRules.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {


bool allowed(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z') || (u >= u'0' && u <= u'9')
           || QStringView(u"-._~:/@%+=,").contains(c);
}

// bash reads NAME=VALUE as an assignment even as an argument.
bool looksLikeAssignment(const QString &word)
{
    const qsizetype equals = word.indexOf(u'=');
    if (equals <= 0 || (word.at(0) >= u'0' && word.at(0) <= u'9'))
        return false;
    for (qsizetype i = 0; i < equals; ++i) {
        const QChar c = word.at(i);
        if (!(c == u'_' || (c.unicode() < 128 && c.isLetterOrNumber())))
            return false;
    }
    return true;
}

void checkWord(const QString &word)
{
    check(!word.isEmpty());
    check(word.front() != u'-' && word.front() != u'~');
    for (const QChar c : word)
        check(allowed(c));
    check(!(looksLikeAssignment(word) && word.contains(u'~')));
}

void checkEntry(const QString &url, const QString &name)
{
    const ModuleEntryVerdict verdict = checkModuleEntry(url, name);
    // Pure: the same answer twice.
    check(checkModuleEntry(url, name) == verdict);
    if (verdict != ModuleEntryVerdict::Accepted) {
        return;
    }
    checkWord(url);
    checkWord(name);
    check(!url.contains(QLatin1String("::")));
    check(!name.contains(u'/') && name != QLatin1String(".") && name != QLatin1String(".."));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString text = QString::fromUtf8(bytes);

    for (const QString &url : moduleURLsFromGitmodules(text)) {
        bool named = false;
        const QString name = moduleNameFromURL(url, &named);
        const ModuleEntryVerdict verdict = checkModuleEntry(url, name);
        check(named || verdict == ModuleEntryVerdict::NoName);
        checkEntry(url, name);
    }

    // The registry guard names a line of the text, or none.
    const int foreign = firstForeignGitmodulesLine(text);
    check(foreign >= 0 && foreign <= text.count(u'\n') + 1);
    check(foreign == firstForeignGitmodulesLine(text));

    const qsizetype split = bytes.indexOf('\0');
    if (split >= 0) {
        checkEntry(QString::fromUtf8(bytes.first(split)), QString::fromUtf8(bytes.sliced(split + 1)));
    } else {
        checkEntry(text, moduleNameFromURL(text));
    }
    return 0;
}
