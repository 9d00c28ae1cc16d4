#include "Velmaro.h"

namespace {

// The row that a running process must have, from the class that the system itself tells.
std::wstring RowOf(const Process& process) {
  static const std::map<DWORD, std::wstring> tags{
      {IDLE_PRIORITY_CLASS, L"[Idle]"},     {BELOW_NORMAL_PRIORITY_CLASS, L"[6]"},
      {NORMAL_PRIORITY_CLASS, L"[Normal]"}, {ABOVE_NORMAL_PRIORITY_CLASS, L"[10]"},
      {HIGH_PRIORITY_CLASS, L"[HIGH]"},     {REALTIME_PRIORITY_CLASS, L"[REAL]"}};
  auto name = process.name;
  ::CharLowerW(name.data());
  const auto tag = tags.find(ClassOf(process.id));
  return (tag == tags.end() ? L"[?]" : tag->second) + L'\t' + name;
}

std::vector<std::wstring> RowsOfSystem(const std::wstring& tag = {}) {
  std::vector<std::wstring> rows;
  for (const auto& process : Processes())
    if (const auto row = RowOf(process); row.starts_with(tag)) rows.push_back(row);
  return rows;
}

class ProcessTest : public testing::Test {
 protected:
  void ExpectSet(DWORD priorityClass, const std::wstring& option) const {
    auto status = option;
    ::CharUpperW(status.data());
    const auto box = velmaro.Await();
    ASSERT_TRUE(box.window);
    EXPECT_EQ(box.title, L"Velmaro");
    EXPECT_EQ(box.text, L"viktor.exe process has been set to " + status + L'.');
    box.Answer(IDOK);
    EXPECT_EQ(ClassOf(victim.Id()), priorityClass);
    const auto row = RowOf({victim.Id(), L"Viktor.exe"});
    // The box is gone a moment before the list behind it is filled anew.
    EXPECT_TRUE(Until([&] { return velmaro.Row(L"\tviktor.exe") == row && velmaro.Selected() == -1; }));
    EXPECT_EQ(velmaro.Checks(), L"Auto Refresh|" + option);
  }

  Folder folder;
  Program victim = StartProbe(folder.Probe(L"Viktor.exe"));
  Velmaro velmaro{folder};
};

TEST_F(ProcessTest, RowsAreTheProcessesThatRun) {
  const auto unusual = StartProbe(folder.Probe(L"\u017b\u00f3\u0142w \u6e38\u620f.v2.EXE"));
  const std::map<std::wstring, DWORD> classes{{L"Hi&gh", HIGH_PRIORITY_CLASS},
                                              {L"Real &Time", REALTIME_PRIORITY_CLASS},
                                              {L"&Idle", IDLE_PRIORITY_CLASS},
                                              {L"&Normal", NORMAL_PRIORITY_CLASS}};
  for (const auto& [caption, priorityClass] : classes) {
    SetClass(unusual.Id(), priorityClass);
    const auto own = RowOf({unusual.Id(), L"\u017b\u00f3\u0142w \u6e38\u620f.v2.EXE"});
    velmaro.Press(caption);
    EXPECT_TRUE(Until([&] { return velmaro.Rows() == RowsOfSystem(own.substr(0, own.find(L'\t'))); }));
    EXPECT_EQ(velmaro.Row(L"\t\u017c\u00f3\u0142w \u6e38\u620f.v2.exe"), own);
  }
  velmaro.Press(L"&All");
  EXPECT_TRUE(Until([&] { return velmaro.Rows() == RowsOfSystem(); }));
}

TEST_F(ProcessTest, EveryRoadSetsTheClass) {
  const auto choose = [this](const std::wstring& entry) { return [=, this] { velmaro.Choose(entry); }; };
  const std::vector<std::tuple<std::function<void()>, DWORD, std::wstring>> roads{
      {choose(L"Real Time"), REALTIME_PRIORITY_CLASS, L"Real Time"},
      {choose(L"Idle"), IDLE_PRIORITY_CLASS, L"Idle"},
      {choose(L"Normal"), NORMAL_PRIORITY_CLASS, L"Normal"},
      {[&] { Keys({'H'}, VK_CONTROL); }, HIGH_PRIORITY_CLASS, L"High"},
      {[&] { Click(Child(velmaro.Main(), L"BUTTON", L"Velmaro!")); }, HIGH_PRIORITY_CLASS, L"High"},
      {[&] { ClickRow(velmaro.List(), velmaro.Selected(), MOUSEEVENTF_LEFTDOWN, 2); }, REALTIME_PRIORITY_CLASS,
       L"Real Time"}};
  for (const auto& [act, priorityClass, option] : roads) {
    SetClass(victim.Id(), option == L"Idle" ? NORMAL_PRIORITY_CLASS : IDLE_PRIORITY_CLASS);
    velmaro.Refresh();
    Front(velmaro.Main());
    ASSERT_TRUE(velmaro.Select(L"\tviktor.exe"));
    act();
    ExpectSet(priorityClass, option);
  }
}

TEST_F(ProcessTest, PopupOpensAtTheClassOfTheRowAndSetsAnother) {
  SetClass(victim.Id(), HIGH_PRIORITY_CLASS);
  velmaro.Refresh();
  ASSERT_TRUE(velmaro.Select(L"\tviktor.exe"));
  Front(velmaro.Main());
  ClickRow(velmaro.List(), 0, MOUSEEVENTF_RIGHTDOWN);
  const auto popup = velmaro.Popup();
  ASSERT_TRUE(popup);
  EXPECT_TRUE(velmaro.Menu(popup).at(1).checked);
  // The button that opened it does not choose.
  Click(popup, MOUSEEVENTF_RIGHTDOWN, 1, POINT{40, 30});
  // Off the popup: under the pointer, another entry would be marked.
  Click(velmaro.Main(), 0, 0, POINT{-30, -30});
  const auto marked = [&] {
    const auto shown = velmaro.Menu(popup);
    return std::ranges::find_if(shown, &Entry::marked) - shown.begin();
  };
  for (auto at = marked(); at != 3; at = marked()) {
    Keys({VK_DOWN});
    ASSERT_TRUE(Until([&] { return marked() != at; }));
  }
  Keys({VK_RETURN});
  ExpectSet(IDLE_PRIORITY_CLASS, L"Idle");
}

TEST_F(ProcessTest, ListIsRefreshedInTheBackground) {
  Front(velmaro.Main());
  const auto window = StartProbe(folder.Probe(L"Front.exe"), L"--title Front");
  EXPECT_EQ(velmaro.Row(L"\tfront.exe"), L"");
  Front(window.Window(L"Front"));
  EXPECT_TRUE(Until([&] { return !velmaro.Row(L"\tfront.exe").empty(); })) << "the timer does not refresh";
}

}  // namespace
