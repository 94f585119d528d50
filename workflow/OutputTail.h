#pragma once

#include <QByteArray>
#include <QStringList>

// The last lines a child wrote to one of its streams, in bounded memory: a
// build that prints for an hour keeps no more than the end of what it said.
// Carriage returns end lines too, so git's progress, which redraws one line,
// leaves only its final state behind.
class OutputTail
{
public:
    // At most maxBytes of the most recent output are kept, cut at a line
    // boundary where there is one.
    explicit OutputTail(qsizetype maxBytes = 16 * 1024) : m_maxBytes(maxBytes) {}

    void append(const QByteArray &chunk);
    void clear() { m_bytes.clear(); }

    // The non-empty lines kept, oldest first, decoded as UTF-8; at most
    // maxLines of them.
    QStringList lines(int maxLines = 60) const;

private:
    qsizetype m_maxBytes;
    QByteArray m_bytes;
};
