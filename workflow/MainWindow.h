#pragma once

#include <QMainWindow>

namespace Ui {
class MainWindow;
}

// The main window: its widgets and menu bar come from MainWindow.ui; the
// controllers (AppController, the application delegate) drive them.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    Ui::MainWindow *ui() const { return m_ui; }

private:
    Ui::MainWindow *m_ui;
};
