// The panels around the page, with what is found out beside it.
#include "platform/qt/panel_docks.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <cmath>
#include <optional>
#include <string>

#include "support/windowed.h"

namespace vorn {
namespace {

constexpr int patience = 20'000;  // ms, whatever else the machine is at

// A core of a stand: what all have in common, and something of its own.
SharedSeries core_of_a_stand(std::uint32_t k, int rings) {
  SeriesCopy copy{"T" + std::to_string(k), 1700, {}, {}};
  const auto noise = [](std::uint32_t seed) {
    seed = (seed ^ (seed >> 16)) * 0x45d9f3bU;
    seed = (seed ^ (seed >> 16)) * 0x45d9f3bU;
    return static_cast<double>((seed ^ (seed >> 16)) % 1000) / 1000;
  };
  for (std::uint32_t year = 0; year < static_cast<std::uint32_t>(rings); ++year)
    copy.widths.push_back(0.4 + noise(year + 1) + 0.3 * noise(year + 10'000 * (k + 1)));
  copy.presence.assign(copy.widths.size(), 1);
  return std::make_shared<const SeriesCopy>(copy);
}

// It needs a look.
SharedSeries without_a_ring(SeriesCopy core) {
  core.widths.erase(core.widths.begin() + 100);
  core.presence.pop_back();
  return std::make_shared<const SeriesCopy>(core);
}

struct PanelsAround : Windowed {
  void load(std::uint32_t cores, int rings) {
    situation.cores.clear();
    for (std::uint32_t k = 1; k <= cores; ++k) situation.cores.push_back(core_of_a_stand(k, rings));
    if (rings >= 200) situation.cores[1] = without_a_ring(*situation.cores[1]);
    Curve mean{1700, situation.cores.front()->widths, situation.cores.front()->presence};
    situation.references = {std::make_shared<const ListedChronology>(ListedChronology{"nowhere.rwl", mean})};
    situation.own_reference = 0;
    situation.cores_file = situation.file;
  }
  PanelDock& dock(PanelName name) { return window->panels().dock(name); }
  PanelArea& site() { return dock(PanelName::site).area(); }
  bool has_cores_to_click() {
    return std::ranges::any_of(site().shown().spots, [](const Spot& spot) { return spot.play.has_value(); });
  }
  void await_the_site() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return has_cores_to_click(); }, patience));
  }
  // The first spot that plays something.
  QPoint place_of_a_core() {
    for (const Spot& spot : site().shown().spots) {
      if (spot.play) return QPoint(spot.place.x2 / 2 - 40, spot.place.y1 / 2 + 4);
    }
    return {};
  }
};

// --- Where they stand.

TEST_F(PanelsAround, AtFirstTheSiteIsSeenAndTheJournalBehindIt) {
  QCoreApplication::processEvents();
  for (const PanelName name : all_panels) {
    EXPECT_EQ(dock(name).isVisible(), name == PanelName::site) << id_of(name);
  }
  EXPECT_TRUE(window->tabifiedDockWidgets(&dock(PanelName::site))
                  .contains(window->findChild<QDockWidget*>("journal")));
  EXPECT_TRUE(action("site")->isChecked());
  EXPECT_FALSE(action("rings")->isChecked());
  EXPECT_TRUE(page().hasFocus());
}

TEST_F(PanelsAround, AnEntryShowsItsPanelAndHidesItAgain) {
  for (const PanelName name : {PanelName::rings, PanelName::pointers, PanelName::dates, PanelName::around}) {
    QAction* entry = action(std::string(id_of(name)).c_str());
    ASSERT_NE(entry, nullptr) << id_of(name);
    entry->trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(dock(name).isVisible()) << id_of(name);
    EXPECT_TRUE(dock(name).area().hasFocus()) << id_of(name);
    EXPECT_TRUE(entry->isChecked()) << id_of(name);
    entry->trigger();
    QCoreApplication::processEvents();
    EXPECT_FALSE(dock(name).isVisible()) << id_of(name);
    EXPECT_FALSE(entry->isChecked()) << id_of(name);
    EXPECT_TRUE(page().hasFocus()) << id_of(name);
  }
}

TEST_F(PanelsAround, EscapeGivesTheKeyboardBackToThePage) {
  dock(PanelName::dates).enter();
  QTest::keyClick(&dock(PanelName::dates).area(), Qt::Key_Escape);
  EXPECT_TRUE(page().hasFocus());
}

TEST_F(PanelsAround, WhatHasAnAxisOfYearsStandsAboveAndBelow) {
  EXPECT_EQ(window->dockWidgetArea(&dock(PanelName::rings)), Qt::BottomDockWidgetArea);
  EXPECT_EQ(window->dockWidgetArea(&dock(PanelName::pointers)), Qt::TopDockWidgetArea);
  for (const PanelName name : {PanelName::site, PanelName::dates, PanelName::around}) {
    EXPECT_EQ(window->dockWidgetArea(&dock(name)), Qt::RightDockWidgetArea) << id_of(name);
  }
}

TEST_F(PanelsAround, WhichOnesAreShownIsRemembered) {
  dock(PanelName::pointers).enter();
  dock(PanelName::site).hide();
  window->remember_arrangement();
  MainWindow next(mailbox, ".");
  next.arrange();
  EXPECT_FALSE(next.panels().dock(PanelName::pointers).isHidden());
  EXPECT_TRUE(next.panels().dock(PanelName::site).isHidden());
  EXPECT_TRUE(next.panels().dock(PanelName::rings).isHidden());
}

TEST_F(PanelsAround, OnASmallScreenThePageKeepsItsRoom) {
  MainWindow small(mailbox, ".");
  small.resize(MainWindow::first_size({1366, 768}));
  small.show();
  QCoreApplication::processEvents();
  EXPECT_TRUE(small.panels().dock(PanelName::site).isVisible());
  EXPECT_GE(small.page().width(), 800);
  EXPECT_GE(small.page().height(), 560);
}

// --- Years under years.

struct YearsAround : PanelsAround {
  YearsAround() {
    window->resize(1200, 900);
    stand_on_crossdating();
  }
  // How far, in pixels of the screen, the panel's years stand from those of the page at either end.
  double apart(PanelName name) {
    QCoreApplication::processEvents();
    PanelArea& area = dock(name).area();
    const auto axis = area.view().axis;
    EXPECT_TRUE(axis) << id_of(name);
    if (!axis) return 1e6;
    const double pixels_a_unit =
        static_cast<double>(area.width() - area.verticalScrollBar()->sizeHint().width()) / area.view().width;
    const auto on_screen = [&](double units) {
      return area.viewport()->mapTo(&*window, QPointF(units * pixels_a_unit, 0)).x();
    };
    const auto of_page = [&](int x) {
      return page().mapTo(&*window, page_to_area(page().size()).map(QPointF(x, 0))).x();
    };
    return std::max(std::abs(on_screen(axis->left) - of_page(200)),
                    std::abs(on_screen(axis->right) - of_page(2700)));
  }
};

TEST_F(YearsAround, StandUnderEachOtherOnTheScreen) {
  dock(PanelName::rings).enter();
  EXPECT_LT(apart(PanelName::rings), 0.01);
  dock(PanelName::pointers).enter();
  EXPECT_LT(apart(PanelName::pointers), 0.01);
  EXPECT_LT(apart(PanelName::rings), 0.01);
}

TEST_F(YearsAround, FollowWhereverThePageGoes) {
  dock(PanelName::rings).enter();
  const double before = dock(PanelName::rings).area().view().axis->left;
  window->resize(1400, 1000);
  EXPECT_LT(apart(PanelName::rings), 0.01);
  dock(PanelName::site).hide();
  EXPECT_LT(apart(PanelName::rings), 0.01);
  window->addDockWidget(Qt::LeftDockWidgetArea, &dock(PanelName::dates));
  dock(PanelName::dates).show();
  EXPECT_LT(apart(PanelName::rings), 0.01);
  window->resizeDocks({&dock(PanelName::rings)}, {400}, Qt::Vertical);
  EXPECT_LT(apart(PanelName::rings), 0.01);
  EXPECT_NE(dock(PanelName::rings).area().view().axis->left, before);
}

TEST_F(YearsAround, StandOnTheirOwnBesideThePageAndAwayFromIt) {
  EXPECT_FALSE(site().view().axis);
  PanelDock& rings = dock(PanelName::rings);
  rings.enter();
  rings.setFloating(true);
  QCoreApplication::processEvents();
  EXPECT_FALSE(rings.area().view().axis);
}

// --- What they show.

TEST_F(PanelsAround, TheCoresAreListedWhenTheyHaveBeenStudied) {
  load(6, 200);
  stand();
  await_the_site();
  EXPECT_GE(site().shown().spots.size(), 6u);
}

TEST_F(PanelsAround, AClickOnACorePutsItOnThePage) {
  load(6, 200);
  stand();
  await_the_site();
  QTest::mouseClick(site().viewport(), Qt::LeftButton, Qt::NoModifier, place_of_a_core());
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  EXPECT_TRUE(play->what.starts_with("Put T")) << play->what;
  EXPECT_GT(play->steps.size(), 2u);
  EXPECT_TRUE(page().hasFocus());
}

// The page that it was meant for is about to go.
TEST_F(PanelsAround, AClickWhileAnotherOneIsBeingPlayedIsDropped) {
  load(6, 200);
  stand();
  await_the_site();
  for (int k = 0; k < 2; ++k) {
    QTest::mouseClick(site().viewport(), Qt::LeftButton, Qt::NoModifier, place_of_a_core());
  }
  QTest::keyClick(&site(), Qt::Key_N);
  EXPECT_TRUE(only<Play>());
  stand();
  QTest::mouseClick(site().viewport(), Qt::LeftButton, Qt::NoModifier, place_of_a_core());
  EXPECT_TRUE(only<Play>());
}

TEST_F(PanelsAround, TheKeyboardDoesSoToo) {
  load(6, 200);
  stand();
  await_the_site();
  dock(PanelName::site).enter();
  for (int k = 0; k < 20 && arrived().empty(); ++k) {
    QTest::keyClick(&site(), Qt::Key_Tab);
    if (site().accessibleDescription().startsWith('T')) {
      QTest::keyClick(&site(), Qt::Key_Return);
      const auto play = only<Play>();
      ASSERT_TRUE(play);
      EXPECT_TRUE(play->what.starts_with("Put T")) << play->what;
      return;
    }
  }
  FAIL() << site().accessibleDescription().toStdString();
}

TEST_F(PanelsAround, OnADarkDesktopAPanelStaysPaper) {
  const DarkDesktop dark;
  load(6, 200);
  stand();
  await_the_site();
  const QImage image = window->grab().toImage();
  const QPoint corner = site().viewport()->mapTo(&*window, QPoint(2, 2));
  EXPECT_EQ(image.pixelColor(corner), QColor(Qt::white));
  const QPoint title = dock(PanelName::site).mapTo(&*window, QPoint(2, 2));
  EXPECT_LT(image.pixelColor(title).lightness(), 100);
}

TEST_F(PanelsAround, WhileNoPanelIsSeenNothingIsStudied) {
  dock(PanelName::site).hide();
  load(6, 200);
  stand();
  QTest::qWait(300);
  dock(PanelName::site).show();
  QCoreApplication::processEvents();
  EXPECT_FALSE(has_cores_to_click());
  await_the_site();
}

TEST_F(PanelsAround, OfManyCoresThoseInSightAreDrawn) {
  load(500, 60);
  stand();
  await_the_site();
  EXPECT_LT(site().shown().spots.size(), 200u);
  QElapsedTimer since;
  since.start();
  for (int k = 0; k < 20; ++k) QTest::keyClick(&site(), Qt::Key_PageDown);
  QTest::keyClick(&site(), Qt::Key_End);
  site().viewport()->repaint();
  EXPECT_LT(since.elapsed(), 5000);
  EXPECT_GT(site().verticalScrollBar()->value(), 10'000);
  EXPECT_EQ(site().verticalScrollBar()->value(), site().verticalScrollBar()->maximum());
  EXPECT_TRUE(has_cores_to_click());
}

TEST_F(PanelsAround, AnotherRunOfTheProgramBeginsWithNothingFound) {
  load(6, 200);
  stand();
  await_the_site();
  EventMailbox next([] {});
  window->serve(next, ".");
  EXPECT_TRUE(site().shown().spots.empty());
  QTest::qWait(50);
  EXPECT_TRUE(site().shown().spots.empty());
}

TEST_F(PanelsAround, TheWindowClosesWhileCoresAreStudied) {
  load(3000, 500);
  stand();
  QTest::qWait(50);
  EXPECT_FALSE(has_cores_to_click());
  QElapsedTimer since;
  since.start();
  window.reset();
  EXPECT_LT(since.elapsed(), 3000);
}

// --- Marks of cores.

struct Marked : PanelsAround {
  Marked() {
    load(6, 200);
    stand();
    await_the_site();
  }
  void mark_the_first() {
    for (const Spot& spot : site().shown().spots) {
      if (spot.change.kind != PanelChange::Kind::mark) continue;
      const QPoint middle((spot.place.x1 + spot.place.x2) / 4, (spot.place.y1 + spot.place.y2) / 4);
      return QTest::mouseClick(site().viewport(), Qt::LeftButton, Qt::NoModifier, middle);
    }
    FAIL() << "no core needs a look";
  }
  bool says(const char* text) {
    const auto& spots = site().shown().spots;
    return std::ranges::any_of(spots, [text](const Spot& spot) { return spot.tip.starts_with(text); });
  }
};

TEST_F(Marked, AreKeptForTheFolder) {
  EXPECT_TRUE(says("T2 is to do"));
  mark_the_first();
  EXPECT_TRUE(says("T2 is done"));
  EXPECT_TRUE(arrived().empty());
  MainWindow next(mailbox, QDir::currentPath());
  next.show();
  next.show_news();
  PanelArea& of_next = next.panels().dock(PanelName::site).area();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !of_next.shown().spots.empty(); }, patience));
  const auto& spots = of_next.shown().spots;
  EXPECT_TRUE(
      std::ranges::any_of(spots, [](const Spot& spot) { return spot.tip.starts_with("T2 is done"); }));
}

TEST_F(Marked, WhatCannotBeKeptIsSaid) {
  folder.write(".vorn", "no folder");
  mark_the_first();
  EXPECT_TRUE(says("T2 is done"));
  EXPECT_EQ(mailbox.notices().size(), 1u);
}

// --- The keys from core to core.

TEST_F(PanelsAround, NAndPLeadThroughTheCoresByNeed) {
  load(6, 200);
  stand();
  await_the_site();
  QTest::keyClick(&page(), Qt::Key_N);
  const auto next = only<Play>();
  ASSERT_TRUE(next);
  stand();
  QTest::keyClick(&page(), Qt::Key_P);
  const auto previous = only<Play>();
  ASSERT_TRUE(previous);
  EXPECT_NE(next->what, previous->what);  // with none on the page, the first and the last
}

TEST_F(PanelsAround, NAndPDoSoInAPanelToo) {
  load(6, 200);
  stand();
  await_the_site();
  dock(PanelName::site).enter();
  QTest::keyClick(&site(), Qt::Key_N);
  EXPECT_TRUE(only<Play>());
}

TEST_F(PanelsAround, WhereLettersAreTypedTheyAreTheProgramsAlone) {
  load(6, 200);
  stand();
  await_the_site();
  for (const Wait wait : {Wait::name, Wait::number, Wait::message, Wait::year}) {
    situation.wait = wait;
    stand();
    EXPECT_FALSE(action("next_core")->isEnabled());
    EXPECT_FALSE(action("previous_core")->isEnabled());
    QTest::keyClick(&page(), Qt::Key_N);
    QTest::keyClick(&page(), Qt::Key_P);
    const auto deeds = arrived();
    ASSERT_EQ(deeds.size(), 2u);
    EXPECT_EQ(std::get<Event>(deeds[0]).code, 'n');
    EXPECT_EQ(std::get<Event>(deeds[1]).code, 'p');
  }
}

// The click on a name's field is not yet done when its first letter is typed.
TEST_F(PanelsAround, SoAreLettersTypedAheadOfAField) {
  load(6, 200);
  situation.buttons = {shown(button::mean_name, 100, 100)};
  stand();
  await_the_site();
  press_at(on_page(150, 125));
  QTest::keyClick(&page(), Qt::Key_N);
  const auto deeds = arrived();
  ASSERT_EQ(deeds.size(), 2u);
  EXPECT_EQ(std::get<Event>(deeds[1]).code, 'n');
}

TEST_F(PanelsAround, WhileAQuestionStandsNoCoreIsPutOnThePage) {
  load(6, 200);
  standing.question = Question{.text = "T001 was changed.", .more = "", .answers = {{"Stay", false, {}}}};
  stand();
  EXPECT_FALSE(action("next_core")->isEnabled());
  EXPECT_EQ(action("next_core")->toolTip(), "Next Core by Need: when the question is answered");
}

TEST_F(PanelsAround, WhereNoCoreIsLeftItIsSaid) {
  dock(PanelName::site).hide();
  stand();  // no cores
  QTest::keyClick(&page(), Qt::Key_N);
  EXPECT_TRUE(arrived().empty());
  EXPECT_FALSE(window->statusBar()->currentMessage().isEmpty());
  EXPECT_TRUE(dock(PanelName::site).isVisible());
}

}  // namespace
}  // namespace vorn
