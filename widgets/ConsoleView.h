#pragma once

#include "widgets/PendingText.h"
#include "widgets/SliceBudget.h"
#include "widgets/TerminalText.h"

#include <QHash>
#include <QPlainTextEdit>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTimer>

// The console: read-only for the user, selectable, fed by the operations.
//
// Tools can print far faster than a text view lays text out, so insertions
// are queued and moved into the document in slices of bounded time from a
// short timer; the event loop is never held for long whatever a child prints.
// Like a terminal, the console keeps the last ScrollbackLines lines and drops
// the oldest; text still queued beyond that many lines is dropped before it is
// ever shown, which keeps memory bounded however long a build runs. An
// insertion point the user left in lines about to be dropped moves to the end,
// so new text is not dropped with them.
//
// Two kinds of text arrive. The application's own messages are inserted as
// they are, a carriage return starting a new line (a "\r\n" pair gives one
// line break). The tools' raw output goes through TerminalText and reads as
// it would in a terminal: progress redrawn with carriage returns stays one
// line, colours show in tones readable on the palette's background, other
// escape sequences vanish. The line a tool is still writing is kept aside and
// drawn once per slice, replacing what the last slice drew, so a thousand
// redraws between two slices cost one. Lines longer than
// TerminalText::MaxLineLength continue on the next line, which keeps every
// line the view lays out short.
class ConsoleView : public QPlainTextEdit
{
    Q_OBJECT

public:
    // As many lines as a terminal commonly keeps, and at most this many
    // characters (1 MB of text, some 5,000 lines of make's output), which is
    // the bound that matters for long lines. Now and then the document
    // copies all the text it holds in one go, and that copy has to fit in a
    // frame on a slow machine; a build's first error, near its end, stays
    // well within reach.
    static constexpr int ScrollbackLines = 10000;
    static constexpr qsizetype ScrollbackCharacters = 512 * 1024;

    explicit ConsoleView(QWidget *parent = nullptr);

    // Replaces the whole text; anything still queued is discarded, so text
    // inserted afterwards lands after this text.
    void setString(const QString &text);
    // Inserts at the insertion point (the end unless the user moved it).
    void insertText(const QString &text);
    // A tool's raw output, shown as a terminal would show it, at the
    // insertion point like insertText().
    void insertToolOutput(const QString &text);
    // The whole text, including what is still queued for display (moved into
    // the document first, so this is exactly what the view then shows).
    QString string();

    // Moves everything queued into the document now.
    void flushPending();
    bool hasPending() const { return !m_queue.isEmpty() || m_terminal.lineChanged(); }

protected:
    void changeEvent(QEvent *event) override;

private:
    void queueFinishedToolText();
    void insertRuns(QTextCursor &cursor, const QString &text, const QList<TerminalText::Run> &runs);
    const QTextCharFormat &format(TerminalText::Style style);
    void scheduleFlush(int delayMs);
    void flushSlice();
    // Takes out what the last slice drew of the tool's current line, but for
    // the part that is still right; returns how much of the current line
    // stays in the document.
    qsizetype takeBackLiveLine(QTextCursor &cursor);
    // Drops the oldest whole lines until the scrollback has room for so many
    // more lines and characters; an insertion point that was in them goes to
    // the end.
    void dropOldestLines(qsizetype incomingLines = 0, qsizetype incomingCharacters = 0);
    QString normalizedLineEnds(const QString &text);

    PendingText m_queue{ScrollbackLines, ScrollbackCharacters};
    bool m_endsWithCarriageReturn = false;

    TerminalText m_terminal;
    // Where the last slice drew the tool's current line (the selection of
    // this cursor); valid while m_liveShown.
    QTextCursor m_live;
    bool m_liveShown = false;
    QString m_liveText;       // what it shows
    bool m_liveStyled = false; // whether in other styles than the default
    QHash<TerminalText::Style, QTextCharFormat> m_formats;
    SliceBudget m_budget;
    QTimer m_flushTimer;
};
