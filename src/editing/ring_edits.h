// Inserting and deleting one ring of one entry: the corrections that cross-dating finds (a missing ring, a
// false ring).
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Deletes the ring of year w.insdel from entry `e`: its later rings move one year earlier. The ring is
// remembered in rgx, rgax, rgxok. A series of 10 rings or fewer is left alone with "Tree age too small ".
//
// The pool moves down behind the ring as far as the reference's slot, but only the start of entry e + 1
// follows; the year is not checked against the entry. tx is not moved. When `e` is a slot whose entry is a
// core before the last one, the slot is computed anew and marked as changed.
void del_year(Workspace& w, int e);

// Inserts a ring at year w.insdel into entry `e`: that ring and its later ones move one year later. With
// `restore` the new ring is the one deleted last; otherwise it is a missing ring whose width is the mean of
// the six that follow it in the pool (whether or not they belong to the entry). Refused with "Chronology age
// limit MXY reached" when the entry's last year lies 12,000 years or more after the earliest year of the
// store.
//
// The pool moves up behind the ring; for the rest as del_year.
void ins_year(Workspace& w, int e, bool restore);

}  // namespace vorn
