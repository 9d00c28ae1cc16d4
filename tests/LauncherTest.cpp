#include "Fixture.h"
#include "launcher/formLauncher.h"

namespace velmaro {
namespace {

using namespace simulated;

class Launcher : public OnDesktop {
 protected:
  std::string& Stored(const std::string& key) { return desktop.settings["Velmaro\\Settings\\" + key]; }
  bool IsStored(const std::string& key) { return desktop.settings.contains("Velmaro\\Settings\\" + key); }

  // Opens the dialog and acts in it, each action at a wait of its own.
  template <class... Actions>
  void Run(formVelmaro& main, Actions... actions) {
    (desktop.Then([this, actions] { actions(application.Default<formLauncher>()); }), ...);
    Press(main.btnLaunch);
  }
  void Launch(formVelmaro& main, const std::string& command) {
    Run(main, [&](formLauncher& form) {
      TypeText(form.cmbRun, command);
      TypeKey(form, Key::Return);
    });
  }
  static int Option(const formLauncher& form) {
    const auto at = std::ranges::find_if(form.optPriority, &OptionButton::Value);
    return static_cast<int>(at - form.optPriority.begin());
  }
};

TEST_F(Launcher, OpensWithWhatTheStoreHolds) {
  auto& main = Start();
  Run(main, [&](formLauncher& form) {
    EXPECT_EQ(Option(form), 0) << "a first start offers Real Time";
    EXPECT_EQ(form.cmbRun.Text(), "");
    EXPECT_EQ(form.cmbRun.ListCount(), 0);
    EXPECT_THROW(Press(main.btnRefresh), std::logic_error) << "the main window takes no input";
    Press(form.btnCancel);
  });
  for (int i = 1; i <= 12; ++i) Stored("LastRun" + std::to_string(i)) = "entry " + std::to_string(i);
  Stored("LastRun") = "last";
  const auto opened = [&](auto look) {
    Run(main, [&](formLauncher& form) {
      look(form);
      CloseBox(form);
    });
  };
  opened([](formLauncher& form) {
    EXPECT_EQ(form.cmbRun.Text(), "last");
    EXPECT_EQ(form.cmbRun.ListCount(), 10);
    EXPECT_EQ(form.cmbRun.List(9), "entry 10");
  });
  Stored("LastRun4").clear();
  opened([](formLauncher& form) {
    EXPECT_EQ(form.cmbRun.ListCount(), 3);
    EXPECT_EQ(form.cmbRun.List(2), "entry 3");
  });
  const std::vector<std::pair<std::string, int>> stored = {{"0", 0},    {"1", 1},  {"2", 2},          {"3", 3},
                                                           {"7", 2},    {"4", 2},  {"", 2},           {"-1", 2},
                                                           {"word", 2}, {"1x", 2}, {"99999999999", 2}};
  for (const auto& [text, option] : stored) {
    Stored("LastPriority") = text;
    opened([&, option = option](formLauncher& form) { EXPECT_EQ(Option(form), option) << form.cmbRun.Text(); });
    EXPECT_EQ(Stored("LastPriority"), std::to_string(option)) << "what is wrong in the store is put right";
  }
}

TEST_F(Launcher, ThePriorityIsStoredOnEveryWayOut) {
  auto& main = Start();
  const std::vector<std::function<void(formLauncher&)>> ways = {
      [](formLauncher& form) { Press(form.btnOK); }, [](formLauncher& form) { Press(form.btnCancel); },
      [](formLauncher& form) { TypeKey(form, Key::Escape); }, [](formLauncher& form) { CloseBox(form); }};
  for (std::size_t i = 0; i < ways.size(); ++i) {
    Run(main, [&](formLauncher& form) {
      Press(form.optPriority[3 - i]);
      ways[i](form);
    });
    EXPECT_EQ(Stored("LastPriority"), std::to_string(3 - i));
  }
  EXPECT_FALSE(IsStored("LastRun") || IsStored("LastRun1")) << "an empty or cancelled command is not filed";
  EXPECT_TRUE(desktop.starts.empty());
  EXPECT_EQ(Checked(main), Texts{"Real Time"});
  EXPECT_EQ(application.Forms().size(), 1U);
}

TEST_F(Launcher, BrowsePutsThePathIntoTheField) {
  auto& main = Start();
  desktop.picks = {"C:\\My Games\\a b.exe", std::nullopt, std::string(254, 'x'), std::string(255, 'y')};
  Run(main, [&](formLauncher& form) {
    for (int i = 0; i < 2; ++i) {
      Press(form.btnBrowse);
      EXPECT_EQ(form.cmbRun.Text(), "C:\\My Games\\a b.exe");
    }
    for (int i = 0; i < 2; ++i) Press(form.btnBrowse);
    EXPECT_EQ(form.cmbRun.Text(), std::string(254, 'x')) << "a path that does not fit is none";
    EXPECT_EQ(desktop.openDialogs[0].hwndOwner, form.hWnd());
    Press(form.btnCancel);
  });
  const auto& dialog = desktop.openDialogs[0];
  using namespace std::string_literals;
  EXPECT_EQ(dialog.lpstrFilter, "Applications\0*.exe\0All files (*.*)\0*.*\0"s);
  EXPECT_EQ(dialog.lpstrTitle, "Browse");
  EXPECT_EQ(dialog.lpstrInitialDir, "");
  EXPECT_EQ(dialog.lpstrFile, std::string(254, ' '));
  EXPECT_EQ(dialog.lpstrFileTitle, std::string(254, ' '));
  EXPECT_EQ(std::tuple(dialog.lStructSize, dialog.nMaxFile, dialog.nMaxFileTitle, dialog.nFilterIndex, dialog.Flags),
            std::tuple(76U, 255U, 255U, 0U, 4100U));
}

TEST_F(Launcher, NewCommandsComeFirstAndOldOnesStayInPlace) {
  auto& main = Start();
  for (const auto* command : {"one", "two", "TWO", "three -x", "one"}) Launch(main, command);
  EXPECT_EQ(Stored("LastRun"), "one");
  EXPECT_EQ(Stored("LastRun1") + '|' + Stored("LastRun2") + '|' + Stored("LastRun3"), "three -x|two|one");
  EXPECT_FALSE(IsStored("LastRun4"));
  Run(main, [](formLauncher& form) {
    EXPECT_EQ(form.cmbRun.Text(), "one");
    PickEntry(form.cmbRun, 1);
    Press(form.btnOK);
  });
  EXPECT_EQ(Stored("LastRun"), "two");
  for (int i = 1; i <= 8; ++i) Launch(main, "new " + std::to_string(i));
  EXPECT_EQ(Stored("LastRun1"), "new 8");
  EXPECT_EQ(Stored("LastRun8"), "new 1");
  EXPECT_EQ(Stored("LastRun9") + '|' + Stored("LastRun10"), "three -x|two");
  EXPECT_FALSE(IsStored("LastRun11"));
  // A part of an entry is another command; one with a failing start is filed too.
  desktop.onStart = [](const auto&) { return 3; };
  Launch(main, "new");
  EXPECT_EQ(Stored("LastRun1") + '|' + Stored("LastRun10"), "new|three -x");
}

TEST_F(Launcher, TheOptionChoosesMarkAndClass) {
  struct Case {
    std::size_t option;
    std::string mark;
    std::uint32_t priorityClass;
  };
  auto& main = Start();
  desktop.AddProcess("game.exe");
  auto& game = desktop.ProcessNamed("game.exe");
  for (const auto& [option, mark, priorityClass] :
       std::vector<Case>{{0, "Real Time", 256}, {1, "High", 128}, {2, "Normal", 0}, {3, "Idle", 64}}) {
    game.classSet = 0;
    Choose(main.mnuOptions[4]);
    desktop.starts.clear();
    Run(main, [&](formLauncher& form) {
      TypeText(form.cmbRun, "game.exe");
      Press(form.optPriority[option]);
      Press(form.btnOK);
    });
    EXPECT_EQ(game.classSet, priorityClass);
    EXPECT_EQ(Checked(main), Texts{mark});
    EXPECT_EQ(main.PriorityChoice, 4) << "only the mark moves";
    ASSERT_EQ(desktop.starts.size(), 1U);
    EXPECT_EQ(desktop.starts[0].file + '|' + desktop.starts[0].folder + '|' + desktop.starts[0].verb, "game.exe|C:\\|");
    EXPECT_EQ(desktop.starts[0].show, 1);
  }
  EXPECT_TRUE(desktop.boxes.empty());
  // The mark is what the button applies, the number is what it compares the row with.
  game.basePriority = 8;
  Press(main.btnRefresh);
  Select(main.List1, 0);
  Press(main.btnVelmaro);
  EXPECT_EQ(game.classSet, 64U);
}

TEST_F(Launcher, ProcessNameIsCutFromTheCommand) {
  const Texts running = {"notepad.exe", "my app.exe",     "app.exe",  "my.exe",  "readme.txt.exe",
                         "program.exe", "tnkxfs.dat.exe", "tool.exe", "old.exe", "lead"};
  const Texts cases = {"notepad => notepad.exe",
                       "notepad c:\\a.txt => notepad.exe",
                       R"(C:\Tools\My App.EXE => my app.exe)",
                       R"(C:\Tools\App.exe -x => my app.exe)",
                       R"("C:\My Tools\App.exe" -x => my app.exe)",
                       R"("C:\My Tools\Tool" -x => tool.exe)",
                       R"("C:\My Tools\Tool" => my.exe)",
                       R"("notepad.exe" -x => notepad.exe)",
                       "readme.txt => readme.txt.exe",
                       R"(C:\Program Files\tool => program.exe)",
                       "C:/Program/tool => tool.exe",
                       "tnkxfs.dat => tnkxfs.dat.exe",
                       R"(C:\old.exe.d\tool.exe => old.exe)",
                       "C:\\Tools\\ => notepad.exe",
                       " lead => lead",
                       "vgs.exe => ",
                       "-vgs.exe => "};
  auto& main = Start();
  for (const auto& text : cases) {
    const auto [command, name] = Sides(text);
    desktop.processes.clear();
    for (const auto& process : running) desktop.AddProcess(process);
    Launch(main, command);
    for (const auto& process : desktop.processes)
      EXPECT_EQ(process.classSet, process.name == name ? 256U : 0U) << command << " and " << process.name;
  }
  EXPECT_TRUE(desktop.activations.empty()) << "no command takes another road";
}

}  // namespace
}  // namespace velmaro
