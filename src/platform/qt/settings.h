// What the desktop program remembers from one session to the next. It is comfort alone: the program works the
// same without it, and vorn_replay never looks at it.
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QWidget>

namespace vorn {

// A text file in the user's own folder for settings, on Linux ~/.config/Vorn/Vorn.ini: lines KEY=VALUE, in
// the values %XX for what is no plain character. One that cannot be read or written counts as empty.
QString settings_file();
// What was remembered last under a key of plain letters; empty when nothing is.
QByteArray remembered(const QByteArray& key);
// Writes the whole file anew, as every file is written: the older one stays until the new one is complete.
void remember(const QByteArray& key, const QByteArray& value);

// Keeps where the window stands, how large it is and whether it is maximised.
void remember_place(const QWidget& window);
// Puts the window where it was. Where nothing sensible is remembered, or the screen is gone on which it
// stood, it gets `first_size` and the place that the window system chooses. Full screen is not taken up
// again: a user who does not know the key would be caught in it.
void restore_place(QWidget& window, QSize first_size);

}  // namespace vorn
