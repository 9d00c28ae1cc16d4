#include "Velmaro.h"

namespace {

constexpr auto Title = L"Okno \u017b\u00f3\u0142w \u7a93";

class WindowTest : public testing::Test {
 protected:
  WindowTest() : probe(StartProbe(folder.Probe(L"Window.exe"), std::wstring(L"--title ") + Title)), velmaro(folder) {
    target = probe.Window(Title);
    Front(velmaro.Main());
  }
  void ShowWindows() const {
    velmaro.Press(L"&Hidden");
    ASSERT_TRUE(Until([&] { return velmaro.Select(Title); }));
  }
  bool TopMost() const { return ::GetWindowLongW(target, GWL_EXSTYLE) & WS_EX_TOPMOST; }

  Folder folder;
  Program probe;
  Velmaro velmaro;
  HWND target = nullptr;
};

TEST_F(WindowTest, CommandsChangeTheRealWindow) {
  ShowWindows();
  const auto shows = [&] { return ::IsWindowVisible(target) != FALSE; };
  velmaro.Choose(L"Top Most");
  EXPECT_TRUE(Until([&] { return TopMost() && shows(); }));
  velmaro.Choose(L"Hide Window");
  EXPECT_TRUE(Until([&] { return !TopMost() && !shows(); }));
  velmaro.Refresh();
  EXPECT_TRUE(velmaro.Select(Title)) << "a hidden window with a title is listed";
  velmaro.Choose(L"Show Window");
  EXPECT_TRUE(Until(shows));
  // A row that another program put in works like any other.
  Front(velmaro.Main());
  velmaro.Refresh();
  ::SendMessageW(velmaro.List(), LB_RESETCONTENT, 0, 0);
  ::SendMessageW(velmaro.List(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"row"));
  ::SendMessageW(velmaro.List(), LB_SETITEMDATA, 0, reinterpret_cast<LPARAM>(target));
  ::SendMessageW(velmaro.List(), LB_SELECTSTRING, 0, reinterpret_cast<LPARAM>(L"row"));
  velmaro.Choose(L"Top Most");
  EXPECT_TRUE(Until([&] { return TopMost(); }));
  ::SetWindowTextW(target, L"");
  velmaro.Choose(L"List Hidden Windows");
  const auto row = L" - Hidden Window - " + std::to_wstring(reinterpret_cast<std::uintptr_t>(target));
  EXPECT_TRUE(Until([&] { return velmaro.Select(row); }));
  End(probe.Id());
  velmaro.Choose(L"Hide Window");
  velmaro.Refresh();
  EXPECT_EQ(velmaro.Row(row), L"");
}

TEST_F(WindowTest, WindowThatHangsHoldsNothingUp) {
  ShowWindows();
  probe.Hang();
  for (const auto* command : {L"Top Most", L"Normal Position", L"Show Window"}) velmaro.Choose(command);
  DWORD_PTR answer = 0;
  EXPECT_TRUE(::SendMessageTimeoutW(velmaro.Main(), WM_NULL, 0, 0, SMTO_NORMAL, 3000, &answer));
  EXPECT_EQ(Velmaro(folder, L"/q /x \"" + std::wstring(Title) + L"\" nothing").ExitCode(), 0);
  EXPECT_TRUE(::IsWindowVisible(target));
  probe.GoOn();
  EXPECT_TRUE(Gone(target));
}

TEST_F(WindowTest, FormsGiveWayToTheirOwnerAndAboutStandsAboveAllUntilThen) {
  Keys({'M'}, VK_MENU);
  const auto meter = velmaro.Form();
  ASSERT_TRUE(meter);
  EXPECT_TRUE(Until([&] { return ::GetForegroundWindow() == meter; }, 5000));
  for (const bool about : {false, true}) {
    Front(velmaro.Main());
    Keys({about ? VK_F1 : VK_F3});
    HWND form = nullptr;
    ASSERT_TRUE(Until([&] { return ::GetWindow(form = velmaro.Form(), GW_OWNER) == velmaro.Main(); }))
        << "not the meter";
    EXPECT_FALSE(::IsWindowEnabled(velmaro.Main()));
    Front(target);
    for (auto below = form; about && below; below = ::GetWindow(below, GW_HWNDPREV)) EXPECT_NE(below, target);
    Front(form);
    Keys({VK_ESCAPE});
    EXPECT_TRUE(Gone(form));
    EXPECT_TRUE(Until([&] { return ::IsWindowEnabled(velmaro.Main()) && ::GetForegroundWindow() == velmaro.Main(); }));
  }
}

TEST_F(WindowTest, OptionsMenusTakeTurnsWithTheirShortcuts) {
  const auto keys = [&] {
    std::wstring texts;
    for (const auto& entry : velmaro.Menu())
      if (const auto tab = entry.text.find(L'\t'); tab != std::wstring::npos)
        texts += entry.text.substr(tab + 1) + L' ';
    return texts;
  };
  EXPECT_EQ(keys(), L"Ctrl+R Ctrl+K F5 Ctrl+F F3 Ctrl+N Ctrl+H Ctrl+T Ctrl+I Del F1 ");
  ShowWindows();
  EXPECT_EQ(keys(), L"Ctrl+R Ctrl+K F5 Ctrl+F F3 F6 F8 F2 F4 F1 ");
  Front(velmaro.Main());
  Keys({'H'}, VK_CONTROL);
  EXPECT_TRUE(Until([&] {
    Keys({VK_F6});
    return TopMost();
  }));
  velmaro.Press(L"&All");
  ASSERT_TRUE(Until([&] { return velmaro.Select(L"\twindow.exe"); }));
  EXPECT_EQ(velmaro.Checks(), L"Auto Refresh|Real Time") << "the shortcut was out of reach";
}

}  // namespace
