#pragma once

#include <QFrame>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QToolButton;

// A message that sits in the window instead of covering it: an icon, a
// sentence, the tool's own line below it, at most one action and a close
// button. Hidden until showMessage(); assistive technology hears it as an
// alert when it appears, and Tab reaches its buttons.
class MessageBar : public QFrame
{
    Q_OBJECT

public:
    explicit MessageBar(QWidget *parent = nullptr);

    // An empty actionTitle shows no action button; an empty detail no
    // second line.
    void showMessage(const QString &text, const QString &detail, const QString &actionTitle);
    // Hides it without telling anyone (the window moved on).
    void clear();

    QString text() const;
    QString detail() const;
    // Null until a message with an action was shown.
    QPushButton *actionButton() const { return m_action; }
    QToolButton *closeButton() const { return m_close; }

signals:
    void actionTriggered();
    // The user closed it.
    void dismissed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void retranslate();

    QLabel *m_icon;
    QLabel *m_text;
    QLabel *m_detail;
    QHBoxLayout *m_row;
    QPushButton *m_action = nullptr;
    QToolButton *m_close;
};
