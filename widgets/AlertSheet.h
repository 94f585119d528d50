#pragma once

#include <QList>
#include <QMessageBox>
#include <QPointer>

#include <functional>

class QTimer;

// A warning alert shown window-modally on a parent window (a sheet where the
// platform has sheets). Buttons answer FirstButtonReturn, SecondButtonReturn,
// ThirdButtonReturn... in the order they were added; the did-end handler is
// called once, asynchronously, with the answer. endSheet() ends it without a
// button, as the platform does when a timer closes a sheet.
class AlertSheet : public QMessageBox
{
    Q_OBJECT

public:
    static constexpr int FirstButtonReturn = 1000;
    static constexpr int SecondButtonReturn = 1001;
    static constexpr int ThirdButtonReturn = 1002;
    // What the handler receives when the sheet is ended in code.
    static constexpr int StopReturn = -1000;

    explicit AlertSheet(QWidget *parent = nullptr);

    void addButtonWithTitle(const QString &title);
    void setMessageText(const QString &text) { setText(text); }
    void setInformativeText(const QString &text);

    // Countdown mode, set before beginSheet(): the sheet shows text(seconds)
    // as its informative text and, from when it begins, one second at a
    // time, counts down, shows text(count) and calls tick(). At 0 it stops
    // counting and ends without a button before that last tick().
    void setCountdown(int seconds, std::function<QString(int count)> text,
                      std::function<void()> tick);
    int countdown() const { return m_countdown; }
    // Nothing outside countdown mode.
    QTimer *countdownTimer() const { return m_timer; }
    void stopCountdown();

    void beginSheet(QWidget *window, std::function<void(int)> didEnd);
    void endSheet(int returnCode = StopReturn);
    // Hides the sheet without answering (the platform's orderOut).
    void orderOut() { hide(); }

    // The answer code of a button, or 0; the button of an answer code.
    int returnCodeOf(QAbstractButton *button) const;
    QAbstractButton *buttonFor(int returnCode) const;
    QStringList buttonTitles() const;

    // Every sheet that is open, newest last; tests answer them through it.
    static QList<AlertSheet *> openSheets();

private:
    void finish(int returnCode);
    void countDown();

    QList<QAbstractButton *> m_buttons;
    std::function<void(int)> m_didEnd;
    bool m_ended = false;
    int m_countdown = 0;
    QTimer *m_timer = nullptr;
    std::function<QString(int)> m_countdownText;
    std::function<void()> m_tick;
};
