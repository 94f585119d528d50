#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QtTest>

// The real folder chooser, answered as a user answers it.

// The chooser open on `window`, once it shows; nothing if none comes up.
inline QFileDialog *openFolderDialog(QWidget *window)
{
    QFileDialog *dialog = nullptr;
    const bool shown = QTest::qWaitFor([&] {
        dialog = window->findChild<QFileDialog *>();
        return dialog && dialog->isVisible();
    });
    return shown ? dialog : nullptr;
}

// Types `typed` into the chooser's name field and presses Return; an empty
// text cancels. True once the chooser is gone.
inline bool answerFolderDialog(QFileDialog *dialog, const QString &typed)
{
    QWidget *window = dialog->parentWidget();
    if (typed.isEmpty()) {
        static_cast<QDialog *>(dialog)->reject();
    } else {
        dialog->activateWindow();
        if (!QTest::qWaitForWindowActive(dialog))
            return false;
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->setFocus();
        QTest::keyClicks(name, typed);
        QTest::keyClick(name, Qt::Key_Return);
    }
    return QTest::qWaitFor([window] { return !window->findChild<QFileDialog *>(); });
}
