// What the studies say about a situation: the values that panels show.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "records/files.h"
#include "situation/situation.h"
#include "study/dates.h"
#include "study/pointer_years.h"
#include "study/ring_errors.h"
#include "study/site.h"
#include "study/studied_cores.h"
#include "workspace/owned_series.h"

namespace vorn {

// A core of a situation with what is compared of it, which it owns.
class StudiedSeries {
 public:
  StudiedSeries(SharedSeries series, const Settings& settings);
  const SeriesCopy& series() const { return *series_; }
  SeriesView widths() const;
  StudiedCore core() const { return studied_.core(0); }

 private:
  SharedSeries series_;
  std::unique_ptr<bool[]> present_;
  StudiedCores studied_;
};
using SharedStudied = std::shared_ptr<const StudiedSeries>;

// The cores of the current file.
struct SiteFindings {
  std::string file;
  std::vector<SharedStudied> cores;
  SiteSurvey survey;
  std::vector<std::string> todo;  // by core, empty where nothing is
};

// The pair on the page: the sample where it is a core, else the reference, held against the other one. A core
// and the chronology of its own file are told by the mean of the file's other cores.
struct PairFindings {
  SharedStudied core;
  int entry = 0;          // its number among all series
  bool is_sample = true;  // otherwise it is the reference
  bool is_last = false;   // of the cores: its changes cannot be saved
  std::string against;    // "the 24 others of nowhere.rwl", "NOW03"
  OwnedSeries reference;
  RingErrors errors;        // missing rings are likelier where the reference is narrow
  RingErrors errors_alike;  // every year is as likely
  Settings settings;
  std::vector<SharedStudied>
      others;  // the cores that the reference is the mean of; none where it is one series
};

// The sample on the page against every chronology of the list.
struct DateFindings {
  struct Reference {
    std::string name;
    std::vector<DatedPosition> best = {};  // at most three, the best first, more than two years apart
    double margin = 0;
    bool stands_out = false;
    std::int64_t first = 0;      // year in which the sample begins at the first position tried
    std::vector<double> r = {};  // by position
    std::size_t tried = 0;       // how many of them have enough years in common
  };
  std::string sample;
  int rings = 0;
  int first_year = 0;
  std::vector<Reference> references;  // the best first
};

struct RecipeFindings;  // recipe_findings.h
struct MovingFindings;  // moving_findings.h
class MovingStudy;

// Never changed once made. A part is null where it cannot be had, or was not had yet.
struct Findings {
  SharedSituation of;  // what it was computed from
  std::shared_ptr<const SiteFindings> site = {};
  bool site_is_older = false;  // and of the cores as they were before, as are the pointer years
  std::shared_ptr<const PairFindings> pair = {};
  std::shared_ptr<const DateFindings> dates = {};
  std::shared_ptr<const std::vector<PointerYear>> pointers = {};
  std::shared_ptr<const RecipeFindings> recipe = {};
  std::shared_ptr<const MovingFindings> moving = {};
};
using SharedFindings = std::shared_ptr<const Findings>;

// Computes findings, and keeps what did not change from one situation to the next. One thread at a time.
class Studies {
 public:
  // Told now and then on the way what is worked on: "core 120 of 9000". Answers whether to go on; otherwise
  // the work ends soon.
  using GoOn = std::function<bool(const std::string& working)>;
  using Came = std::function<void(const SharedFindings&)>;
  // The findings of a situation at a menu. `came` is called whenever a part is there, with all that is there
  // by then: first what still holds of earlier situations, then what regards the pair on the page. While a
  // ring inserted or deleted is looked at, what was found before it stays.
  void study(const SharedSituation& situation, const GoOn& go_on, const Came& came);
  // Where files are read that cores are to be moved to; it must live as long. Without it none is.
  void read_from(Files* files);

  Studies();
  ~Studies();

 private:
  bool make_ready(const Situation& now, const GoOn& go_on);

  SharedFindings found_;
  SharedSituation of_site_, of_pair_, of_dates_, of_recipe_, of_moving_;
  std::unique_ptr<MovingStudy> moving_;
  std::vector<SharedStudied> ready_;  // the cores of the situation at hand
  Settings ready_for_;
};

}  // namespace vorn
