// Every capacity of the system. They are part of its design: tables are allocated once and never grow.
#pragma once

namespace vorn {

inline constexpr int max_series = 10'000;   // cores or trees of the file held in the store
inline constexpr int max_pool = 1'200'000;  // ring values of all entries 1 to nd together
inline constexpr int max_files = 100;       // files of the list, each with a chronology of its own
inline constexpr int max_years = 12'000;    // years of one chronology, and of every work vector

inline constexpr int max_heidelberg_records = 5'000;
inline constexpr int max_buttons = 140;
inline constexpr int max_messages = 140;
inline constexpr int max_segments = 34;  // rows of the lag table
inline constexpr int max_lag = 10;       // the lag table runs from -10 to +10 years
inline constexpr int max_ar_order = 11;

// Room behind the documented capacities: one chronology entry a file and the two working entries (the sample
// and the reference of cross-dating), with one place more for the start of what would follow them.
inline constexpr int entry_places = max_series + max_files + 2 + 1;
// Behind the pool lie the values of the two working entries, each no longer than a chronology may be, with a
// margin for the one ring that an insertion adds before it is refused.
inline constexpr int pool_places = max_pool + 2 * (max_years + 100);

}  // namespace vorn
