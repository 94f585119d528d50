#pragma once

#include <QString>

// Loads the translation of the user's language into the running application,
// if one ships, and Qt's own translation for the same language (standard
// buttons, the file dialog, key names), so the user never sees two languages
// mixed. On Linux a small table on top gives the texts that name macOS
// tools a wording for this system. Every text is its own English key, so without a translation the
// texts show as they are written. Every program of the bundle calls it right
// after making its application object. Returns the language of the table it
// installed ("de", "en", ...), or an empty string when none matched.
QString installTranslator();
