#pragma once

#include <QPlainTextEdit>

// The console: read-only for the user, selectable, fed by the operations.
class ConsoleView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit ConsoleView(QWidget *parent = nullptr);

    // Replaces the whole text.
    void setString(const QString &text);
    // Inserts at the insertion point (the end unless the user moved it).
    void insertText(const QString &text);
    // The whole text, including what is still queued for display.
    QString string();
};
