// The folders that were worked in.
#pragma once

#include <QStringList>

namespace vorn {

// The last ones, the latest first; those that are gone are left out.
QStringList recent_folders();
// Puts a folder first.
void remember_recent_folder(const QString& folder);

}  // namespace vorn
