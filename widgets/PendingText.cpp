#include "widgets/PendingText.h"

#include <algorithm>

PendingText::PendingText(qsizetype maxLines, qsizetype maxCharacters)
    : m_maxLines(maxLines), m_maxCharacters(maxCharacters)
{
}

void PendingText::append(QStringView text, const QList<Run> &runs)
{
    if (text.isEmpty())
        return;
    compact();
    if (!runs.isEmpty() && m_runs.isEmpty() && !isEmpty()) {
        // Until now all of it was in the default style.
        m_runs.append({m_text.size() - m_start, 0});
        m_runIndex = 0;
        m_runOffset = 0;
    }
    if (!runs.isEmpty())
        m_runs.append(runs);
    else if (!m_runs.isEmpty())
        m_runs.append({text.size(), 0});
    m_text.append(text);
    m_lines += text.count(u'\n');
    trim();
}

void PendingText::clear()
{
    m_text.truncate(0); // its memory serves the next flood
    m_start = 0;
    m_lines = 0;
    m_runs.clear();
    m_runIndex = 0;
    m_runOffset = 0;
}

PendingText::Slice PendingText::take(qsizetype maxLength)
{
    qsizetype length = std::min(maxLength, m_text.size() - m_start);
    if (m_start + length < m_text.size()) {
        const qsizetype lineEnd = m_text.lastIndexOf(u'\n', m_start + length - 1);
        if (lineEnd >= m_start)
            length = lineEnd + 1 - m_start;
    }
    Slice slice;
    dropFront(length, &slice);
    return slice;
}

void PendingText::skip(qsizetype length)
{
    dropFront(std::min(length, m_text.size() - m_start), nullptr);
}

void PendingText::dropFront(qsizetype length, Slice *into)
{
    if (length <= 0)
        return;
    const QStringView text = QStringView(m_text).mid(m_start, length);
    if (into)
        into->text = text.toString();
    m_lines -= text.count(u'\n');
    m_start += length;
    for (qsizetype at = 0; at < length && m_runIndex < m_runs.size();) {
        const Run &run = m_runs[m_runIndex];
        const qsizetype part = std::min(run.length - m_runOffset, length - at);
        if (into && part > 0)
            into->runs.append({part, run.style});
        at += part;
        m_runOffset += part;
        if (m_runOffset == run.length) {
            ++m_runIndex;
            m_runOffset = 0;
        }
    }
    if (isEmpty())
        clear();
}

void PendingText::trim()
{
    qsizetype cut = m_start;
    for (qsizetype excess = m_lines - m_maxLines; excess > 0; --excess)
        cut = m_text.indexOf(u'\n', cut) + 1;
    if (m_text.size() - cut > m_maxCharacters) {
        // The first line that starts within the last maxCharacters, or, when
        // none does, the last line.
        qsizetype lineEnd = m_text.indexOf(u'\n', m_text.size() - m_maxCharacters - 1);
        if (lineEnd < 0)
            lineEnd = m_text.lastIndexOf(u'\n');
        cut = std::max(cut, lineEnd + 1);
    }
    skip(cut - m_start);
}

void PendingText::compact()
{
    // Moving the rest down costs a copy; doing it only once the done part is
    // the larger half keeps the cost per character constant, and only before
    // text is added, not while a slice takes piece after piece.
    if (m_start <= m_text.size() / 2)
        return;
    m_text.remove(0, m_start);
    m_start = 0;
    if (m_runs.isEmpty())
        return;
    m_runs.remove(0, m_runIndex);
    m_runIndex = 0;
    if (!m_runs.isEmpty()) {
        m_runs.first().length -= m_runOffset;
        m_runOffset = 0;
    }
}
