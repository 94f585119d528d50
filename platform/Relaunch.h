#pragma once

#include <QString>

#include <functional>

// Restarting the application: a detached shell waits, then starts the bundle
// again, while this instance terminates at once. One implementation shared by
// every caller.
namespace Relaunch {

// The shell line the detached /bin/sh runs; the delay printed with "%f".
QString command(float delaySeconds, const QString &bundlePath);

void relaunchAfterDelay(float delaySeconds);

// Replaces what relaunchAfterDelay does (tests keep their process alive);
// an empty function restores the real behaviour.
void setHandler(std::function<void(float)> handler);

} // namespace Relaunch
