// The picture by which the program is known on a desktop.
#pragma once

#include <QIcon>

namespace vorn {

// At the sizes that title bars, lists of windows and desktops ask for.
QIcon program_icon();

}  // namespace vorn
