#include "platform/qt/program_icon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// What is in icon.qrc; of a library it must be asked for, outside of namespaces.
static void add_icon_to_resources() {
  Q_INIT_RESOURCE(icon);
}

namespace vorn {

QIcon program_icon() {
  add_icon_to_resources();
  // Painted here, so that no plug-in of the window system is needed.
  QSvgRenderer drawing(QStringLiteral(":/vorn.svg"));
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace vorn
