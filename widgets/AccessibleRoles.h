#pragma once

// Roles that Qt cannot know for this application's own widgets: the busy
// indicator is a progress bar without a figure, a popover a help balloon, the
// message bar an alert, and a plain widget used as a top-level window is a
// window, not a filler pane. Installing is idempotent; every widget that needs
// it installs it when made.
namespace AccessibleRoles {
void install();
}
