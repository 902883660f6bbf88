#include "page_picture.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <array>

#include "platform/qt/page_painter.h"
#include "platform/qt/typefaces.h"

namespace vorn::bench {
namespace {

// The window system without a window.
class Painting {
 public:
  Painting() : application_(count_, arguments_.data()) {
    picture_ = QImage(1485, 1050, QImage::Format_RGB32);
  }

  void paint(const Page& page) {
    QPainter painter(&picture_);
    painter.scale(static_cast<double>(picture_.width()) / Page::width,
                  static_cast<double>(picture_.height()) / Page::height);
    paint_page(painter, page, typefaces_, Device::pixels);
  }

 private:
  int count_ = 3;
  std::array<char, 5> name_ = {"vorn"};
  std::array<char, 10> option_ = {"-platform"};
  std::array<char, 10> value_ = {"offscreen"};
  std::array<char*, 4> arguments_ = {name_.data(), option_.data(), value_.data(), nullptr};
  QGuiApplication application_;
  Typefaces typefaces_;
  QImage picture_;
};

}  // namespace

void paint_picture(const Page& page) {
  static Painting painting;
  painting.paint(page);
}

}  // namespace vorn::bench
