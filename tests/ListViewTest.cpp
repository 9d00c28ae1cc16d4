#include "Fixture.h"

namespace {

class ListView : public OnDesktop {
 protected:
  ListView()
      : form((Run({"4 idle.exe", "9 nine.exe", "8 normal.exe", "13 high.exe", "24 C:\\Emu\\mame.exe"}), Start())) {}

  formVelmaro& form;
  const Texts all = {"[Idle]\tidle.exe", "[Normal]\tnine.exe", "[Normal]\tnormal.exe", "[HIGH]\thigh.exe",
                     "[REAL]\tc:\\emu\\mame.exe"};
};

TEST_F(ListView, EachButtonShowsItsOwnRows) {
  const std::vector<Texts> views = {all, {all[2]}, {all[3]}, {all[4]}, {all[0]}, {all[4]}};
  for (const std::size_t view : {1, 2, 3, 4, 5, 0}) {
    Select(form.List1, 0);
    Scroll(form.List1, 1);
    Press(form.Option1[view]);
    EXPECT_EQ(Rows(form.List1), views[view]) << view;
    EXPECT_EQ(form.List1.ListIndex() - form.List1.TopIndex(), -1) << "a view begins at its top, with no row selected";
    EXPECT_EQ(std::ranges::count_if(form.Option1, &OptionButton::Value), 1);
  }
  const auto taken = desktop.snapshotsTaken;
  Press(form.Option1[0]);
  EXPECT_EQ(desktop.snapshotsTaken, taken) << "nothing was chosen anew";
  for (std::size_t left = all.size(); left-- > 0;) {
    desktop.processes[left].alive = false;
    left == 0 ? Choose(form.mnuFileRefresh) : left == 1 ? TypeKey(form, Key::F5) : Press(form.btnRefresh);
    EXPECT_EQ(Rows(form.List1), Texts(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(left)));
  }
}

TEST_F(ListView, TheTimerLeavesTheUserAloneWhileHeWorksInTheWindow) {
  Select(form.List1, 2);
  desktop.AddProcess("new.exe");
  desktop.Advance(40000);
  EXPECT_EQ(State(form), "Real Time 2, row 2 of 5");
  desktop.GoToAnotherProgram();
  desktop.Advance(3999);
  EXPECT_EQ(form.List1.ListCount(), 5);
  desktop.Advance(1);
  EXPECT_EQ(State(form), "Real Time 2, row -1 of 6");
  desktop.ProcessNamed("new.exe").alive = false;
  Choose(form.mnuFileAutoRefresh);
  desktop.GoToAnotherProgram();
  desktop.Advance(8000);
  EXPECT_EQ(form.List1.ListCount(), 6) << "the automatic refresh is off";
  Choose(form.mnuFileAutoRefresh);
  EXPECT_EQ(form.List1.ListCount(), 6) << "the check mark alone refreshes nothing";
  desktop.GoToAnotherProgram();
  desktop.Advance(4000);
  EXPECT_EQ(Rows(form.List1), all);
  // A box or a window of the program's own stands before this one as another program's does.
  const auto refreshes = [&] {
    desktop.AddProcess("more.exe");
    desktop.Advance(4000);
    return form.List1.ListCount() == static_cast<int>(desktop.processes.size()) - 1;
  };
  desktop.Answer(7, [&] { EXPECT_TRUE(refreshes()); });
  Choose(form.mnuFileKillProcesses);
  Press(form.btnFreeMem);
  EXPECT_TRUE(refreshes());
}

class Find : public ListView {
 protected:
  void FindFor(const std::string& text) {
    desktop.Then([=] { Reply(text); });
    TypeKey(form, 'F', ShiftKey::Ctrl);
  }
};

TEST_F(Find, NextGoesOnBehindTheSelectionAndDoesNotWrapAtOnce) {
  const auto next = [&] { return TypeKey(form, Key::F3), form.List1.ListIndex(); };
  desktop.Then([&] {
    EXPECT_EQ(FrontForm().Caption(), form.Caption());
    Reply("Normal");
  });
  for (const int row : {1, 2, -1}) EXPECT_EQ(next(), row) << "without a text it asks for one";
  ExpectLastBox("'Normal'was not found.", Tells, form.Caption());
  EXPECT_EQ(next(), 1);
  Press(form.btnRefresh);
  EXPECT_EQ(next(), 1) << "a refresh starts the search at the top";
  // The text outlives the view, and a search that is cancelled or emptied.
  for (const auto& refuse : std::vector<std::function<void()>>{[] { Press("Cancel"); }, [] { Reply(""); }}) {
    desktop.Then(refuse);
    Choose(form.mnuFind);
    EXPECT_EQ(form.List1.ListIndex(), -1);
  }
  desktop.AddWindow("A Normal Window");
  Press(form.Option1[6]);
  TypeKey(form, Key::F3);
  EXPECT_EQ(form.List1.Text(), "A Normal Window");
  Press(form.Option1[0]);
  // What can't be read as a pattern fits the first row.
  for (const auto& [text, row] : std::vector<std::pair<std::string, int>>{{"M?mE.", 4}, {"[", 0}, {"x[b-a]", 0}}) {
    FindFor(text);
    EXPECT_EQ(form.List1.ListIndex(), row) << text;
  }
  EXPECT_EQ(desktop.boxes.size(), 1U);
}

}  // namespace
