#include "platform/qt/file_writing.h"

#include <QFile>
#include <system_error>

#include "records/disk_files.h"

namespace vorn {

std::optional<QString> write_file(const QString& path, const QByteArray& bytes) {
  DiskFiles files;
  const Status failed = write_whole(files, QFile::encodeName(path).toStdString(), bytes.toStdString());
  if (!failed) return {};
  return path + ": " + QString::fromStdString(std::generic_category().message(failed.number()));
}

}  // namespace vorn
