#include "Fixture.h"
#include "desktop/modTrayIcon.h"

namespace {

class Commands : public OnDesktop {
 protected:
  Commands() { Run({"8 Normal.exe", "13 high.exe", "24 C:\\Emu\\real.exe", "10 ten.exe", "9 nine.exe", "4 idle.exe"}); }
  int BaseOf(const std::string& name) { return desktop.ProcessNamed(name).basePriority; }
};

TEST_F(Commands, TheListShowsWhatTheFirstProcessOfThatNameReallyGot) {
  Run({"8 e.exe", "8 a]\tb.exe"});
  auto& form = Start("/q");
  desktop.realTimeAllowed = false;
  desktop.ProcessNamed("ten.exe").denied = true;
  desktop.ProcessNamed("high.exe").alive = false;
  DoubleClick(form.List1, 0);
  EXPECT_EQ(form.List1.List(0), "[HIGH]\tnormal.exe");
  DoubleClick(form.List1, RowWith(form.List1, "ten.exe"));
  EXPECT_EQ(form.List1.List(2), "[10]\tten.exe");
  Select(form.List1, RowWith(form.List1, "\te.exe"));
  Choose(form.mnuOptions[1]);
  EXPECT_EQ(BaseOf("nine.exe") * 100 + BaseOf("e.exe"), 1308);
  DoubleClick(form.List1, RowWith(form.List1, "a]\tb.exe"));
  EXPECT_EQ(BaseOf("a]\tb.exe"), 13);
  Choose(form.mnuOptions[1]);
  desktop.ProcessNamed("e.exe").alive = false;
  DoubleClick(form.List1, -1);
  EXPECT_EQ(State(form), "Real Time 2, row -1 of 6") << "without a row it comes down to a refresh";
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Commands, WhereRowsAreToldApartACommandGoesToTheRowItself) {
  desktop.commandsMeanTheRow = true;
  const auto twin = desktop.AddProcess("high.exe");
  desktop.AddProcess("ame");
  desktop.AddWindow("Game");
  auto& form = Start("/q");
  Select(form.List1, 6);
  Choose(form.mnuOptions[3]);
  EXPECT_EQ(desktop.ProcessById(twin).basePriority * 100 + BaseOf("high.exe"), 413);
  Select(form.List1, 6);
  Choose(form.mnuOptions[4]);
  EXPECT_EQ(desktop.terminated, std::vector{twin});
  Press(form.Option1[6]);
  Select(form.List1, 1);
  Press(form.btnVelmaro);
  EXPECT_EQ(BaseOf("ame"), 8) << "a window is no process";
}

TEST_F(Commands, TheDefaultButtonListensToTheMouseAlone) {
  auto& form = Start("/q");
  Select(form.List1, 0);
  for (const int key : {Key::Return, Key::Space}) TypeKey(form, key);
  EXPECT_EQ(BaseOf("Normal.exe"), 8);
  desktop.choices = {nullptr, &form.mnuOptions[1]};
  RightPress(form.btnVelmaro, MouseButton::Middle);
  RightPress(form.btnVelmaro);
  const Bounds corner{form.btnVelmaro.Left(), form.btnVelmaro.Top() + form.btnVelmaro.Height()};
  for (const auto& popup : desktop.popups) EXPECT_TRUE(popup.menu == &form.mnuOptionsMain && popup.place == corner);
  EXPECT_EQ(BaseOf("Normal.exe"), 13);
}

TEST_F(Commands, TheRightButtonMarksTheClassOfTheRowAndOpensThePopup) {
  auto& form = Start("/q");
  const auto popUp = [&](int row, Menu* choice) {
    if (row >= 0) Select(form.List1, row);
    desktop.choices.push_back(choice);
    RightPress(form.List1);
    const auto& popup = desktop.popups.back();
    EXPECT_TRUE(popup.menu == &form.mnuOptionsMain && !popup.place);
    return popup.checked.size() == 1 ? popup.checked[0]->Caption() : "not one mark";
  };
  EXPECT_EQ(popUp(-1, nullptr), "Real Time") << "without a row the old option stays";
  EXPECT_EQ(popUp(1, nullptr), "High");
  Press(form.btnVelmaro);
  EXPECT_EQ(State(form), "High 1, row 1 of 6") << "the row stands at that option already";
  EXPECT_EQ(popUp(5, nullptr) + popUp(3, nullptr), "IdleNormal");
  for (const auto& process : desktop.processes) EXPECT_EQ(process.classSet, 0U) << process.name;
  EXPECT_EQ(popUp(2, &form.mnuOptions[3]), "Real Time");
  EXPECT_EQ(BaseOf("C:\\Emu\\real.exe"), 4);
  EXPECT_EQ(popUp(0, &form.mnuOptions[4]), "Normal");
  EXPECT_EQ(Ended(), Texts{"Normal.exe"});
  RightPress(form.List1, MouseButton::Middle);
  EXPECT_EQ(desktop.popups.size(), 6U);
}

TEST_F(Commands, InTheViewOfWindowsEachPlacesTheSelectedOne) {
  const auto game = desktop.AddWindow("Game");
  const auto hidden = desktop.AddWindow("Tray helper", false);
  desktop.AddWindow("");
  auto& form = Start();
  Choose(form.mnuOptions[1]);
  EXPECT_TRUE(form.mnuOptionsMain.Visible() && !form.mnuWOptionsMain.Visible());
  Press(form.Option1[6]);
  EXPECT_TRUE(!form.mnuOptionsMain.Visible() && form.mnuWOptionsMain.Visible());
  desktop.choices = {&form.mnuListHiddenWindows, &form.mnuListHiddenWindows};
  for (const int rows : {4, 3}) {
    RightPress(form.List1);
    EXPECT_EQ(form.List1.ListCount(), rows);
    EXPECT_EQ(desktop.popups.back().menu, &form.mnuWOptionsMain);
  }
  TypeKey(form, Key::F4);
  EXPECT_TRUE(desktop.placings.empty()) << "no row is selected";
  const std::vector<std::tuple<std::size_t, int, std::int32_t, std::uint32_t>> commands = {
      {0, Key::F6, -1, 3}, {4, Key::F4, -2, 131}, {1, Key::F8, -2, 3}, {3, Key::F2, -2, 67}};
  for (const auto& [index, key, insertAfter, flags] : commands) {
    for (const bool byKey : {false, true}) {
      desktop.placings.clear();
      Select(form.List1, 1);
      byKey ? TypeKey(form, key) : Choose(form.mnuWOption[index]);
      EXPECT_EQ(desktop.placings, std::vector{(Placing{game, insertAfter, 0, 0, 0, 0, flags})}) << key;
      EXPECT_EQ(form.List1.ListIndex(), 1) << "the row stays selected";
    }
  }
  Select(form.List1, 0);
  Choose(form.mnuWOption[0]);
  EXPECT_EQ(desktop.placings.back().window, form.hWnd()) << "the first row too";
  DoubleClick(form.List1, RowWith(form.List1, "Tray helper"));
  EXPECT_TRUE(desktop.WindowOf(hidden).visible);
  TypeKey(form, 'T', ShiftKey::Ctrl);
  EXPECT_THROW(Choose(form.mnuOptions[2]), std::logic_error);
  EXPECT_EQ(State(form), "High 1, row 2 of 3") << "the other menu is out of reach";
  desktop.placings.clear();
  Press(form.btnRefresh);
  DoubleClick(form.List1, -1);
  EXPECT_TRUE(desktop.placings.empty() && form.mnuOptions[1].Checked());
  // The large button seeks the title as it does a row, and takes its first letter for the end of a tag.
  desktop.AddProcess("same");
  Select(form.List1, 1);
  Press(form.btnVelmaro);
  ExpectLastBox("same process has been set to HIGH.", Tells);
  EXPECT_EQ(State(form), "High 1, row -1 of 3");
  RightPress(form.btnVelmaro);
  EXPECT_EQ(desktop.popups.back().menu, &form.mnuOptionsMain);
}

TEST_F(Commands, APopupOpensOnTheFrontFormAtThePointerOrAtAPlace) {
  auto& form = Start();
  form.mnuOptions[0].Click = [&] { EXPECT_EQ(&FrontForm(), &form); };
  const auto expect = [&](float x, float y, Menu* entry, std::optional<Bounds> place) {
    desktop.GoToAnotherProgram();
    desktop.choices = {&form.mnuOptions[0]};
    ShowPopupAtCursor(form, form.mnuOptionsMain, entry, x, y);
    EXPECT_TRUE(desktop.popups.back().place == place && desktop.popups.back().defaultEntry == entry) << x;
  };
  for (const float x : {0.F, 100.F}) expect(x, -x, nullptr, {});
  expect(-5, 10, nullptr, Bounds{-5, 10});
  expect(9, 9, &form.mnuOptions[1], {});
}

}  // namespace
