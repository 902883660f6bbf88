#include "platform/web/page_bytes.h"

#include "platform/web/byte_stream.h"
#include "platform/web/shown_text.h"

namespace vorn {
namespace {

void put(ByteWriter& out, const Mark& mark) {
  out.number(static_cast<int>(mark.kind));
  out.number(number_of(mark.colour));
  out.number(static_cast<double>(mark.points.size()));
  for (const PagePoint& point : mark.points) {
    out.number(point.x);
    out.number(point.y);
  }
  if (mark.kind != Mark::Kind::text && mark.kind != Mark::Kind::label) return;
  out.number(mark.height);
  out.number(static_cast<int>(mark.font));
  out.number(static_cast<int>(mark.align));
  out.number(mark.angle);
  out.text(shown_text(mark.writing));
}

}  // namespace

std::string bytes_of(const Page& page) {
  ByteWriter out;
  out.number(page.across());
  out.number(page.down());
  out.number(static_cast<double>(page.marks().size()));
  for (const Mark& mark : page.marks()) put(out, mark);
  return out.bytes();
}

}  // namespace vorn
