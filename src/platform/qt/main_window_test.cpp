// The window with what stands around the page; the test is the user and the session in turn.
#include "platform/qt/main_window.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDialog>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QInputDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <optional>
#include <variant>
#include <vector>

#include "platform/qt/recent_folders.h"
#include "platform/qt/settings.h"
#include "support/windowed.h"

namespace vorn {
namespace {

// --- The menus.

TEST_F(Windowed, TheMenusHoldEveryActionInTheOrderOfTheTable) {
  QStringList expected, found;
  for (const ActionRow& row : action_rows()) expected << QString::fromStdString(std::string(row.id));
  for (QAction* title : window->menuBar()->actions()) {
    for (QAction* entry : title->menu()->actions()) {
      if (!entry->isSeparator()) found << entry->objectName();
    }
  }
  QStringList by_menu;
  for (const Menu menu : {Menu::file, Menu::edit, Menu::view, Menu::cores, Menu::careful, Menu::help}) {
    for (const ActionRow& row : action_rows()) {
      if (row.menu == menu) by_menu << QString::fromStdString(std::string(row.id));
    }
  }
  EXPECT_EQ(found, by_menu);
  EXPECT_EQ(found.size(), expected.size());
}

TEST_F(Windowed, WhatTheWindowIsToDoItDoes) {
  for (const ActionRow& row : action_rows()) {
    const QString id = QString::fromStdString(std::string(row.id));
    EXPECT_EQ(window->does(id), row.window_does_it) << row.id;
  }
}

TEST_F(Windowed, NoKeyIsThatOfTwoActions) {
  QStringList keys;
  for (const QAction* entry : page().findChildren<QAction*>()) {
    for (const QKeySequence& key : entry->shortcuts()) {
      if (!key.isEmpty()) keys << key.toString(QKeySequence::PortableText);
    }
  }
  QStringList once = keys;
  once.removeDuplicates();
  EXPECT_GT(once.size(), 20);
  EXPECT_EQ(keys.size(), once.size()) << keys.join(' ').toStdString();
}

TEST_F(Windowed, AnEntryShowsHowItsActionStands) {
  EXPECT_FALSE(action("save_raw")->isEnabled());
  situation.buttons = {shown(button::save_raw, 100, 100), shown(button::raw_compact, 300, 100)};
  situation.settings.raw_output = Layout::compact;
  stand();
  EXPECT_TRUE(action("save_raw")->isEnabled());
  EXPECT_TRUE(action("raw_compact")->isChecked());
  EXPECT_FALSE(action("raw_tucson")->isChecked());
  EXPECT_FALSE(action("insert_ring")->isEnabled());
  EXPECT_TRUE(action("insert_ring")->toolTip().endsWith(": on the cross-dating screen"))
      << action("insert_ring")->toolTip().toStdString();
  EXPECT_EQ(action("insert_ring")->statusTip(), action("insert_ring")->toolTip());
}

TEST_F(Windowed, AnEntryNamesWhatWillBeTakenBack) {
  standing.to_undo = "Insert 1750 in T001 & T002";
  standing.can_undo = true;
  stand();
  EXPECT_EQ(action("undo")->text(), "Undo Insert 1750 in T001 && T002");
  action("undo")->trigger();
  EXPECT_TRUE(only<Undo>());
}

TEST_F(Windowed, AnEntryChosenIsOneDeed) {
  situation.buttons = {shown(button::save_raw, 100, 100)};
  stand();
  action("save_raw")->trigger();
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  EXPECT_EQ(pressed(*play), button::save_raw);
}

TEST_F(Windowed, AMarkIsTheProgramsToChange) {
  situation.buttons = {shown(button::spline_on, 100, 100)};
  situation.settings.splineon = true;
  stand();
  action("spline_on")->trigger();
  EXPECT_EQ(arrived().size(), 1U);
  EXPECT_TRUE(action("spline_on")->isChecked());
}

// --- Keys.

TEST_F(Windowed, AtAMenuAKeyIsThatOfItsAction) {
  stand_on_crossdating();
  QTest::keyClick(&page(), Qt::Key_Right);
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  EXPECT_EQ(pressed(*play), button::sample_plus_1);
}

TEST_F(Windowed, WhereSomethingIsTypedTheKeysAreTheProgramsAlone) {
  for (const Wait wait : {Wait::name, Wait::number, Wait::message}) {
    stand_on_crossdating();
    situation.wait = wait;
    stand();
    QTest::keyClick(&page(), 'k');
    QTest::keyClick(&page(), Qt::Key_Return);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Insert, Qt::Key_Delete, Qt::Key_Tab})
      QTest::keyClick(&page(), key);
    const auto deeds = arrived();
    ASSERT_EQ(deeds.size(), 2U);
    EXPECT_EQ(std::get<Event>(deeds[0]).code, 'k');
    EXPECT_EQ(std::get<Event>(deeds[1]).code, Event::enter);
    situation.wait = Wait::menu;
  }
}

TEST_F(Windowed, F1AsksTheProgramForHelp) {
  stand_on_crossdating();
  QTest::keyClick(&page(), Qt::Key_F1);
  const auto event = only<Event>();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->code, Event::help);
}

TEST_F(Windowed, AKeyHeldDownActsAgainWhenTheDeedBeforeIsDone) {
  stand_on_crossdating();
  const auto hold = [&](bool again) {
    QTest::simulateEvent(&page(), true, Qt::Key_Right, Qt::NoModifier, QString(), again);
  };
  hold(false);
  for (int i = 0; i < 5; ++i) hold(true);
  EXPECT_EQ(arrived().size(), 1U);
  stand();
  for (int i = 0; i < 5; ++i) hold(true);
  EXPECT_EQ(arrived().size(), 1U);
  hold(false);  // pressed anew
  EXPECT_EQ(arrived().size(), 1U);
}

TEST_F(Windowed, TypedCharactersThatRepeatWaitForEachOther) {
  situation.wait = Wait::name;
  stand();
  const auto hold = [&](bool again) {
    QTest::simulateEvent(&page(), true, Qt::Key_Backspace, Qt::NoModifier, QString(), again);
  };
  hold(false);
  hold(true);
  EXPECT_EQ(arrived().size(), 1U);
  stand();
  hold(true);
  EXPECT_EQ(arrived().size(), 1U);
}

TEST_F(Windowed, WithoutAMouseTabGoesToAButtonAndReturnClicksIt) {
  situation.buttons = {shown(button::crossdate, 1000, 1000)};
  situation.buttons.front().label = "Crossdate";
  stand();
  const QImage before = page().grab().toImage();
  QTest::keyClick(&page(), Qt::Key_Tab);
  EXPECT_NE(page().grab().toImage(), before);  // it is marked
  EXPECT_TRUE(page().accessibleDescription().endsWith("; marked: Crossdate"))
      << page().accessibleDescription().toStdString();
  QTest::keyClick(&page(), Qt::Key_Return);
  const auto click = only<Event>();
  ASSERT_TRUE(click);
  EXPECT_EQ(click->code, Event::click);
  EXPECT_TRUE(situation.at(click->x, click->y));
  situation.wait = Wait::message;
  stand();
  EXPECT_EQ(page().grab().toImage(), before);
}

TEST_F(Windowed, TheYearThatTheKeyboardMarksIsSaidAsThatOfTheMouseIs) {
  stand_on_crossdating();
  situation.wait = Wait::year;
  situation.place = Place::pick_year;
  ShownButton curve = shown(button::upper_plot, 200, 450);
  curve.x2 = 2700;
  curve.y2 = 600;
  situation.buttons = {curve};
  stand();
  QTest::keyClick(&page(), Qt::Key_Tab);
  const QString first = field("year");
  EXPECT_FALSE(first.isEmpty());
  EXPECT_TRUE(page().accessibleDescription().endsWith("; marked: " + first.left(4)))
      << page().accessibleDescription().toStdString();
  QTest::keyClick(&page(), Qt::Key_Right);
  EXPECT_NE(field("year"), first);
  QTest::keyClick(&page(), Qt::Key_Return);
  EXPECT_TRUE(only<Event>());
}

// --- Questions.

Question about_losing() {
  return {.text = "T001 was changed.",
          .more = "It would be lost.",
          .answers = {{"Save First", true, {}}, {"Drop", true, {}}, {"Stay", false, {}}}};
}

TEST_F(Windowed, EachAnswerToAQuestionIsOneDeed) {
  const std::vector<const char*> answers = {"Save First", "Drop", "Stay"};
  for (std::size_t i = 0; i < answers.size(); ++i) {
    standing.question = about_losing();
    stand();
    answer(answers[i]);
    const auto choice = only<Choose>();
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->answer, i);
    standing.question.reset();
    stand();
    EXPECT_EQ(open_dialog<QMessageBox>(), nullptr);
  }
}

TEST_F(Windowed, EscapeIsTheLastAnswer) {
  standing.question = about_losing();
  stand();
  QTest::keyClick(open_dialog<QMessageBox>(), Qt::Key_Escape);
  const auto choice = only<Choose>();
  ASSERT_TRUE(choice);
  EXPECT_EQ(choice->answer, 2U);
}

TEST_F(Windowed, AQuestionThatGoesTakesItsBoxAlongAndAnswersNothing) {
  standing.question = about_losing();
  stand();
  ASSERT_NE(open_dialog<QMessageBox>(), nullptr);
  standing.question.reset();
  stand();
  EXPECT_EQ(open_dialog<QMessageBox>(), nullptr);
  EXPECT_TRUE(arrived().empty());
}

TEST_F(Windowed, AQuestionIsAskedOnceHoweverOftenNewsCome) {
  standing.question = about_losing();
  stand();
  stand();
  window->show_news();
  EXPECT_EQ(window->findChildren<QMessageBox*>().size(), 1);
  answer("Drop");
  window->show_news();  // the session has not answered yet
  EXPECT_EQ(open_dialog<QMessageBox>(), nullptr);
}

// --- What the window does by itself.

TEST_F(Windowed, AKeyHeldDownSwitchesOnce) {
  stand_on_crossdating();
  const auto hold = [&](bool again) {
    QTest::simulateEvent(&page(), true, Qt::Key_F9, Qt::NoModifier, QString(), again);
  };
  const auto is_shown = [&] { return window->findChild<JournalDock*>("journal")->isVisible(); };
  const bool before = is_shown();
  hold(false);
  EXPECT_NE(is_shown(), before);
  page().setFocus();
  hold(true);
  EXPECT_NE(is_shown(), before);
  action("journal")->trigger();  // by the mouse: no key repeats
  EXPECT_EQ(is_shown(), before);
}

TEST_F(Windowed, KeysAndProgramAreTold) {
  action("keys")->trigger();
  auto* dialog = open_dialog<QDialog>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->findChild<QPlainTextEdit*>()->toPlainText(), QString::fromStdString(keys_page()));
  dialog->close();
  action("about")->trigger();
  ASSERT_NE(open_dialog<QMessageBox>(), nullptr);
  EXPECT_TRUE(open_dialog<QMessageBox>()->informativeText().contains(qVersion()));
}

TEST_F(Windowed, TheCorrectedFileTakesItsPlaceInTheListAfterAYes) {
  folder.write("Vorn.fil", "nowhere.rwl\nother.rwl\n");
  folder.write("Tucson.prn", "");
  situation.raw_output = "Tucson.prn";
  standing.decisions = {{.what = "Save Raw", .wrote = "Tucson.prn"}};
  stand();
  action("use_corrected")->trigger();
  answer("Cancel");
  EXPECT_EQ(folder.read("Vorn.fil"), "nowhere.rwl\nother.rwl\n");
  action("use_corrected")->trigger();
  answer("Use It");
  EXPECT_EQ(folder.read("Vorn.fil"), "Tucson.prn\nother.rwl\n");
  EXPECT_EQ(folder.read("Vorn.fil.1"), "nowhere.rwl\nother.rwl\n");
  EXPECT_EQ(window->next_folder(), QDir::currentPath());
  EXPECT_TRUE(only<Close>());
}

// --- Files that are put right.

struct Oaks : Windowed {
  static inline const std::string first =
      "OAK1    1990   101   102   103   104   105   106   107   108   109   110\n"
      "OAK1    2000   111   999\n";
  static inline const std::string second = "OAK2    1996   201   202   203   204\nOAK2    2000   205   999\n";
  void put(const std::string& bytes) {
    folder.write("Vorn.fil", "nowhere.rwl\n");
    folder.write("nowhere.rwl", bytes);
    situation.cores_file = "nowhere.rwl";
    situation.cores = {core({1.01, 1.02, 1.03, 1.04, 1.05, 1.06, 1.07, 1.08, 1.09, 1.1, 1.11}, "OAK1", 1990),
                       core({2.01, 2.02, 2.03, 2.04, 2.05}, "OAK2", 1996)};
  }
  static SharedSeries core(std::vector<double> widths, const std::string& name, int first_year) {
    SeriesCopy copy{name, first_year, std::move(widths), {}};
    copy.presence.assign(copy.widths.size(), 1);
    return std::make_shared<const SeriesCopy>(copy);
  }
  bool is_said(const std::string& words) {
    return QTest::qWaitFor([&] { return std::ranges::count(mailbox.notices(), words) == 1; }, 20'000);
  }
};

TEST_F(Oaks, WhatIsNotReadIsSaidAndACopyTakesItsPlace) {
  put(first + "\n" + second);
  stand();
  EXPECT_TRUE(is_said("nowhere.rwl is not read whole: the panel Files says what is missing"));
  action("files")->trigger();
  PanelArea& area = window->panels().dock(PanelName::files).area();
  const auto key = [&]() -> const Spot* {
    for (const Spot& spot : area.shown().spots) {
      if (spot.change.kind == PanelChange::Kind::copy_file) return &spot;
    }
    return nullptr;
  };
  ASSERT_TRUE(QTest::qWaitFor([&] { return key() != nullptr; }, 20'000));
  area.clicked(*key());
  EXPECT_TRUE(open_dialog<QMessageBox>()->informativeText().contains("line 3, empty, left out"));
  answer("Cancel");
  EXPECT_FALSE(QFile::exists("nowhere-clean.rwl"));
  area.clicked(*key());
  answer("Write and Use It");
  EXPECT_EQ(folder.read("nowhere-clean.rwl"), first + second);
  EXPECT_EQ(folder.read("nowhere.rwl"), first + "\n" + second);
  EXPECT_EQ(folder.read("Vorn.fil"), "nowhere-clean.rwl\n");
  EXPECT_EQ(window->next_folder(), QDir::currentPath());
}

TEST_F(Oaks, OfFilesThatAreReadWholeNothingIsSaid) {
  put(first + second);
  stand();
  action("files")->trigger();
  PanelArea& area = window->panels().dock(PanelName::files).area();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !area.shown().spots.empty(); }, 20'000));
  EXPECT_TRUE(mailbox.notices().empty());
}

TEST_F(Oaks, CorrectedCoresGoBackIntoTheirFileAfterAYes) {
  put(first + second);
  situation.cores[1] = core({2.01, 2.02, 2.5, 2.03, 2.04, 2.05}, "OAK2", 1995);
  stand();
  action("what_changed")->trigger();
  EXPECT_TRUE(
      open_dialog<QDialog>()->findChild<QPlainTextEdit*>()->toPlainText().contains("OAK2: ring inserted"));
  open_dialog<QDialog>()->close();
  action("save_corrected")->trigger();
  answer("Cancel");
  EXPECT_EQ(folder.read("nowhere.rwl"), first + second);
  action("save_corrected")->trigger();
  answer("Save over nowhere.rwl");
  EXPECT_EQ(folder.read("nowhere.rwl"),
            first + "OAK2    1995   201   202   250   203   204\nOAK2    2000   205   999\n");
  EXPECT_EQ(folder.read("nowhere.rwl.orig"), first + second);
}

TEST_F(Oaks, WhereNothingWasChangedThereIsNothingToSave) {
  put(first + second);
  stand();
  action("save_corrected")->trigger();
  EXPECT_TRUE(open_dialog<QMessageBox>()->text().contains("there is nothing to save"));
  open_dialog<QMessageBox>()->close();
  situation.cores.clear();
  stand();
  EXPECT_FALSE(action("save_corrected")->isEnabled());
  EXPECT_FALSE(action("what_changed")->isEnabled());
}

TEST_F(Windowed, TheRecentFoldersAreAMenu) {
  folder.write("Vorn.fil", "nowhere.rwl\n");
  remember_recent_folder(QDir::currentPath());
  EventMailbox next([] {});
  window->serve(next, QDir::currentPath());
  QMenu* recent = action("recent_folders")->menu();
  ASSERT_EQ(recent->actions().size(), 1);
  EXPECT_EQ(recent->actions().first()->text(), QDir::toNativeSeparators(QDir::currentPath()));
  recent->actions().first()->trigger();
  EXPECT_EQ(window->next_folder(), QDir::currentPath());
}

// --- Closing.

TEST_F(Windowed, ClosingAsksTheSessionOnceAndTheWindowStays) {
  stand();
  EXPECT_FALSE(window->close());
  EXPECT_FALSE(window->close());  // the program is still busy
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(only<Close>());
  stand();
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(only<Close>());
  window->let_close();
  EXPECT_TRUE(window->close());
}

TEST_F(Windowed, WhereNoSessionStandsClosingEndsTheProgramAtOnce) {
  EXPECT_FALSE(window->close());
  EXPECT_THROW(plot.csrpos(), ProgramEnd);
}

TEST_F(Windowed, WhoStaysOpensNoOtherFolderEither) {
  folder.write("Vorn.fil", "nowhere.rwl\n");
  stand();
  const auto drop = [&] {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QDir::currentPath())});
    QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&*window, &enter);
    QDropEvent event(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&*window, &event);
  };
  drop();
  EXPECT_TRUE(only<Close>());
  standing.question = about_losing();
  stand();
  answer("Stay");
  EXPECT_EQ(window->next_folder(), std::nullopt);
  standing.question.reset();
  stand();
  drop();
  EXPECT_EQ(remembered("folder"), QDir::currentPath().toUtf8());  // to be offered at the next start
  EXPECT_EQ(window->next_folder(), QDir::currentPath());
  EXPECT_EQ(window->next_folder(), std::nullopt);
}

// --- What is said.

TEST_F(Windowed, TheTitleSaysWhatRunsAndHowFarItIs) {
  EventMailbox::Clock::time_point now{std::chrono::hours(1)};
  EventMailbox working([] {}, [] {}, [&now] { return now; });
  MainWindow busy(working, ".");
  EXPECT_EQ(busy.windowTitle(), "Vorn");
  now += EventMailbox::worth_telling;
  working.progress("Stats.prn", 0.45);
  busy.show_news();
  EXPECT_EQ(busy.windowTitle(), "Stats.prn 45 % - Vorn");
  working.put_key({0, 0, 'k'}, 0);
  working.next_event();
  busy.show_news();
  EXPECT_EQ(busy.windowTitle(), "Vorn");
}

TEST_F(Windowed, TheTitleNamesTheFileWorkedOn) {
  mailbox.subject("trees/nowhere.rwl");
  window->show_news();
  EXPECT_EQ(window->windowTitle(), "trees/nowhere.rwl - Vorn");
  mailbox.subject("b\xE9zier.rwl");  // Latin-1
  window->show_news();
  EXPECT_EQ(window->windowTitle(), QString::fromUtf8("b\u00e9zier.rwl - Vorn"));
  mailbox.subject("");
  window->show_news();
  EXPECT_EQ(window->windowTitle(), "Vorn");
}

TEST_F(Windowed, TheTitleHasAStarWhileSomethingIsNotWritten) {
  mailbox.subject("nowhere.rwl");
  situation.unwritten = {"T001"};
  stand();
  EXPECT_EQ(window->windowTitle(), "*nowhere.rwl - Vorn");
  situation.unwritten.clear();
  stand();
  EXPECT_EQ(window->windowTitle(), "nowhere.rwl - Vorn");
}

TEST_F(Windowed, TheStatusBarFollowsTheMouseOverTheYears) {
  stand_on_crossdating();
  const QString of_bar = field("year");
  EXPECT_TRUE(of_bar.startsWith("bar ")) << of_bar.toStdString();
  QTest::mouseMove(&page(), on_page(200 + 25 * 50 + 12, 800));
  EXPECT_TRUE(field("year").startsWith("1850")) << field("year").toStdString();
  QTest::mouseMove(&page(), on_page(1000, 1600));
  EXPECT_EQ(field("year"), of_bar);
}

TEST_F(Windowed, TheStatusBarSaysWhatIsWaitedForAndWhatIsNotWritten) {
  situation.unwritten = {"T001"};
  standing.written = "wrote Stats.prn, 25 cores";
  stand();
  EXPECT_TRUE(field("waits_for").startsWith("Waits for ")) << field("waits_for").toStdString();
  EXPECT_EQ(page().accessibleDescription(), field("waits_for"));
  EXPECT_TRUE(field("changes").contains("T001"));
  EXPECT_EQ(field("written"), "wrote Stats.prn, 25 cores");
}

TEST_F(Windowed, WhyNoJournalIsKeptIsSaidInBothPlaces) {
  standing.journal_trouble = "the folder cannot be written";
  stand();
  stand();
  EXPECT_TRUE(field("warning").contains("the folder cannot be written"));
  auto* lines = page().findChild<NoticeStrip*>()->findChild<QPlainTextEdit*>();
  EXPECT_EQ(lines->toPlainText().count("the folder cannot be written"), 1);
}

TEST_F(Windowed, EarlierWorkIsOfferedOnce) {
  standing.to_take_up = "1.vrs";
  stand();
  answer("Not Now");
  stand();
  EXPECT_EQ(open_dialog<QMessageBox>(), nullptr);
  EXPECT_TRUE(arrived().empty());
}

TEST_F(Windowed, EarlierWorkIsTakenUpAfterAYes) {
  standing.to_take_up = "1.vrs";
  stand();
  answer("Take It Up");
  const auto deed = only<TakeUp>();
  ASSERT_TRUE(deed);
  EXPECT_EQ(deed->journal, "1.vrs");
}

// As when another decision was made first.
TEST_F(Windowed, TheOfferOfEarlierWorkGoesWhenThereIsNoneAnyMore) {
  standing.to_take_up = "1.vrs";
  stand();
  ASSERT_NE(open_dialog<QMessageBox>(), nullptr);
  standing.to_take_up.clear();
  stand();
  EXPECT_EQ(open_dialog<QMessageBox>(), nullptr);
  EXPECT_TRUE(arrived().empty());
}

// --- The journal.

struct JournalShown : Windowed {
  QTreeView* list = window->findChild<QTreeView*>();
  JournalShown() {
    standing.decisions = {{.what = "Insert 1750 in T001", .before = "1701-1850", .after = "1702-1850"},
                          {.what = "Delete 1760 in T001", .note = "double ring"},
                          {.what = "Save Raw", .is_final = true}};
    standing.taken = 2;
    standing.can_undo = standing.can_redo = true;
    stand();
  }
  QVariant at(int row, int column, int role = Qt::DisplayRole) {
    return list->model()->index(row, column).data(role);
  }
  QAbstractButton* button(const char* text) {
    for (auto* found : window->findChild<JournalDock*>("journal")->findChildren<QPushButton*>()) {
      if (found->text() == text) return found;
    }
    return nullptr;
  }
};

TEST_F(JournalShown, ListsTheDecisionsAndMarksWhereTheSessionStands) {
  ASSERT_EQ(list->model()->rowCount(), 4);
  EXPECT_EQ(at(0, 0), "The beginning");
  EXPECT_EQ(at(1, 0), "Insert 1750 in T001");
  EXPECT_EQ(at(2, 0), QString::fromUtf8("\u25B6 Delete 1760 in T001"));
  EXPECT_EQ(at(2, 1), "double ring");
  EXPECT_TRUE(at(1, 0, Qt::ToolTipRole).toString().contains(QString::fromUtf8("1701-1850 \u2192 1702-1850")));
  EXPECT_TRUE(at(3, 0, Qt::ToolTipRole).toString().contains("Cannot be taken back"));
  EXPECT_TRUE(at(3, 0, Qt::AccessibleTextRole).toString().endsWith("taken back"));
  EXPECT_FALSE(at(2, 0, Qt::ForegroundRole).isValid());
  EXPECT_TRUE(at(3, 0, Qt::ForegroundRole).isValid());
}

TEST_F(JournalShown, WhatIsTakenBackCanStillBeRead) {
  const auto luminance = [](QColor colour) {
    const auto linear = [](double part) {
      return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
  };
  const double letters = luminance(at(3, 0, Qt::ForegroundRole).value<QColor>());
  const double ground = luminance(window->palette().color(QPalette::Base));
  EXPECT_GE((std::max(letters, ground) + 0.05) / (std::min(letters, ground) + 0.05), 4.5);
}

TEST_F(JournalShown, ReturnGoesToWhereTheSessionStoodThen) {
  list->setFocus();
  list->setCurrentIndex(list->model()->index(1, 0));
  QTest::keyClick(list, Qt::Key_Return);
  const auto deed = only<GoTo>();
  ASSERT_TRUE(deed);
  EXPECT_EQ(deed->decisions, 1U);
  emit list->doubleClicked(list->model()->index(0, 0));
  const auto back = only<GoTo>();
  ASSERT_TRUE(back);
  EXPECT_EQ(back->decisions, 0U);
  emit list->doubleClicked(list->model()->index(2, 0));  // it stands there
  EXPECT_TRUE(arrived().empty());
}

TEST_F(JournalShown, ANoteIsWrittenInItsPlace) {
  const QModelIndex cell = list->model()->index(1, 1);
  list->setCurrentIndex(cell);
  list->edit(cell);
  auto* field = list->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, "false ring");
  QTest::keyClick(field, Qt::Key_Return);
  QCoreApplication::processEvents();
  const auto deed = only<TakeNote>();
  ASSERT_TRUE(deed);
  EXPECT_EQ(deed->decision, 0U);
  EXPECT_EQ(deed->text, "false ring");
}

TEST_F(JournalShown, TheNoteOnTheLastDecisionIsAskedForByTheMenuToo) {
  action("note")->trigger();
  auto* dialog = open_dialog<QInputDialog>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->textValue(), "double ring");
  dialog->setTextValue(" seen in\nthe bark ");
  dialog->accept();
  const auto deed = only<TakeNote>();
  ASSERT_TRUE(deed);
  EXPECT_EQ(deed->decision, 1U);
  EXPECT_EQ(deed->text, "seen in the bark");
}

TEST_F(JournalShown, ItsButtonsUndoRedoAndShowTheMethods) {
  button("Undo")->click();
  EXPECT_TRUE(only<Undo>());
  button("Redo")->click();
  EXPECT_TRUE(only<Redo>());
  button("Methods...")->click();
  QString text;
  for (auto* dialog : window->findChildren<QDialog*>()) {
    if (auto* lines = dialog->findChild<QPlainTextEdit*>()) text = lines->toPlainText();
  }
  EXPECT_TRUE(text.contains("Vorn")) << text.toStdString();
  standing.can_undo = standing.can_redo = false;
  stand();
  EXPECT_FALSE(button("Undo")->isEnabled());
  EXPECT_FALSE(button("Redo")->isEnabled());
}

TEST_F(JournalShown, FewerDecisionsAreFewerRows) {
  standing.decisions.resize(1);
  standing.taken = 1;
  stand();
  EXPECT_EQ(list->model()->rowCount(), 2);
  EXPECT_EQ(at(1, 0), QString::fromUtf8("\u25B6 Insert 1750 in T001"));
}

TEST_F(JournalShown, EscapeGivesTheKeyboardBackToThePage) {
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_TRUE(page().hasFocus());
}

TEST_F(JournalShown, WhetherItIsShownIsRemembered) {
  window->arrange();
  window->findChild<JournalDock*>("journal")->hide();
  window->remember_arrangement();
  MainWindow next(mailbox, ".");
  next.arrange();
  EXPECT_TRUE(next.findChild<JournalDock*>("journal")->isHidden());
  window->findChild<JournalDock*>("journal")->show();
  window->remember_arrangement();
  MainWindow other(mailbox, ".");
  other.arrange();
  EXPECT_FALSE(other.findChild<JournalDock*>("journal")->isHidden());
}

TEST_F(JournalShown, NonsenseInTheSettingsLeavesTheFirstArrangement) {
  remember("docks", "nonsense");
  MainWindow next(mailbox, ".");
  next.arrange();
  EXPECT_NE(next.findChild<JournalDock*>("journal"), nullptr);
  EXPECT_LE(next.minimumSizeHint().width(), 700);  // no dock keeps the window from becoming small
}

// --- The mouse on the graph.

struct OnTheGraph : Windowed {
  OnTheGraph() { stand_on_crossdating(); }
};

TEST_F(OnTheGraph, TheCurveTakenAlongIsOneMoveOfTheSample) {
  press_at(on_page(1000, 800));
  drag_to(on_page(1100, 805));
  drag_to(on_page(1300, 810));  // 12 years
  EXPECT_TRUE(arrived().empty());
  release_at(on_page(1300, 810));
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  const auto expected = std::get<Play>(*move_sample_by(12, *mailbox.standing()));
  EXPECT_EQ(play->what, expected.what);
  EXPECT_EQ(play->steps.size(), expected.steps.size());
}

TEST_F(OnTheGraph, WhileItIsTakenAlongThePageShowsWhereItWouldBe) {
  plot.setclr(colour::light_blue);
  plot.line(400, 700, 700, 900);
  plot.show();
  const QImage before = page().grab().toImage();
  press_at(on_page(1000, 800));
  drag_to(on_page(1300, 810));
  const QImage meanwhile = page().grab().toImage();
  EXPECT_NE(meanwhile, before);
  // Behind the curve by 300 page units.
  bool is_blue = false;
  const QPoint middle = on_page(550 + 300, 800);
  for (int y = -12; y <= 12; ++y) {
    const QColor seen = meanwhile.pixelColor(middle + QPoint(0, y));
    is_blue |= seen.blue() > seen.red() + 60;
  }
  EXPECT_TRUE(is_blue);
  QTest::keyClick(&page(), Qt::Key_Escape);
  release_at(on_page(1300, 810));
  EXPECT_EQ(page().grab().toImage(), before);
  EXPECT_TRUE(arrived().empty());
}

TEST_F(OnTheGraph, WhatItWouldMeanIsSaidInYears) {
  EXPECT_EQ(CurveDrag::words(12, situation.sample), "+12 years, 1762-1911");
  EXPECT_EQ(CurveDrag::words(-1, situation.sample), "-1 year, 1749-1898");
}

TEST_F(OnTheGraph, AClickThereIsAClickWhenTheButtonIsLetGo) {
  press_at(on_page(1000, 800));
  EXPECT_TRUE(arrived().empty());
  drag_to(on_page(1000, 800) + QPoint(1, 1));  // a hand is not that still
  release_at(on_page(1000, 800) + QPoint(1, 1));
  const auto click = only<Event>();
  ASSERT_TRUE(click);
  EXPECT_EQ(click->code, Event::click);
  EXPECT_NEAR(click->x, 1000, 3);
}

TEST_F(OnTheGraph, ACurveBroughtBackIsNotMoved) {
  press_at(on_page(1000, 800));
  drag_to(on_page(1300, 800));
  drag_to(on_page(1003, 800));
  release_at(on_page(1003, 800));
  EXPECT_TRUE(arrived().empty());
}

TEST_F(OnTheGraph, WhereAYearIsPickedAClickIsOneAtOnce) {
  situation.wait = Wait::year;
  situation.place = Place::pick_year;
  stand();
  press_at(on_page(1000, 800));
  EXPECT_TRUE(only<Event>());
}

TEST_F(OnTheGraph, TheWheelChangesTheYearsShown) {
  turn_wheel(120);
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  const auto expected = std::get<Play>(*scroll_years_by(-10, *mailbox.standing()));
  EXPECT_EQ(play->steps.size(), expected.steps.size());
  EXPECT_EQ(pressed(*play), pressed(expected));
}

TEST_F(OnTheGraph, WhatIsTurnedMeanwhileIsScrolledAtOnceBehind) {
  for (int i = 0; i < 4; ++i) turn_wheel(-120);
  EXPECT_EQ(arrived().size(), 1U);
  stand();
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  const auto expected = std::get<Play>(*scroll_years_by(30, *mailbox.standing()));
  EXPECT_EQ(play->steps.size(), expected.steps.size());
  stand();
  EXPECT_TRUE(arrived().empty());
}

TEST_F(OnTheGraph, TheMoveCanBeTyped) {
  action("move_sample")->trigger();
  auto* dialog = open_dialog<QInputDialog>();
  ASSERT_NE(dialog, nullptr);
  dialog->setIntValue(-1);
  dialog->accept();
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  EXPECT_EQ(pressed(*play), button::sample_minus_1);
}

TEST_F(OnTheGraph, TheFirstYearCanBeTyped) {
  action("begin_sample")->trigger();
  auto* dialog = open_dialog<QInputDialog>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->intValue(), 1750);
  dialog->setIntValue(1760);
  dialog->accept();
  const auto play = only<Play>();
  ASSERT_TRUE(play);
  EXPECT_EQ(pressed(*play), button::sample_plus_10);
}

// --- All of it.

TEST_F(Windowed, OnADarkDesktopThePageStaysPaperAndTheRestFollows) {
  const DarkDesktop dark;
  standing.decisions = {{.what = "Insert 1750 in T001"}, {.what = "Delete 1760 in T001"}};
  standing.taken = 1;
  stand_on_crossdating();
  const QImage image = window->grab().toImage();
  EXPECT_EQ(image.pixelColor(page().mapTo(&*window, page().rect().center())), QColor(Qt::white));
  EXPECT_LT(image.pixelColor(image.width() - 3, 3).lightness(), 100);
}

TEST_F(Windowed, EveryPartHasAName) {
  stand();
  for (const QWidget* part : std::initializer_list<const QWidget*>{&*window, &page(), window->statusBar(),
                                                                   window->findChild<JournalDock*>("journal"),
                                                                   window->findChild<QTreeView*>()}) {
    EXPECT_FALSE(part->accessibleName().isEmpty()) << part->metaObject()->className();
  }
  for (const ElidedLabel* label : window->findChildren<ElidedLabel*>())
    EXPECT_FALSE(label->accessibleName().isEmpty());
}

TEST_F(Windowed, AnotherRunOfTheProgramBeginsWithNothingOfTheOneBefore) {
  standing.decisions = {{.what = "Insert 1750 in T001"}};
  standing.taken = 1;
  situation.unwritten = {"T001"};
  stand();
  EventMailbox next([] {});
  window->serve(next, ".");
  EXPECT_EQ(window->findChild<QTreeView*>()->model()->rowCount(), 0);
  EXPECT_EQ(window->windowTitle(), "Vorn");
  EXPECT_EQ(field("changes"), "");
  QTest::keyClick(&page(), 'x');
  EXPECT_TRUE(arrived().empty());
  EXPECT_EQ(next.next_event().code, 'x');
}

}  // namespace
}  // namespace vorn
