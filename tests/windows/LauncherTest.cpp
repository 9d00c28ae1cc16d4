#include <gtest/gtest.h>

#include "Drive.h"

namespace drive {
namespace {

class LauncherTest : public testing::Test {
 protected:
  LauncherTest() { velmaro = std::make_unique<Velmaro>(folder, L"/q"); }
  HWND Open() const {
    velmaro->Choose(L"Run...");
    return velmaro->Window(L"Velmaro Launcher");
  }
  static void Enter(HWND dialog, const std::wstring& command) {
    ::SendMessageW(Child(dialog, L"COMBOBOX"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(command.c_str()));
  }
  void Launch(const std::wstring& command, const std::wstring& priority) const {
    const auto dialog = Open();
    Press(Child(dialog, L"BUTTON", priority));
    Enter(dialog, command);
    Press(Child(dialog, L"BUTTON", L"OK"));
    EXPECT_TRUE(Until([&] { return !::IsWindow(dialog); }));
  }

  Settings settings;
  Folder folder;
  std::unique_ptr<Velmaro> velmaro;
};

TEST_F(LauncherTest, HistoryKeepsTheTenLatestAndTheLastCommand) {
  const auto command = [&](int i) { return folder.Path(L"nothing") + std::to_wstring(i); };
  for (int i = 1; i <= 11; ++i) Launch(command(i), L"&Normal");
  auto again = command(5);
  again.replace(again.find(L"nothing"), 7, L"NOTHING");
  Launch(again, L"&Idle");
  EXPECT_EQ(settings.Read(L"LastRun"), again);
  for (int i = 1; i <= 10; ++i) EXPECT_EQ(settings.Read(L"LastRun" + std::to_wstring(i)), command(12 - i));
  EXPECT_EQ(settings.Read(L"LastRun11"), L"(none)");
  EXPECT_EQ(settings.Read(L"LastPriority"), L"3");
  const auto combo = Child(Open(), L"COMBOBOX");
  EXPECT_EQ(Text(combo), again);
  EXPECT_EQ(::SendMessageW(combo, CB_GETCOUNT, 0, 0), 10);
}

TEST_F(LauncherTest, PriorityIsKeptOnEveryWayOutAndOddSettingsDoNoHarm) {
  const auto set = [](HWND dialog, const wchar_t* caption) {
    return ::SendMessageW(Child(dialog, L"BUTTON", caption), BM_GETCHECK, 0, 0) == BST_CHECKED;
  };
  auto dialog = Open();
  EXPECT_TRUE(set(dialog, L"&Real Time"));
  EXPECT_FALSE(::IsWindowEnabled(velmaro->Main()));
  Press(Child(dialog, L"BUTTON", L"&High"));
  Press(Child(dialog, L"BUTTON", L"Cancel"));
  EXPECT_TRUE(Until([&] { return settings.Read(L"LastPriority") == L"1"; }));
  EXPECT_EQ(settings.Count(), 1U);
  settings.Write(L"LastPriority", L"seven");
  settings.Write(L"LastRun", std::wstring(500000, L'x'));
  settings.Write(L"LastRun2", L"behind a gap");
  dialog = Open();
  EXPECT_TRUE(set(dialog, L"&Normal"));
  EXPECT_EQ(Text(Child(dialog, L"COMBOBOX")).size(), 500000U);
  EXPECT_EQ(::SendMessageW(Child(dialog, L"COMBOBOX"), CB_GETCOUNT, 0, 0), 0);
  Front(dialog);
  Keys({VK_ESCAPE});
  EXPECT_TRUE(Until([&] { return settings.Read(L"LastPriority") == L"2"; }));
}

TEST_F(LauncherTest, PriorityReachesTheProgramThatTheCommandNames) {
  std::filesystem::create_directory(folder.Path(L"My Tools"));
  const auto plain = folder.Path(L"Plain.exe");
  const auto spaced = folder.Path(L"My Tools\\Spaced App.EXE");
  const auto word = folder.Path(L"My Tools\\Word");
  struct Case {
    std::wstring program;
    std::wstring command;
    DWORD priorityClass;
  };
  const std::vector<Case> cases{
      {plain, plain, HIGH_PRIORITY_CLASS},
      {plain, folder.Path(L"Plain"), HIGH_PRIORITY_CLASS},
      {plain, plain + L" -x", HIGH_PRIORITY_CLASS},
      {plain, folder.Path(L"Plain") + L" -x", HIGH_PRIORITY_CLASS},
      {spaced, spaced, HIGH_PRIORITY_CLASS},
      {spaced, L'"' + spaced + L"\" -x", HIGH_PRIORITY_CLASS},
      {word + L".exe", L'"' + word + L"\" -x", HIGH_PRIORITY_CLASS},
      // Without a word behind the quotes the name ends at the blank: that is no program that runs.
      {word + L".exe", L'"' + word + L'"', NORMAL_PRIORITY_CLASS},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(testing::Message() << one.command);
    const auto relative = one.program.substr(folder.Path(L"").size());
    folder.Probe(relative);
    Launch(one.command, L"&High");
    const auto report = ReportOf(one.program);
    EXPECT_TRUE(Until([&] { return ClassOf(report.id) == one.priorityClass; }));
    EXPECT_EQ(report.folder, L"C:\\");
    EXPECT_EQ(report.show, SW_SHOWNORMAL);
    EXPECT_EQ(velmaro->Checks(), L"Auto Refresh|High");
    End(report.id);
    std::filesystem::remove(one.program);
    std::filesystem::remove(one.program + L".txt");
  }
}

TEST_F(LauncherTest, StoreSurvivesAnEndAtAnyMoment) {
  for (int i = 1; i <= 10; ++i) settings.Write(L"LastRun" + std::to_wstring(i), L"old" + std::to_wstring(i));
  settings.Write(L"LastRun", L"old1");
  for (int round = 0; round < 6; ++round) {
    std::vector<std::wstring> before;
    for (int i = 1; i <= 10; ++i) before.push_back(settings.Read(L"LastRun" + std::to_wstring(i)));
    const auto fresh = folder.Path(L"nothing") + std::to_wstring(round);
    const auto dialog = Open();
    Enter(dialog, fresh);
    Press(Child(dialog, L"BUTTON", L"OK"));
    // Sooner or later in the writes, from one round to the next.
    Until([&] { return settings.Read(L"LastRun1") == fresh; });
    for (const auto end = ::GetTickCount64() + static_cast<ULONGLONG>(round) * 2; ::GetTickCount64() < end;) {
    }
    End(velmaro->Id());
    for (std::size_t i = 0; i < 10; ++i) {
      const auto now = settings.Read(L"LastRun" + std::to_wstring(i + 1));
      EXPECT_TRUE(now == before[i] || now == (i == 0 ? fresh : before[i - 1])) << i << ": " << now;
    }
    velmaro = std::make_unique<Velmaro>(folder, L"/q");
  }
}

}  // namespace
}  // namespace drive
