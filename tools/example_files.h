// The files of examples/ that the program reads: made up, and the same to the byte on every machine.
#pragma once

#include <map>
#include <string>

namespace vorn::examples {

// File name -> contents. Beside the data it holds PLANTED.md, which tells what is wrong in them and where.
std::map<std::string, std::string> example_files();

}  // namespace vorn::examples
