// Where no modules are loaded: pictures are not painted.

#include "apps/picture_module.h"

namespace vorn {

std::optional<std::string> PictureModule::paint(const Page& /*page*/, PageKind /*kind*/,
                                                std::string& /*bytes*/) {
  return "this edition paints no pictures";
}

}  // namespace vorn
