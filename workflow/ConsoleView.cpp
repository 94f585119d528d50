#include "workflow/ConsoleView.h"

ConsoleView::ConsoleView(QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
}

void ConsoleView::setString(const QString &text)
{
    setPlainText(text);
}

void ConsoleView::insertText(const QString &text)
{
    textCursor().insertText(text);
}

QString ConsoleView::string()
{
    return toPlainText();
}
