#include "Fixture.h"
#include "memory/formFreeMem.h"

namespace velmaro {
namespace {

using namespace simulated;

class ListView : public OnDesktop {
 protected:
  ListView() {
    desktop.AddProcess("idle.exe", 4);
    desktop.AddProcess("nine.exe", 9);
    desktop.AddProcess("normal.exe", 8);
    desktop.AddProcess("high.exe", 13);
    desktop.AddProcess("C:\\Emu\\mame.exe", 24);
  }
  void Wait(int milliseconds) { desktop.Advance(static_cast<std::uint64_t>(milliseconds)); }

  const Texts all = {"[Idle]\tidle.exe", "[Normal]\tnine.exe", "[Normal]\tnormal.exe", "[HIGH]\thigh.exe",
                     "[REAL]\tc:\\emu\\mame.exe"};
};

TEST_F(ListView, EachButtonShowsItsOwnRows) {
  auto& form = Start();
  EXPECT_EQ(Rows(form.List1), all);
  EXPECT_EQ(form.SelectedFilterIndex(), 0);
  const std::vector<Texts> views = {all, {all[2]}, {all[3]}, {all[4]}, {all[0]}, {all[4]}};
  for (const std::size_t view : {1, 2, 3, 4, 5, 0}) {
    Select(form.List1, 0);
    Press(form.Option1[view]);
    EXPECT_EQ(Rows(form.List1), views[view]) << view;
    EXPECT_EQ(form.SelectedFilterIndex(), static_cast<int>(view));
    EXPECT_EQ(form.List1.ListIndex(), -1) << "the view was left with a row selected";
    EXPECT_EQ(std::ranges::count_if(form.Option1, &OptionButton::Value), 1);
  }
  for (auto& process : desktop.processes) process.alive = false;
  Press(form.btnRefresh);
  EXPECT_EQ(Rows(form.List1), Texts{});
}

TEST_F(ListView, EveryRoadOfRefreshRebuildsTheListInOneGo) {
  auto& form = Start();
  const std::vector<std::function<void()>> roads = {
      [&] { Press(form.btnRefresh); },     [&] { Choose(form.mnuFileRefresh); }, [&] { form.Form_KeyUp(Key::F5, 0); },
      [&] { Choose(form.mnuOptions[2]); }, [&] { Press(form.Option1[1]); },
  };
  for (const auto& road : roads) {
    desktop.AddProcess("new.exe");
    const auto told = Told(form.List1, Change::Rows);
    const auto taken = desktop.snapshotsTaken;
    road();
    EXPECT_NO_THROW(RowWith(form.List1, "new.exe"));
    EXPECT_EQ(Told(form.List1, Change::Rows), told + 1);
    EXPECT_EQ(desktop.snapshotsTaken, taken + 1);
    desktop.ProcessNamed("new.exe").alive = false;
  }
  const auto taken = desktop.snapshotsTaken;
  for (const int key : {Key::F6, Key::F8, Key::F4, int{'N'}, Key::Return, Key::Space}) TypeKey(form, key);
  EXPECT_EQ(desktop.snapshotsTaken, taken) << "another key refreshes nothing";
  TypeKey(form, Key::F5);
  EXPECT_GT(desktop.snapshotsTaken, taken);
}

TEST_F(ListView, TheTimerLeavesTheUserAloneWhileHeWorksInTheWindow) {
  auto& form = Start();
  Select(form.List1, 2);
  desktop.AddProcess("new.exe");
  Wait(40000);
  EXPECT_EQ(Rows(form.List1), all);
  EXPECT_EQ(form.List1.ListIndex(), 2);
  desktop.GoToAnotherProgram();
  Wait(3999);
  EXPECT_EQ(Rows(form.List1), all);
  Wait(1);
  EXPECT_EQ(form.List1.ListCount(), 6);
  EXPECT_EQ(form.List1.ListIndex(), -1);
  desktop.ProcessNamed("new.exe").alive = false;
  Choose(form.mnuFileAutoRefresh);
  EXPECT_FALSE(form.mnuFileAutoRefresh.Checked());
  desktop.GoToAnotherProgram();
  Wait(8000);
  EXPECT_EQ(form.List1.ListCount(), 6) << "the automatic refresh is off";
  Choose(form.mnuFileAutoRefresh);
  EXPECT_EQ(form.List1.ListCount(), 6) << "the check mark alone refreshes nothing";
  desktop.GoToAnotherProgram();
  Wait(4000);
  EXPECT_EQ(Rows(form.List1), all);
}

TEST_F(ListView, ABoxOrAnotherWindowInFrontLetsTheTimerRefresh) {
  auto& form = Start();
  Choose(form.mnuFileFreeMem);
  desktop.AddProcess("new.exe");
  Wait(4000);
  EXPECT_EQ(form.List1.ListCount(), 6);
  desktop.ProcessNamed("new.exe").alive = false;
  Press(form.btnRefresh);
  // The list is rebuilt under the question, and the question still ends the process that it named.
  Select(form.List1, RowWith(form.List1, "normal.exe"));
  desktop.Answer(6, [&] {
    desktop.processes.push_front({.name = "first.exe", .id = 1});
    Wait(4000);
    EXPECT_EQ(form.List1.List(0), "[Normal]\tfirst.exe");
  });
  Choose(form.mnuOptions[4]);
  EXPECT_EQ(Ended(), Texts{"normal.exe"});
}

TEST_F(ListView, HiddenViewSwapsTheMenusAndRefreshesWindows) {
  desktop.AddWindow("Game");
  auto& form = Start();
  Press(form.Option1[6]);
  EXPECT_FALSE(form.mnuOptionsMain.Visible());
  EXPECT_TRUE(form.mnuWOptionsMain.Visible());
  EXPECT_EQ(Rows(form.List1), (Texts{"Zeld's Velmaro Process", "Game"}));
  desktop.AddWindow("Late");
  TypeKey(form, Key::F5);
  EXPECT_EQ(form.List1.ListCount(), 3);
  desktop.AddWindow("Later");
  desktop.GoToAnotherProgram();
  Wait(4000);
  EXPECT_EQ(form.List1.ListCount(), 4);
  Press(form.Option1[0]);
  EXPECT_TRUE(form.mnuOptionsMain.Visible());
  EXPECT_FALSE(form.mnuWOptionsMain.Visible());
  EXPECT_EQ(Rows(form.List1), all);
}

class Find : public ListView {
 protected:
  // Opens the search, types a text and presses Enter; an empty text is confirmed as it is.
  void FindFor(formVelmaro& form, const std::string& text) {
    desktop.Then([=] { Reply(text); });
    TypeKey(form, 'F', ShiftKey::Ctrl);
  }
};

TEST_F(Find, AnyPartOfARowIsFoundFromTheTop) {
  auto& form = Start();
  const std::vector<std::pair<std::string, int>> cases = {
      {"normal", 1},   {"NORMAL.", 2}, {"high", 3}, {"]\tH", 3}, {"m?me", 4}, {"emu\\*exe", 4}, {"[nr]eal", 4},
      {"[!r]eal", -1}, {"xyz", -1},    {"real", 4}, {"#", -1},   {"[", 0},    {"[b-a]", 0},     {"[e-a", 0},
  };
  for (const auto& [text, row] : cases) {
    desktop.boxes.clear();
    Select(form.List1, 4);
    FindFor(form, text);
    EXPECT_EQ(form.List1.ListIndex(), row) << text;
    if (row < 0) ExpectLastBox("'" + text + "'was not found.", Tells, form.Caption());
    EXPECT_EQ(desktop.boxes.size(), row < 0 ? 1U : 0U) << text;
  }
}

TEST_F(Find, NextGoesOnBehindTheSelectionAndDoesNotWrapAtOnce) {
  auto& form = Start();
  FindFor(form, "Normal");
  EXPECT_EQ(form.List1.ListIndex(), 1);
  TypeKey(form, Key::F3);
  EXPECT_EQ(form.List1.ListIndex(), 2);
  TypeKey(form, Key::F3);
  ExpectLastBox("'Normal'was not found.", Tells, form.Caption());
  EXPECT_EQ(form.List1.ListIndex(), -1);
  Choose(form.mnuFindNext);
  EXPECT_EQ(form.List1.ListIndex(), 1);
  Press(form.btnRefresh);
  TypeKey(form, Key::F3);
  EXPECT_EQ(form.List1.ListIndex(), 1) << "a refresh starts the search at the top";
  Select(form.List1, 4);
  TypeKey(form, Key::F3);
  EXPECT_EQ(desktop.boxes.size(), 2U);
  // The text outlives the view.
  desktop.AddWindow("A Normal Window");
  Press(form.Option1[6]);
  TypeKey(form, Key::F3);
  EXPECT_EQ(form.List1.Text(), "A Normal Window");
}

TEST_F(Find, TheQuestionOffersTheLastTextAndCancelKeepsIt) {
  auto& form = Start();
  const auto ask = [&](const std::string& offered, std::function<void(Form&)> answer) {
    desktop.Then([&, offered, answer] {
      auto& question = FrontForm();
      EXPECT_EQ(question.Caption(), form.Caption());
      Texts texts;
      for (const auto* control : question.Controls()) {
        const auto* box = dynamic_cast<const TextBox*>(control);
        texts.push_back(box ? box->Text() : control->Caption());
      }
      EXPECT_EQ(texts, (Texts{"Enter text to find:", offered, "OK", "Cancel"}));
      answer(question);
    });
  };
  ask("", [](Form& question) { TypeKey(question, Key::Escape); });
  TypeKey(form, Key::F3);
  EXPECT_TRUE(desktop.boxes.empty()) << "without a text the next search asks for one";
  ask("", [](Form&) { Reply("HIGH"); });
  Choose(form.mnuFind);
  EXPECT_EQ(form.List1.ListIndex(), 3);
  for (const auto& refuse : std::vector<std::function<void(Form&)>>{
           [](Form&) { Press("Cancel"); }, [](Form&) { Reply(""); }, [](Form& question) { CloseBox(question); }}) {
    ask("HIGH", refuse);
    Choose(form.mnuFind);
    EXPECT_EQ(form.List1.ListIndex(), -1);
  }
  TypeKey(form, Key::F3);
  EXPECT_EQ(form.List1.ListIndex(), 3);
  EXPECT_TRUE(desktop.boxes.empty());
}

}  // namespace
}  // namespace velmaro
