#pragma once

// SIGTERM, SIGINT and SIGHUP end the event loop the ordinary way instead of
// the process on the spot, so destructors run: local sockets and lock files
// are removed, the settings are left whole. Call once, after the application
// object exists; a signal that arrives before the event loop runs is acted
// on as soon as it does.
void quitOnTerminationSignals();
