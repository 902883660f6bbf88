// Files that the window writes.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace vorn {

// Writes the whole file, or leaves what stood there. Returns what went wrong.
std::optional<QString> write_file(const QString& path, const QByteArray& bytes);

}  // namespace vorn
