// What the module of the painters offers to the program that loads it.
#include "platform/qt/picture_painter.h"

// A new painter, which the caller deletes; the name by which the program looks for it.
extern "C"
#ifdef _WIN32
    __declspec(dllexport)
#endif
        vorn::Painter* vorn_painter() {
  return new vorn::PicturePainter;
}
