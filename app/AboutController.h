#pragma once

#include "widgets/Popover.h"

#include <QLabel>
#include <QObject>
#include <QPointer>

#include <memory>

class QWidget;

namespace Ui {
class About;
}

// Controller of the about window. Made once, on the first request; every
// later request shows the same window again, and each request brings the
// popover up half a second later.
class AboutController : public QObject
{
    Q_OBJECT

public:
    // The window comes from the interface file "About"; parentWindow only
    // keeps it on top of the main window and ends its life with it.
    explicit AboutController(QWidget *parentWindow = nullptr, QObject *parent = nullptr);
    ~AboutController() override;

    // Schedules onMe() once, half a second from now. Each call schedules its
    // own; none is kept, so none can be cancelled.
    void timeToload();
    // Shows the popover above the creator line.
    void onMe();
    // Present for the interface file; deliberately does nothing.
    void showMe(QObject *sender);
    void windowDidLoad() {}

    // Shows and raises the window; the sender is the opener.
    void showWindow(QObject *sender);
    QWidget *window() const { return m_window; }

    Popover *popoverMe() const { return m_popoverMe; }
    void setPopoverMe(Popover *popover) { m_popoverMe = popover; }

    QPointer<QLabel> creator; // anchor of the popover

private:
    std::unique_ptr<Ui::About> m_ui;
    QPointer<QWidget> m_window;
    QPointer<Popover> m_popoverMe;
};
