#pragma once

#include "widgets/TerminalText.h"

#include <QList>
#include <QString>
#include <QStringView>

// Text on its way into the console, with its styles, first in first out.
//
// It never holds more than a scrollback shows: what would be dropped as
// soon as it was shown is dropped as it arrives, whole lines from the
// oldest, until at most maxLines line feeds and maxCharacters characters
// remain (only the last line, when it alone is longer). The last,
// unfinished line does not count as a line. So memory stays bounded however
// much a tool prints, and what is taken out reads exactly as the end of
// everything appended would.
//
// It is taken out in slices that end after a line feed where one falls
// within the slice, so a line is not split between two slices.
class PendingText
{
public:
    using Run = TerminalText::Run;

    PendingText(qsizetype maxLines, qsizetype maxCharacters);

    // Queues text whose styles are the given consecutive runs (empty when
    // it is all in the default style).
    void append(QStringView text, const QList<Run> &runs = {});
    void clear();

    bool isEmpty() const { return m_start == m_text.size(); }
    // What is queued, and how many line feeds it holds.
    QStringView text() const { return QStringView(m_text).mid(m_start); }
    qsizetype lineCount() const { return m_lines; }
    // Whether any queued character has another style than the default.
    bool isStyled() const { return !m_runs.isEmpty(); }

    struct Slice
    {
        QString text;
        QList<Run> runs; // empty when all in the default style
    };
    // Takes the oldest maxLength characters out (all that is left when
    // less), ending after the last line feed among them when they hold one
    // and more text follows.
    Slice take(qsizetype maxLength);
    // Drops the oldest length characters.
    void skip(qsizetype length);

private:
    void dropFront(qsizetype length, Slice *into);
    void trim();
    void compact();

    const qsizetype m_maxLines;
    const qsizetype m_maxCharacters;
    QString m_text; // the part before m_start is done
    qsizetype m_start = 0;
    qsizetype m_lines = 0; // line feeds from m_start on
    // Styles from m_start on, empty while all is in the default style;
    // m_runOffset characters of the run at m_runIndex are done.
    QList<Run> m_runs;
    qsizetype m_runIndex = 0;
    qsizetype m_runOffset = 0;
};
