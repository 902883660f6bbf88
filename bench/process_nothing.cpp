// process_nothing: does nothing. It takes what every program takes that uses the C++ library.
#include <iostream>

int main() {
  std::cout.flush();
  return 0;
}
