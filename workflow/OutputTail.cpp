#include "workflow/OutputTail.h"

#include <QRegularExpression>

void OutputTail::append(const QByteArray &chunk)
{
    m_bytes.append(chunk);
    if (m_bytes.size() <= m_maxBytes)
        return;
    qsizetype cut = m_bytes.size() - m_maxBytes;
    // Start at the beginning of a line, unless the kept part is one line.
    const qsizetype lineEnd = m_bytes.indexOf('\n', cut);
    if (lineEnd >= 0 && lineEnd + 1 < m_bytes.size())
        cut = lineEnd + 1;
    m_bytes.remove(0, cut);
}

QStringList OutputTail::lines(int maxLines) const
{
    static const QRegularExpression lineEnds(QStringLiteral("\r\n|\r|\n"));
    QStringList all = QString::fromUtf8(m_bytes).split(lineEnds, Qt::SkipEmptyParts);
    all.removeIf([](const QString &line) { return line.trimmed().isEmpty(); });
    if (all.size() > maxLines)
        all.remove(0, all.size() - maxLines);
    return all;
}
