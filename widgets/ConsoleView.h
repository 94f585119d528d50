#pragma once

#include <QElapsedTimer>
#include <QPlainTextEdit>
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
// A carriage return starts a new line (a "\r\n" pair gives one line break),
// as the console has always shown git's progress: one line per update, so the
// history of a transfer stays readable after it ends.
class ConsoleView : public QPlainTextEdit
{
    Q_OBJECT

public:
    // Enough for the whole output of a full build of the emulator: about
    // 10 MB of text at make's usual line length, some 140 MB of memory with
    // the view's own bookkeeping, however much more a tool prints.
    static constexpr int ScrollbackLines = 100000;

    explicit ConsoleView(QWidget *parent = nullptr);

    // Replaces the whole text; anything still queued is discarded, so text
    // inserted afterwards lands after this text.
    void setString(const QString &text);
    // Inserts at the insertion point (the end unless the user moved it).
    void insertText(const QString &text);
    // The whole text, including what is still queued for display (moved into
    // the document first, so this is exactly what the view then shows).
    QString string();

    // Moves everything queued into the document now.
    void flushPending();
    bool hasPending() const { return m_pendingStart < m_pending.size(); }

private:
    void scheduleFlush(int delayMs);
    void flushSlice();
    void trimPending();
    void compactPending();
    void dropOldestLines();
    QString normalizedLineEnds(const QString &text);

    QString m_pending;               // queued text; the part before m_pendingStart is done
    qsizetype m_pendingStart = 0;
    qsizetype m_pendingLines = 0;    // line feeds in the queued part
    bool m_endsWithCarriageReturn = false;
    QTimer m_flushTimer;
};
