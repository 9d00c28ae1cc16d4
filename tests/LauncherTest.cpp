#include "Fixture.h"
#include "launcher/formLauncher.h"

namespace {

class Launcher : public OnDesktop {
 protected:
  std::string& Stored(const std::string& key) { return desktop.settings["Velmaro\\Settings\\" + key]; }

  // Opens the dialog and acts in it; the actions must end in its close.
  void Run(const std::function<void(formLauncher&)>& act) {
    desktop.Then([&] { act(application.Default<formLauncher>()); });
    Press(main.btnLaunch);
    EXPECT_EQ(application.Forms().size(), 1U) << "the dialog did not go";
  }
  void Launch(const std::string& command) {
    Run([&](formLauncher& form) {
      TypeText(form.cmbRun, command);
      TypeKey(form, Key::Return);
    });
  }

  formVelmaro& main = Start();
};

TEST_F(Launcher, OpensWithWhatTheStoreHolds) {
  // The text, how many entries, the last of them, and the option that is set.
  const auto opened = [&] {
    std::string text;
    Run([&](formLauncher& form) {
      const auto count = form.cmbRun.ListCount();
      const auto option = std::ranges::find_if(form.optPriority, &OptionButton::Value) - form.optPriority.begin();
      text = form.cmbRun.Text() + ' ' + std::to_string(count) + ' ' + (count > 0 ? form.cmbRun.List(count - 1) : "") +
             ' ' + std::to_string(option);
      EXPECT_THROW(Press(main.btnRefresh), std::logic_error) << "the main window takes no input";
      CloseBox(form);
    });
    return text;
  };
  EXPECT_EQ(opened(), " 0  0") << "a first start offers Real Time";
  for (int i = 1; i <= 12; ++i) Stored("LastRun" + std::to_string(i)) = "entry" + std::to_string(i);
  Stored("LastRun") = "last";
  EXPECT_EQ(opened(), "last 10 entry10 0");
  Stored("LastRun4").clear();
  EXPECT_EQ(opened(), "last 3 entry3 0");
  for (const auto* text : {"0", "1", "2", "3", "7", "4", "", "-1", "word", "1x", "99999999999"}) {
    Stored("LastPriority") = text;
    const std::string option = text < std::string("4") && *text >= '0' && text[1] == 0 ? text : "2";
    EXPECT_EQ(opened(), "last 3 entry3 " + option) << text;
    EXPECT_EQ(Stored("LastPriority"), option) << "what is wrong in the store is put right";
  }
}

TEST_F(Launcher, BrowsePutsThePathIntoTheField) {
  const std::string longest(254, 'x');
  const std::string spaced = "C:\\My Games\\a b.exe";
  desktop.picks = {spaced, spaced, std::nullopt, longest, longest + 'x'};
  Run([&](formLauncher& form) {
    Texts texts;
    while (!desktop.picks.empty()) {
      Press(form.btnBrowse);
      texts.push_back(form.cmbRun.Text());
      if (texts.size() == 1) TypeText(form.cmbRun, "typed");
    }
    EXPECT_EQ(texts, (Texts{spaced, spaced, spaced, longest, longest}));
    EXPECT_EQ(desktop.openDialogs[0].hwndOwner, form.hWnd());
    Press(form.btnCancel);
  });
  const auto& dialog = desktop.openDialogs[0];
  EXPECT_EQ(dialog.lpstrFilter, "Applications\0*.exe\0All files (*.*)\0*.*\0"s);
  EXPECT_EQ(dialog.lpstrTitle + dialog.lpstrInitialDir + std::to_string(dialog.Flags), "Browse4100");
}

TEST_F(Launcher, NewCommandsComeFirstAndOldOnesStayInPlace) {
  const auto history = [&] {
    Texts commands;
    for (int i = 1; i <= 12; ++i)
      if (const auto& command = Stored("LastRun" + std::to_string(i)); !command.empty()) commands.push_back(command);
    return commands;
  };
  for (const auto* command : {"one", "two", "TWO", "three -x", "one", ""}) Launch(command);
  EXPECT_EQ(history(), (Texts{"three -x", "two", "one"}));
  EXPECT_EQ(desktop.starts.size(), 5U) << "nothing typed starts nothing";
  EXPECT_EQ(Stored("LastRun"), "one");
  Run([](formLauncher& form) {
    PickEntry(form.cmbRun, 1);
    Press(form.btnOK);
  });
  EXPECT_EQ(Stored("LastRun"), "two");
  // A part of an entry is another command; one with a failing start is filed too.
  desktop.onStart = [&](const auto& start) {
    EXPECT_FALSE(Shows(application.Default<formLauncher>())) << "the dialog has gone";
    EXPECT_EQ(Stored("LastRun") + start.folder + std::to_string(start.show), start.file + "C:\\1");
    return 3;
  };
  for (const auto* command : {"4", "5", "6", "7", "8", "9", "t", "three"}) Launch(command);
  EXPECT_EQ(history(), (Texts{"three", "t", "9", "8", "7", "6", "5", "4", "three -x", "two"}));
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Launcher, TheOptionChoosesMarkAndClass) {
  auto& game = desktop.ProcessById(desktop.AddProcess("game.dat.exe"));
  const std::vector<std::tuple<std::string, std::uint32_t, std::string>> options = {{"Real Time", 256, "game.dat"},
                                                                                    {"High", 128, "C:/Emu/game.dat"},
                                                                                    {"Normal", 0, "game.dat"},
                                                                                    {"Idle", 64, "game.dat.exe"}};
  for (std::size_t i = 0; i < 4; ++i) {
    const auto& [mark, priorityClass, typed] = options[i];
    game.classSet = 0;
    Choose(main.mnuOptions[4]);
    desktop.AddProcess("another.exe");
    Run([&](formLauncher& form) {
      TypeText(form.cmbRun, typed);
      Press(form.optPriority[i]);
      Press(form.btnOK);
    });
    EXPECT_EQ(game.classSet, priorityClass);
    EXPECT_EQ(State(main), mark + " 4, row -1 of " + std::to_string(i + 1)) << "only the mark moves";
  }
  EXPECT_TRUE(desktop.boxes.empty());
  // The mark is what the button applies, the number is what it compares the row with.
  game.basePriority = 8;
  Press(main.btnRefresh);
  Select(main.List1, 0);
  Press(main.btnVelmaro);
  EXPECT_EQ(game.classSet, 64U);
}

}  // namespace
