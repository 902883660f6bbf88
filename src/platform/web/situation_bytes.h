// Situations as bytes, from the program to the studies, which share no memory in a browser.
//
// What does not change from one situation to the next (a core, a chronology, a curve) goes over once: the
// writer names it by a number from then on, and the reader gives back the very value that it made then. So a
// core that did not change is known by its address on the other side too. Every situation written has to be
// read, in the same order.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "sessions/standing.h"

namespace vorn {

// What was shared, by its kind.
template <template <class> class Of>
struct SharedParts {
  Of<SeriesCopy> series;
  Of<ListedChronology> chronologies;
  Of<Curve> curves;
};

template <class T>
struct SentParts {
  std::map<std::shared_ptr<const T>, int> before, now;  // of the last situation and the one at hand
  int next = 0;
};
template <class T>
struct ReceivedParts {
  std::map<int, std::shared_ptr<const T>> before, now;
};

class SituationWriter {
 public:
  // What panels look at of a standing: its situation, which must not be null, and whether a question stands.
  std::string write(const Standing& standing);

 private:
  SharedParts<SentParts> parts_;
};

class SituationReader {
 public:
  // The same standing. Throws std::runtime_error for bytes that no writer wrote.
  SharedStanding read(std::string_view bytes);

 private:
  SharedParts<ReceivedParts> parts_;
};

}  // namespace vorn
