#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QToolButton;

// A match in a text: start < 0 when there is none.
struct TextMatch
{
    qsizetype start = -1;
    qsizetype length = 0;
    bool found() const { return start >= 0; }
};

// The next (or previous) occurrence of needle, ignoring case, after (before)
// the selection [selectionStart, selectionEnd), wrapping around the end (the
// start) of the text. A selection that is itself the only match is found
// again, so repeated searches never report "not found" for text that exists.
TextMatch findInText(const QString &text, const QString &needle, qsizetype selectionStart,
                     qsizetype selectionEnd, bool backward);

// The find bar under the console. The menu's Find items drive it, and so does
// the keyboard: Return finds the next match, Shift+Return the previous one,
// Escape closes the bar and gives the keyboard back to the console.
class ConsoleFindBar : public QWidget
{
    Q_OBJECT

public:
    explicit ConsoleFindBar(QPlainTextEdit *console, QWidget *parent = nullptr);

    // "Find...": opens the bar with the search text selected for typing over.
    void showFindBar();
    // Select the next / previous match in the console; false when none.
    bool findNext();
    bool findPrevious();
    // The console's selection becomes the search text.
    void useSelectionForFind();
    // Scrolls the console to its selection.
    void jumpToSelection();

    QString findString() const;
    void setFindString(const QString &text);
    QLineEdit *findField() const { return m_field; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool find(bool backward, bool fromSelectionStart);
    void closeBar();

    QPointer<QPlainTextEdit> m_console;
    QLineEdit *m_field;
    QToolButton *m_previous;
    QToolButton *m_next;
    QToolButton *m_done;
    QLabel *m_status;
};
