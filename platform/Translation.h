#pragma once

// Loads the translation of the user's language into the running application,
// if one ships. Every text is its own English key, so without a translation
// the texts show as they are written. Every program of the bundle calls it
// right after making its application object.
void installTranslator();
