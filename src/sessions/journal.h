// The journal of a session, on the disk: what was done, so that nothing is lost when the program or the
// machine stops.
//
// It lies in the folder ".vorn" of the folder worked in, one file a session, and is a script for vorn_replay:
// events and steps back are statements, all else is comments. The files that were read are kept beside it, by
// their contents, so that the session can be gone through again whatever became of them.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "records/os_file.h"
#include "sessions/session.h"

namespace vorn {

// Reads the lines of a journal up to the first one that is damaged or cut off; what they say is so far sound
// that it can be gone through. `contents` gives what was kept under a name, null where nothing is; it is
// called for each file that was read. A last step that began to write a file, of which no end is known, is
// left off.
struct ReadJournal {
  Timeline timeline = {};
  std::vector<FileAnswer> answers = {};
  bool has_ended = false;    // the program ended by itself or by the user
  bool was_unsaved = false;  // and work was not written then
  bool is_tried = false;     // it was being taken up, and that never came to its end
  std::size_t good = 0;      // bytes of the whole lines that could be used
  int damaged_line = 0;      // the first that could not, from 1; 0 for none
};
using KeptContents = std::function<Contents(const std::string& name)>;
ReadJournal read_journal(std::string_view text, const KeptContents& contents);

// The journal of one folder, "" for the current one.
//
// Nothing is written before the first event. What cannot be written is said by trouble(), and the session
// goes on without a journal; so it does where another program works in the folder. Links in ".vorn" are not
// followed. With the first event old sessions are thinned out: the oldest go when there are more than
// `most_sessions` or when what they keep is more than half of `most_kept`, the newest never; and all kept
// files that no journal names. The other half is this session's.
class Journal : public Keeper {
 public:
  static constexpr std::size_t most_sessions = 20;
  static constexpr std::size_t usual_most_kept = std::size_t{1} << 30;  // bytes

  Journal(std::string folder, std::string version, std::size_t most_kept = usual_most_kept);

  void happened(const Event& event) override;
  void switched(const CarefulSwitch& careful) override;
  void careful(const Careful& now) override;
  void answered(std::size_t place, const FileAnswer& answer) override;
  void decided(const Timeline::Entry& entry) override;
  void went_on(const Timeline::Entry& entry) override;
  void noted(std::size_t entry, const std::string& text) override;
  void undone() override;
  void redone() override;
  void cut(std::size_t steps) override;
  void begun_anew() override;
  void landed() override;
  void ended(bool by_event, bool unsaved) override;
  std::string trouble() const override { return trouble_; }
  std::string to_take_up() override;
  TakenUp take_up(const std::string& journal) override;

 private:
  std::string place(std::string_view name) const;
  bool lock();
  bool make_folders();
  bool begin();
  std::string new_name() const;
  std::vector<std::string> journals() const;
  void thin_out() const;
  void write(std::string_view line);
  void sync();
  void fail(std::string_view what, Status status);
  std::string keep(const Contents& contents);
  Status keep_as(const std::string& kept, const std::string& bytes) const;
  Contents kept(const std::string& name) const;
  bool begin_with(const std::string& lines);

  std::string folder_, version_;
  std::size_t most_kept_;
  os::File lock_, file_;
  std::string name_;                                        // of the journal, in the folder
  std::string before_begin_;                                // lines of the time before the first event
  std::vector<std::pair<std::string, Contents>> not_kept_;  // and the contents that they name
  std::vector<std::string> not_synced_;                     // kept files
  std::set<std::string> there_;                             // kept files that are known to be there
  std::size_t bytes_kept_ = 0;                              // theirs
  std::string trouble_;
};

}  // namespace vorn
