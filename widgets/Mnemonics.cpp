#include "widgets/Mnemonics.h"

#include <QSet>

namespace Mnemonics {

namespace {
// A '&' before a letter or digit marks a mnemonic; "&&" is one literal '&',
// and so is a '&' before anything else ("Find & Replace").
bool marksAt(const QString &label, qsizetype i)
{
    return label.at(i) == QLatin1Char('&') && i + 1 < label.size()
           && label.at(i + 1).isLetterOrNumber();
}
} // namespace

QString strip(const QString &label)
{
    QString plain;
    plain.reserve(label.size());
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label.at(i) == QLatin1Char('&') && i + 1 < label.size()
            && label.at(i + 1) == QLatin1Char('&'))
            ++i;
        else if (marksAt(label, i))
            continue;
        plain.append(label.at(i));
    }
    return plain;
}

namespace {

QString escaped(const QString &plain)
{
    QString text = plain;
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

// The mnemonic a label already carries, or a null character.
QChar markedLetter(const QString &label)
{
    for (qsizetype i = 0; i + 1 < label.size(); ++i) {
        if (label.at(i) == QLatin1Char('&') && label.at(i + 1) == QLatin1Char('&'))
            ++i;
        else if (marksAt(label, i))
            return label.at(i + 1).toCaseFolded();
    }
    return QChar();
}

qsizetype pick(const QString &plain, const QSet<QChar> &taken)
{
    auto usable = [&](qsizetype i) {
        const QChar c = plain.at(i);
        return c.isLetterOrNumber() && !taken.contains(c.toCaseFolded());
    };
    // Word starts first: they are what people guess.
    for (qsizetype i = 0; i < plain.size(); ++i) {
        const bool wordStart = i == 0 || !plain.at(i - 1).isLetterOrNumber();
        if (wordStart && usable(i))
            return i;
    }
    for (qsizetype i = 0; i < plain.size(); ++i) {
        if (usable(i))
            return i;
    }
    return -1;
}

} // namespace

QStringList assign(const QStringList &labels)
{
    QSet<QChar> taken;
    for (const QString &label : labels) {
        const QChar c = markedLetter(label);
        if (!c.isNull())
            taken.insert(c);
    }
    QStringList result;
    result.reserve(labels.size());
    for (const QString &label : labels) {
        if (!markedLetter(label).isNull()) {
            result.append(label);
            continue;
        }
        const QString plain = strip(label);
        const qsizetype at = pick(plain, taken);
        if (at < 0) {
            result.append(escaped(plain));
            continue;
        }
        taken.insert(plain.at(at).toCaseFolded());
        result.append(escaped(plain.left(at)) + QLatin1Char('&') + escaped(plain.mid(at)));
    }
    return result;
}

bool enabled()
{
#ifdef Q_OS_MACOS
    return false;
#else
    return true;
#endif
}

} // namespace Mnemonics
