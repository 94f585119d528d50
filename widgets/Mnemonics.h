#pragma once

#include <QString>
#include <QList>
#include <QStringList>

// Keyboard mnemonics ("&Quit") for the labels of one menu or one window.
// They are added after translation, so the string table keeps the plain
// English texts as keys and every language gets letters of its own words.
namespace Mnemonics {

// The labels with one '&' each before a letter or digit that no earlier
// label of the group took (case-insensitive), preferring the first letter of
// a word; a label without a free letter stays without a mnemonic. A '&'
// before a letter or digit marks a label's mnemonic already, so applying this
// to its own result changes nothing; any other '&' is literal and becomes
// "&&".
QStringList assign(const QStringList &labels);

// The label as shown and as accessibility reads it: mnemonic marks removed,
// "&&" back to "&".
QString strip(const QString &label);

// Whether this system underlines and honours mnemonics at all (macOS does
// not: there the labels stay plain).
bool enabled();

} // namespace Mnemonics

namespace Mnemonics {

// Gives every labelled item of one group (actions, buttons) its mnemonic,
// from the texts they hold now; nothing where the system has no mnemonics.
template<typename Item>
void applyTo(const QList<Item *> &items)
{
    if (!enabled())
        return;
    QStringList labels;
    for (Item *item : items)
        labels.append(item ? item->text() : QString());
    const QStringList marked = assign(labels);
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items.at(i))
            items.at(i)->setText(marked.at(i));
    }
}

} // namespace Mnemonics
