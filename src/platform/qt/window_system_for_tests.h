// The window system of the tests of this room: the offscreen one, with a folder of its own for what it keeps.
#pragma once

#include <QApplication>

namespace vorn {

// The one application object of the process, made at the first call.
QApplication& application_for_tests();

// Makes what is started from now on use the offscreen window system.
void prepare_offscreen();

}  // namespace vorn
