// The program's side of the browser edition: what the page shows around the program's page, and what the user
// does there. In the window the same is done by the window's own thread; here the one thread of the program's
// worker does it whenever the program waits.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "desk/deed_gate.h"
#include "desk/page_cursor.h"
#include "desk/status_line.h"
#include "platform/web/situation_bytes.h"
#include "platform/web/web_port.h"
#include "records/files.h"
#include "sessions/event_mailbox.h"

namespace vorn {

// The mailbox between the page and the program. While the program waits, what the page asks for is served.
class WebMailbox : public EventMailbox {
 public:
  // `serve` waits for one thing that the page asks for and does it.
  WebMailbox(std::function<void()> page_came, std::function<void()> news_came, std::function<void()> serve)
      : EventMailbox(std::move(page_came), std::move(news_came)), serve_(std::move(serve)) {}

 protected:
  void wait(std::unique_lock<std::mutex>& lock) override {
    lock.unlock();
    serve_();
    lock.lock();
  }

 private:
  std::function<void()> serve_;
};

class WebDesk {
 public:
  // `files` are those of the folder that is worked in.
  WebDesk(WebPort& port, Files& files, std::string program_version);

  WebMailbox& mailbox() { return mailbox_; }
  // To be called once, before the program begins.
  void greet();

 private:
  void tell_page();
  void tell_news();
  // `whole`: those who know nothing of earlier situations are told.
  void tell_standing(bool whole = false);
  void tell_status();
  void add_status(nlohmann::ordered_json& fields) const;
  std::vector<std::string> notices() const;
  SharedSituation situation() const;

  void serve(const WebRequest& request);
  bool serve_gate(const WebRequest& request);
  void serve_asked(const WebRequest& request);
  void point_at(const WebRequest& request);
  void put_event(const WebRequest& request, int code);
  void put_key(const WebRequest& request);
  bool is_programs_key(int code) const;
  bool serve_cursor(const WebRequest& request, int code);
  void act(const std::string& id, bool repeated);
  void put(std::optional<Deed> deed, bool repeated = false);
  void tell_methods();
  void use_corrected_file();
  void tell_page_text();

  WebPort& port_;
  Files& files_;
  std::string version_;
  WebMailbox mailbox_;
  DeedGate gate_;
  PageCursor cursor_;
  SituationWriter writer_;
  std::optional<PointAt> mouse_;
  SharedStanding told_;
  SharedSituation told_situation_;
  bool told_asked_ = false;
  std::string told_progress_, told_subject_;
  std::vector<std::string> told_notices_;
};

}  // namespace vorn
