#include "Fixture.h"
#include "desktop/modTrayIcon.h"

namespace velmaro {
namespace {

using namespace simulated;

class Commands : public OnDesktop {
 protected:
  Commands() {
    desktop.AddProcess("Normal.exe", 8);
    desktop.AddProcess("high.exe", 13);
    desktop.AddProcess("C:\\Emu\\real.exe", 24);
    desktop.AddProcess("ten.exe", 10);
    desktop.AddProcess("nine.exe", 9);
    desktop.AddProcess("idle.exe", 4);
  }
  int BaseOf(const std::string& name) { return desktop.ProcessNamed(name).basePriority; }
};

TEST_F(Commands, AnOptionIsAppliedToTheSelectedRowByEveryRoad) {
  auto& form = Start();
  EXPECT_EQ(Checked(form), Texts{"Real Time"});
  struct Step {
    int row;
    std::function<void()> act;
    std::string name;
    int base;
    std::size_t option;
  };
  const std::vector<Step> steps = {{0, [&] { Press(form.btnVelmaro); }, "Normal.exe", 24, 2},
                                   {2, [&] { Choose(form.mnuOptions[3]); }, "C:\\Emu\\real.exe", 4, 3},
                                   {3, [&] { TypeKey(form, 'H', ShiftKey::Ctrl); }, "ten.exe", 13, 1},
                                   {5, [&] { DoubleClick(form.List1, 5); }, "idle.exe", 24, 2},
                                   {5, [&] { TypeKey(form, 'N', ShiftKey::Ctrl); }, "idle.exe", 8, 0}};
  for (const auto& [row, act, name, base, option] : steps) {
    Select(form.List1, row);
    act();
    EXPECT_EQ(BaseOf(name), base);
    EXPECT_EQ(Checked(form), Texts{form.mnuOptions[option].Caption()});
    EXPECT_EQ(form.PriorityChoice, static_cast<int>(option));
    EXPECT_EQ(form.List1.ListIndex(), -1) << "the list was not rebuilt";
  }
  EXPECT_EQ(BoxTexts()[1], "c:\\emu\\real.exe process has been set to IDLE.");
  EXPECT_EQ(form.List1.List(0), "[REAL]\tnormal.exe");
  desktop.Answer(6);
  Select(form.List1, 4);
  TypeKey(form, Key::Delete);
  EXPECT_EQ(Ended(), Texts{"nine.exe"});
  EXPECT_EQ(Checked(form), Texts{"Terminate Process"});
  // It stays checked, so the button asks for the next row, and a No refreshes all the same.
  Select(form.List1, 0);
  Press(form.btnVelmaro);
  ExpectLastBox("Do you want to terminate the process 'normal.exe'?", AsksWithNo);
  EXPECT_EQ(form.List1.ListIndex(), -1);
}

TEST_F(Commands, ARowThatStandsAtTheOptionIsLeftAlone) {
  auto& form = Start();
  const std::vector<std::pair<int, int>> equal = {{0, 0}, {1, 1}, {2, 2}, {3, 0}, {4, 0}, {5, 3}};
  const auto taken = desktop.snapshotsTaken;
  for (const auto& [row, option] : equal) {
    Select(form.List1, row);
    Choose(form.mnuOptions[static_cast<std::size_t>(option)]);
    Press(form.btnVelmaro);
    EXPECT_EQ(form.List1.ListIndex(), row);
  }
  EXPECT_EQ(desktop.snapshotsTaken, taken);
  EXPECT_TRUE(desktop.boxes.empty());
  for (const auto& process : desktop.processes) EXPECT_EQ(process.classSet, 0U) << process.name;
}

TEST_F(Commands, WithoutASelectionAnOptionOnlyMovesTheMark) {
  auto& form = Start();
  desktop.AddProcess("new.exe");
  for (const std::size_t option : {0, 1, 3, 4, 2}) {
    Choose(form.mnuOptions[option]);
    EXPECT_EQ(Checked(form), Texts{form.mnuOptions[option].Caption()});
    EXPECT_EQ(form.PriorityChoice, static_cast<int>(option));
  }
  EXPECT_EQ(form.List1.ListCount(), 7);
  Choose(form.mnuOptions[4]);
  DoubleClick(form.List1, -1);
  EXPECT_EQ(Checked(form), Texts{"Real Time"});
  for (const auto& process : desktop.processes) EXPECT_TRUE(process.alive && process.classSet == 0) << process.name;
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Commands, TheListShowsWhatTheProcessReallyGot) {
  desktop.AddProcess("e.exe");
  desktop.AddProcess("a]\tb.exe");
  auto& form = Start("/q");
  desktop.realTimeAllowed = false;
  desktop.ProcessNamed("ten.exe").denied = true;
  DoubleClick(form.List1, 0);
  EXPECT_EQ(form.List1.List(0), "[HIGH]\tnormal.exe");
  DoubleClick(form.List1, 3);
  EXPECT_EQ(form.List1.List(3), "[10]\tten.exe");
  // A process that ended since the last refresh is not found and its row goes.
  desktop.ProcessNamed("high.exe").alive = false;
  DoubleClick(form.List1, 1);
  EXPECT_EQ(form.List1.ListCount(), 7);
  // The name is handed on and not the row: the first of that end is acted on.
  Select(form.List1, RowWith(form.List1, "\te.exe"));
  Choose(form.mnuOptions[1]);
  EXPECT_EQ(BaseOf("nine.exe") * 100 + BaseOf("e.exe"), 1308);
  DoubleClick(form.List1, RowWith(form.List1, "a]\tb.exe"));
  EXPECT_EQ(BaseOf("a]\tb.exe"), 13);
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Commands, TheDefaultButtonListensToTheMouseAlone) {
  auto& form = Start();
  Select(form.List1, 0);
  TypeKey(form, Key::Return);
  TypeKey(form, Key::Space);
  EXPECT_EQ(BaseOf("Normal.exe"), 8);
  for (const int button : {MouseButton::Right, MouseButton::Middle}) {
    desktop.choices.push_back(nullptr);
    RightPress(form.btnVelmaro, button);
    EXPECT_EQ(desktop.popups.back().menu, &form.mnuOptionsMain);
    const Bounds corner{form.btnVelmaro.Left(), form.btnVelmaro.Top() + form.btnVelmaro.Height()};
    EXPECT_EQ(desktop.popups.back().place, corner);
    EXPECT_EQ(desktop.popups.back().defaultEntry, nullptr);
  }
  desktop.choices.push_back(&form.mnuOptions[1]);
  RightPress(form.btnVelmaro);
  EXPECT_EQ(BaseOf("Normal.exe"), 13);
}

TEST_F(Commands, TheRightButtonMarksTheClassOfTheRowAndOpensThePopup) {
  auto& form = Start("/q");
  const auto popUp = [&](int row, Menu* choice) {
    if (row >= 0) Select(form.List1, row);
    desktop.choices.push_back(choice);
    RightPress(form.List1);
    const auto& popup = desktop.popups.back();
    EXPECT_EQ(popup.menu, &form.mnuOptionsMain);
    EXPECT_FALSE(popup.place.has_value());
    EXPECT_EQ(desktop.broughtToFront.back(), form.hWnd());
    return popup.checked.size() == 1 ? popup.checked[0]->Caption() : "not one mark";
  };
  EXPECT_EQ(popUp(-1, nullptr), "Real Time") << "without a row the old option stays";
  EXPECT_EQ(popUp(1, nullptr), "High");
  EXPECT_EQ(form.PriorityChoice, 1);
  EXPECT_EQ(form.List1.ListIndex(), 1);
  Press(form.btnVelmaro);
  EXPECT_EQ(form.List1.ListIndex(), 1) << "the row stands at that option already";
  EXPECT_EQ(popUp(5, nullptr), "Idle");
  EXPECT_EQ(popUp(3, nullptr), "Normal");
  for (const auto& process : desktop.processes) EXPECT_EQ(process.classSet, 0U) << process.name;
  EXPECT_EQ(popUp(2, &form.mnuOptions[3]), "Real Time");
  EXPECT_EQ(BaseOf("C:\\Emu\\real.exe"), 4);
  EXPECT_EQ(popUp(0, &form.mnuOptions[4]), "Normal");
  EXPECT_EQ(Ended(), Texts{"Normal.exe"});
  const auto popups = desktop.popups.size();
  RightPress(form.List1, MouseButton::Middle);
  EXPECT_EQ(desktop.popups.size(), popups);
}

TEST_F(Commands, PopupStandsWhereItsArgumentsSay) {
  auto& form = Start();
  auto* entry = &form.mnuFileExit;
  const std::vector<std::tuple<float, float, Menu*, bool>> cases = {
      {0, 0, nullptr, false}, {100, -100, nullptr, false}, {-5, 10, nullptr, true},
      {5, 0, nullptr, true},  {-9, 3, nullptr, false},     {100, 100, entry, false},
  };
  for (const auto& [x, y, defaultEntry, placed] : cases) {
    desktop.GoToAnotherProgram();
    ShowPopupAtCursor(form, form.mnuFile, defaultEntry, x, y);
    const auto& popup = desktop.popups.back();
    EXPECT_EQ(popup.place, placed ? std::optional(Bounds{x, y}) : std::nullopt) << x << ", " << y;
    EXPECT_EQ(popup.defaultEntry, defaultEntry);
    EXPECT_EQ(desktop.ActiveForm(), &form);
  }
}

class WindowCommands : public OnDesktop {
 protected:
  WindowCommands() {
    game = desktop.AddWindow("Game");
    hidden = desktop.AddWindow("Tray helper", false);
    nameless = desktop.AddWindow("");
  }
  platform::WindowHandle game, hidden, nameless;
};

TEST_F(WindowCommands, WindowsAreListedByTheirTitleAloneWhetherTheyShowOrNot) {
  desktop.AddWindow(std::string(300, 'x') + "\xC3\x89");
  auto& form = Start();
  Press(form.Option1[6]);
  const Texts titled = {"Zeld's Velmaro Process", "Game", "Tray helper", std::string(300, 'x') + "\xC3\x89"};
  EXPECT_EQ(Rows(form.List1), titled);
  EXPECT_EQ(form.List1.ItemData(0), static_cast<std::int32_t>(form.hWnd()));
  EXPECT_EQ(form.List1.ItemData(2), static_cast<std::int32_t>(hidden));
  Choose(form.mnuListHiddenWindows);
  EXPECT_EQ(form.List1.List(3), " - Hidden Window - " + std::to_string(nameless));
  EXPECT_EQ(form.List1.ItemData(3), static_cast<std::int32_t>(nameless));
  Choose(form.mnuListHiddenWindows);
  EXPECT_EQ(Rows(form.List1), titled);
}

TEST_F(WindowCommands, EachCommandPlacesTheSelectedWindow) {
  auto& form = Start();
  Press(form.Option1[6]);
  Choose(form.mnuWOption[0]);
  TypeKey(form, Key::F4);
  EXPECT_TRUE(desktop.placings.empty()) << "no row is selected";
  const int row = RowWith(form.List1, "Game");
  struct Step {
    std::size_t index;
    int key;
    Placing placing;
    bool visible, topmost;
  };
  const std::vector<Step> steps = {
      {0, Key::F6, {game, -1, 0, 0, 0, 0, 3}, true, true},   {4, Key::F4, {game, -2, 0, 0, 0, 0, 131}, false, false},
      {1, Key::F8, {game, -2, 0, 0, 0, 0, 3}, false, false}, {0, Key::F6, {game, -1, 0, 0, 0, 0, 3}, false, true},
      {3, Key::F2, {game, -2, 0, 0, 0, 0, 67}, true, false},
  };
  for (const auto& step : steps) {
    for (const bool byKey : {false, true}) {
      Select(form.List1, row);
      byKey ? TypeKey(form, step.key) : Choose(form.mnuWOption[step.index]);
      EXPECT_EQ(desktop.placings.back(), step.placing);
      EXPECT_EQ(desktop.WindowOf(game).visible, step.visible);
      EXPECT_EQ(desktop.WindowOf(game).topmost, step.topmost);
      EXPECT_EQ(form.List1.ListIndex(), row) << "the row stays selected";
    }
  }
  DoubleClick(form.List1, RowWith(form.List1, "Tray helper"));
  EXPECT_TRUE(desktop.WindowOf(hidden).visible);
  EXPECT_EQ(desktop.placings.size(), 11U);
  // A window that has gone is nobody's fault.
  desktop.windows.clear();
  Choose(form.mnuWOption[4]);
  EXPECT_EQ(form.List1.ListCount(), 3);
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(WindowCommands, ProcessOptionsAreOutOfReachExceptOnTheButton) {
  const auto id = desktop.AddProcess("Game.exe");
  auto& form = Start("/q");
  TypeKey(form, Key::F6);
  Press(form.Option1[6]);
  Select(form.List1, RowWith(form.List1, "Game"));
  for (const int key : {int{'N'}, int{'H'}, int{'T'}, int{'I'}}) TypeKey(form, key, ShiftKey::Ctrl);
  TypeKey(form, Key::Delete);
  EXPECT_EQ(Checked(form), Texts{"Real Time"});
  EXPECT_THROW(Choose(form.mnuOptions[4]), std::logic_error);
  DoubleClick(form.List1, -1);
  desktop.choices.push_back(&form.mnuWOption[0]);
  RightPress(form.List1);
  EXPECT_EQ(desktop.popups.back().menu, &form.mnuWOptionsMain);
  EXPECT_FALSE(desktop.popups.back().place.has_value());
  EXPECT_TRUE(desktop.WindowOf(game).topmost);
  // A window's title from its second character on is taken for a name, which no process ends with.
  desktop.choices.push_back(&form.mnuOptions[4]);
  RightPress(form.btnVelmaro);
  EXPECT_EQ(desktop.popups.back().menu, &form.mnuOptionsMain);
  EXPECT_TRUE(desktop.ProcessById(id).alive);
  EXPECT_EQ(RowWith(form.List1, "Game"), 1) << "the window list is rebuilt";
  // One that is only a character long leaves no name, and one that ends a process's name finds it.
  desktop.windows = {{.handle = 1, .title = "x"}, {.handle = 5, .title = "-ame.exe"}};
  Press(form.btnRefresh);
  Select(form.List1, 1);
  Press(form.btnVelmaro);
  EXPECT_TRUE(desktop.ProcessById(id).alive);
  Select(form.List1, 2);
  Press(form.btnVelmaro);
  EXPECT_FALSE(desktop.ProcessById(id).alive);
  Press(form.Option1[0]);
  EXPECT_EQ(Rows(form.List1), Texts{});
  TypeKey(form, 'H', ShiftKey::Ctrl);
  EXPECT_EQ(Checked(form), Texts{"High"});
}

}  // namespace
}  // namespace velmaro
