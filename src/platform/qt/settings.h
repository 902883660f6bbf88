// What the desktop program remembers from one session to the next. It is comfort alone: the program works the
// same without it, and vorn_replay never looks at it.
#pragma once

#include <QSettings>
#include <QWidget>

namespace vorn {

// A text file in the user's own folder for settings, on Linux ~/.config/Vorn/Vorn.ini. One that cannot be
// read or written counts as empty.
QSettings program_settings();

// Keeps where the window stands, how large it is and whether it is maximised.
void remember_place(const QWidget& window);
// Puts the window where it was. Where nothing sensible is remembered, or the screen is gone on which it
// stood, it gets `first_size` and the place that the window system chooses. Full screen is not taken up
// again: a user who does not know the key would be caught in it.
void restore_place(QWidget& window, QSize first_size);

}  // namespace vorn
