#pragma once

// Roles that Qt cannot know for this application's own widgets: the busy
// indicator is a progress bar without a figure, a popover a help balloon, the
// message bar an alert, a plain widget used as a top-level window is a
// window, not a filler pane, and a marked button a page tab. Installing is
// idempotent; every widget that needs it installs it when made.
class QAbstractButton;

namespace AccessibleRoles {
void install();

// A button that shows one page of several, of which choosing one unchooses
// the others: a page tab, selected while checked, that a Press chooses.
void markAsPageTab(QAbstractButton *button);
}
