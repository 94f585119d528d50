#pragma once

#include <functional>

class QWidget;

// Runs work once a window's first frame is on screen, so that whatever the
// work costs (a process to fork, files to read) does not compete with it
// for the processor. A window already on screen runs it at once; one that is
// never shown runs it after a short grace, so that it still happens.
void afterFirstFrame(QWidget *window, std::function<void()> work);
