#include "platform/web/situation_bytes.h"

#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/web/byte_stream.h"

namespace vorn {
namespace {

// Both ways go by one description: `archive(x)` writes x or reads it.

class WritingArchive {
 public:
  WritingArchive(ByteWriter& out, SharedParts<SentParts>& parts) : out_(out), parts_(parts) {}

  void operator()(const std::string& text) { out_.text(text); }
  template <class T>
  void operator()(const T& value) requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) {
    out_.number(static_cast<double>(value));
  }
  template <class T, class Describe>
  void each(const std::vector<T>& all, Describe describe) {
    out_.number(static_cast<double>(all.size()));
    for (const T& one : all) describe(one);
  }
  void flags(const std::vector<std::uint8_t>& all) {
    out_.text({reinterpret_cast<const char*>(all.data()), all.size()});
  }
  template <class T, class Describe>
  void shared(const std::shared_ptr<const T>& value, SentParts<T> SharedParts<SentParts>::*kind,
              Describe describe) {
    SentParts<T>& parts = parts_.*kind;
    if (!value) return out_.number(0);
    const auto known = parts.now.find(value), earlier = parts.before.find(value);
    const bool is_known = known != parts.now.end() || earlier != parts.before.end();
    const int number = known != parts.now.end()        ? known->second
                       : earlier != parts.before.end() ? earlier->second
                                                       : ++parts.next;
    parts.now[value] = number;
    out_.number(static_cast<double>(number));
    out_.number(is_known);
    if (!is_known) describe(*value);
  }

 private:
  ByteWriter& out_;
  SharedParts<SentParts>& parts_;
};

class ReadingArchive {
 public:
  ReadingArchive(ByteReader& in, SharedParts<ReceivedParts>& parts) : in_(in), parts_(parts) {}

  void operator()(std::string& text) { text = in_.text(); }
  template <class T>
  void operator()(T& value) requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) {
    if constexpr (std::is_same_v<T, bool>) {
      value = in_.yes();
    } else if constexpr (std::is_floating_point_v<T>) {
      value = in_.number();
    } else {
      value = static_cast<T>(in_.whole());
    }
  }
  template <class T, class Describe>
  void each(std::vector<T>& all, Describe describe) {
    all.resize(in_.count());
    for (T& one : all) describe(one);
  }
  void flags(std::vector<std::uint8_t>& all) {
    const std::string bytes = in_.text();
    all.assign(bytes.begin(), bytes.end());
  }
  template <class T, class Describe>
  void shared(std::shared_ptr<const T>& value, ReceivedParts<T> SharedParts<ReceivedParts>::*kind,
              Describe describe) {
    ReceivedParts<T>& parts = parts_.*kind;
    value = nullptr;
    const int number = in_.whole();
    if (number == 0) return;
    if (in_.yes()) {
      const auto known = parts.now.find(number), earlier = parts.before.find(number);
      if (known == parts.now.end() && earlier == parts.before.end())
        throw std::runtime_error("a message that names what was never sent");
      value = known != parts.now.end() ? known->second : earlier->second;
    } else {
      auto made = std::make_shared<T>();
      describe(*made);
      value = std::move(made);
    }
    parts.now[number] = value;
  }

 private:
  ByteReader& in_;
  SharedParts<ReceivedParts>& parts_;
};

template <class Archive, class Values, class Presence>
void describe_values(Archive& archive, Values& values, Presence& presence) {
  archive.each(values, archive);
  archive.flags(presence);
}

template <class Archive, class Parts, class Shared>
void describe_series(Archive& archive, Parts parts, Shared& series) {
  archive.shared(series, parts, [&](auto& copy) {
    archive(copy.name);
    archive(copy.first_year);
    describe_values(archive, copy.widths, copy.presence);
  });
}

template <class Archive, class CurveOf>
void describe_curve(Archive& archive, CurveOf& curve) {
  archive(curve.first_year);
  describe_values(archive, curve.values, curve.presence);
}

template <template <class> class Of, class Archive, class Member>
void describe_member(Archive& archive, Member& member) {
  archive(member.entry);
  archive(member.name);
  archive(member.is_core);
  archive(member.first_year);
  archive(member.last_year);
  archive(member.changed);
  archive(member.can_be_saved);
  archive(member.stored_first_year);
  describe_series(archive, &SharedParts<Of>::series, member.series);
  for (auto* curve : {&member.curve, &member.compared})
    archive.shared(*curve, &SharedParts<Of>::curves, [&](auto& values) { describe_curve(archive, values); });
}

template <class Archive, class CarefulOf>
void describe_careful(Archive& archive, CarefulOf& careful) {
  std::uint32_t bits = careful.bits();
  archive(bits);
  if constexpr (!std::is_const_v<CarefulOf>) careful = Careful::of_bits(bits);
}

template <class Archive, class SettingsOf>
void describe_settings(Archive& archive, SettingsOf& settings) {
  archive(settings.ss);
  archive(settings.jpr);
  archive(settings.splineon);
  archive(settings.aron);
  archive(settings.logon);
  archive(settings.seg);
  archive(settings.olap);
  archive(settings.raw_output);
  archive(settings.crn_output);
  describe_careful(archive, settings.careful);
}

template <class Archive, class Buttons>
void describe_buttons(Archive& archive, Buttons& buttons) {
  archive.each(buttons, [&](auto& button) {
    archive(button.x1);
    archive(button.y1);
    archive(button.x2);
    archive(button.y2);
    archive(button.number);
    archive(button.label);
    archive(button.lit);
  });
}

template <template <class> class Of, class Archive, class SituationOf>
void describe(Archive& archive, SituationOf& now) {
  archive(now.wait);
  archive(now.place);
  describe_buttons(archive, now.buttons);
  archive(now.file);
  archive(now.cores_file);
  describe_careful(archive, now.read_as);
  archive.each(now.cores, [&](auto& core) { describe_series(archive, &SharedParts<Of>::series, core); });
  archive.each(now.references, [&](auto& reference) {
    archive.shared(reference, &SharedParts<Of>::chronologies, [&](auto& listed) {
      archive(listed.name);
      describe_curve(archive, listed.values);
    });
  });
  archive(now.own_reference);
  archive.each(now.unwritten, archive);
  archive(now.curves_are_indices);
  archive(now.first_year);
  archive(now.years_shown);
  describe_member<Of>(archive, now.sample);
  describe_member<Of>(archive, now.reference);
  describe_settings(archive, now.settings);
  archive(now.passes_left);
  archive(now.inserts);
  archive(now.picked_year);
  archive(now.mode);
  archive.each(now.marked, archive);
  archive(now.destination);
  archive.each(now.listed, archive);
  archive(now.first_listed);
  archive(now.editor_first_year);
  archive.each(now.editor_columns, archive);
  archive.each(now.chronologies, [&](auto& file) {
    archive(file.name);
    archive(file.has_cores);
  });
  archive(now.raw_output);
  archive(now.replaces_other_file);
  archive(now.two_column_list_missing);
}

// What the last situation did not hold is forgotten.
template <class Parts>
void turn_over(Parts& parts) {
  parts.before = std::exchange(parts.now, {});
}
template <class All>
void turn_all_over(All& all) {
  turn_over(all.series);
  turn_over(all.chronologies);
  turn_over(all.curves);
}

}  // namespace

std::string SituationWriter::write(const Standing& standing) {
  ByteWriter out;
  WritingArchive archive(out, parts_);
  archive(standing.question.has_value());
  describe<SentParts>(archive, *standing.situation);
  turn_all_over(parts_);
  return out.bytes();
}

SharedStanding SituationReader::read(std::string_view bytes) {
  ByteReader in(bytes);
  ReadingArchive archive(in, parts_);
  auto standing = std::make_shared<Standing>();
  auto situation = std::make_shared<Situation>();
  bool is_asked = false;
  archive(is_asked);
  describe<ReceivedParts>(archive, *situation);
  turn_all_over(parts_);
  if (is_asked) standing->question.emplace();
  standing->situation = std::move(situation);
  return standing;
}

}  // namespace vorn
