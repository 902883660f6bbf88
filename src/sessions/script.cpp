#include "sessions/script.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "plot/screen.h"
#include "sessions/page_file.h"
#include "workspace/careful.h"

namespace vorn {
namespace {

constexpr std::string_view blanks = " \t";
constexpr int farthest = 100'000;  // page units; a click farther away than that is a slip
constexpr int last_button = 140;
constexpr int last_code = 255;

// What is wrong with the line at hand.
using Wrong = std::runtime_error;

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

// The line without its comment and the blanks before that.
std::string_view without_comment(std::string_view line) {
  for (auto sign = line.find('#'); sign != std::string_view::npos; sign = line.find('#', sign + 1)) {
    if (sign == 0) return {};
    if (blanks.find(line[sign - 1]) == std::string_view::npos) continue;
    return line.substr(0, line.find_last_not_of(blanks, sign - 1) + 1);
  }
  return line;
}

int whole_number(std::string_view text, int lowest, int highest) {
  const std::string_view digits = text.starts_with('+') ? text.substr(1) : text;
  int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) {
    throw Wrong("\"" + std::string(text) + "\" is not a whole number");
  }
  if (value < lowest || value > highest) {
    throw Wrong(std::string(text) + " is not in " + std::to_string(lowest) + " to " +
                std::to_string(highest));
  }
  return value;
}

std::vector<std::string> words(std::string_view text, std::size_t count, const std::string& wanted) {
  std::istringstream in{std::string(text)};
  std::vector<std::string> result;
  for (std::string word; in >> word;) result.push_back(word);
  if (result.size() != count) throw Wrong("expected " + wanted);
  return result;
}

void read_position(Statement& statement, std::string_view rest) {
  const auto numbers = words(rest, 2, "a page position, X Y");
  statement.x = whole_number(numbers[0], -farthest, farthest);
  statement.y = whole_number(numbers[1], -farthest, farthest);
}

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

void read_button(Statement& statement, std::string_view rest) {
  const std::string button = words(rest, 1, "the name or the number of a button")[0];
  if (is_letter(button.front())) {
    statement.text = button;
  } else {
    statement.number = whole_number(button, 1, last_button);
  }
}

void read_key(Statement& statement, std::string_view rest) {
  statement.number = whole_number(words(rest, 1, "the code of a key")[0], 0, last_code);
  if (statement.number == Event::click || statement.number == Event::help) {
    throw Wrong(std::to_string(statement.number) + " is no key (see click and help)");
  }
}

void read_typed(Statement& statement, std::string_view rest) {
  if (rest.empty()) throw Wrong("expected a text to type");
  statement.text = rest;
}

void read_text(Statement& statement, std::string_view rest) {
  statement.text = trim(rest);
  if (statement.text.empty()) throw Wrong("expected a text");
}

void read_file_name(Statement& statement, std::string_view rest) {
  statement.text = trim(rest);
  if (!page_kind(statement.text)) throw Wrong("expected a file name that ends in .txt, .png, .svg or .pdf");
}

// The panel's name, and behind it what `read` takes.
template <void (*read)(Statement&, std::string_view)>
void read_panel(Statement& statement, std::string_view rest) {
  rest = trim(rest);
  const auto end = std::min(rest.find_first_of(blanks), rest.size());
  statement.panel = rest.substr(0, end);
  if (statement.panel.empty()) throw Wrong("expected the name of a panel");
  read(statement, rest.substr(std::min(end + 1, rest.size())));
}

void read_careful(Statement& statement, std::string_view rest) {
  const auto said = words(rest, 2, "the name of a mend, or all, and on or off");
  statement.text = said[0] + ' ' + said[1];
  if (careful_switch(statement.text)) return;
  const bool is_known = said[0] == every_mend || mend_named(said[0]);
  throw Wrong(is_known ? "expected on or off" : "there is no mend \"" + said[0] + "\"");
}

void read_nothing(Statement&, std::string_view rest) {
  words(rest, 0, "nothing more on the line");
}

struct Form {
  std::string_view word;
  Statement::Kind kind;
  void (*read)(Statement& statement, std::string_view rest);  // the rest of the line, behind one blank
};
constexpr std::array<Form, 14> forms = {{
    {"click", Statement::Kind::click, read_position},
    {"help", Statement::Kind::help, read_position},
    {"press", Statement::Kind::press, read_button},
    {"key", Statement::Kind::key, read_key},
    {"type", Statement::Kind::type, read_typed},
    {"enter", Statement::Kind::enter, read_nothing},
    {"page", Statement::Kind::page, read_file_name},
    {"expect", Statement::Kind::expect, read_text},
    {"refuse", Statement::Kind::refuse, read_text},
    {"undo", Statement::Kind::undo, read_nothing},
    {"redo", Statement::Kind::redo, read_nothing},
    {"panel", Statement::Kind::panel, read_panel<read_file_name>},
    {"pick", Statement::Kind::pick, read_panel<read_text>},
    {"careful", Statement::Kind::careful, read_careful},
}};

// The statement on a line; nothing when it holds none.
std::optional<Statement> read_statement(std::string_view line, int number) {
  line = without_comment(line);
  line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
  if (line.empty()) return {};
  const auto end = std::min(line.find_first_of(blanks), line.size());
  const std::string_view word = line.substr(0, end);
  const auto form = std::find_if(forms.begin(), forms.end(), [&](const Form& f) { return f.word == word; });
  if (form == forms.end()) throw Wrong("\"" + std::string(word) + "\" is no statement");
  Statement statement{.kind = form->kind, .line = number};
  form->read(statement, line.substr(std::min(end + 1, line.size())));
  return statement;
}

void find_named_button(Statement& statement, const ButtonNumbers& number_of) {
  if (statement.kind != Statement::Kind::press || statement.text.empty()) return;
  statement.number = number_of ? number_of(statement.text) : 0;
  if (statement.number == 0) throw Wrong("there is no button \"" + statement.text + "\"");
}

void know_panel(const Statement& statement, const IsPanel& is_panel) {
  if (statement.panel.empty() || (is_panel && is_panel(statement.panel))) return;
  throw Wrong("there is no panel \"" + statement.panel + "\"");
}

}  // namespace

Script read_script(std::istream& in, const ButtonNumbers& number_of, const IsPanel& is_panel) {
  Script script;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (number == 1 && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);  // some editors put a mark there
    if (line.ends_with('\r')) line.pop_back();
    try {
      auto statement = read_statement(line, number);
      if (!statement) continue;
      find_named_button(*statement, number_of);
      know_panel(*statement, is_panel);
      script.statements.push_back(*statement);
    } catch (const Wrong& wrong) {
      script.errors.push_back({number, wrong.what()});
    }
  }
  return script;
}

}  // namespace vorn
