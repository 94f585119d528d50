#pragma once

#include <QMainWindow>

#include <memory>

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

    Ui::MainWindow *ui() const { return m_ui.get(); }

private:
    std::unique_ptr<Ui::MainWindow> m_ui;
};
