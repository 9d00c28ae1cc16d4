#include <algorithm>

#include "Children.h"
#include "Rows.h"
#include "platform/linux/desktop/FirstWindow.h"
#include "platform/linux/x11/TopLevels.h"
#include "platform/linux/x11/WindowState.h"
#include "platform/machine.h"
#include "platform/user32.h"

namespace {

using namespace platform;
using onlinux::XServer;
using Stage = onlinux::FirstWindow::Stage;

class LinuxWindows : public InFolder {
 protected:
  void SetUp() override {
    if (!UseDisplay()) GTEST_SKIP() << "there is no Xvfb";
    x.emplace();
  }

  xcb_window_t NewWindow(const std::string& title, const std::string& kind = "UTF8_STRING", bool shown = true) {
    const auto window = ::xcb_generate_id(x->Line());
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
    ::xcb_create_window(x->Line(), XCB_COPY_FROM_PARENT, window, x->Root(), 0, 0, 80, 60, 0,
                        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const auto name = kind == "UTF8_STRING" ? x->Atom("_NET_WM_NAME") : xcb_atom_t{XCB_ATOM_WM_NAME};
    ::xcb_change_property(x->Line(), XCB_PROP_MODE_REPLACE, window, name, x->Atom(kind), 8,
                          static_cast<std::uint32_t>(title.size()), title.data());
    if (shown) ::xcb_map_window(x->Line(), window);
    EXPECT_TRUE(x->Did(::xcb_no_operation_checked(x->Line())));
    windows.push_back(window);
    return window;
  }
  void Write(xcb_window_t window, const std::string& name, std::uint32_t number) {
    EXPECT_TRUE(x->Did(::xcb_change_property_checked(x->Line(), XCB_PROP_MODE_REPLACE, window, x->Atom(name),
                                                     XCB_ATOM_CARDINAL, 32, 1, &number)));
  }
  // No manager is to look after the window.
  static void SetForItself(xcb_window_t window) {
    const std::uint32_t on = 1;
    EXPECT_TRUE(x->Did(::xcb_change_window_attributes_checked(x->Line(), window, XCB_CW_OVERRIDE_REDIRECT, &on)));
  }
  void TearDown() override {
    for (const auto window : windows) x->Did(::xcb_destroy_window_checked(x->Line(), window));
  }
  static bool IsShown(xcb_window_t window) {
    const onlinux::Reply<xcb_get_window_attributes_reply_t> facts(
        ::xcb_get_window_attributes_reply(x->Line(), ::xcb_get_window_attributes(x->Line(), window), nullptr));
    return facts && facts->map_state == XCB_MAP_STATE_VIEWABLE;
  }
  bool IsAbove(xcb_window_t window) {
    const auto states = x->ReadNumbers(window, "_NET_WM_STATE");
    return std::ranges::count(states, x->Atom("_NET_WM_STATE_ABOVE")) == 1;
  }
  static bool Set(xcb_window_t window, std::int32_t after, std::uint32_t flags) {
    return SetWindowPos(window, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | flags);
  }
  // Hides, shows and pins a window, and looks at what the server then says.
  void HideShowAndPin(xcb_window_t window) {
    EXPECT_TRUE(Eventually([&] { return IsShown(window); }));
    EXPECT_TRUE(Set(window, HWND_NOTOPMOST, SWP_HIDEWINDOW) && Eventually([&] { return !IsShown(window); }));
    EXPECT_EQ(std::ranges::count(Rows(), "pinned"), 1) << "a hidden window stays in the list";
    EXPECT_TRUE(Set(window, HWND_NOTOPMOST, SWP_SHOWWINDOW) && Eventually([&] { return IsShown(window); }));
    EXPECT_TRUE(Set(window, HWND_TOPMOST, 0) &&
                Eventually([&] { return IsAbove(window) && Rows().front() == "pinned"; }));
    EXPECT_TRUE(Set(window, HWND_NOTOPMOST, 0) && Eventually([&] { return !IsAbove(window); }));
  }

  // Runs something while a window manager looks after the windows; false where there is none.
  template <class Work>
  bool WithManager(Work work) {
    if (!fs::exists("/usr/bin/openbox")) return false;
    Child manager(std::vector<std::string>{"/usr/bin/openbox"});
    EXPECT_TRUE(Eventually([&] { return x->HasManager(); }));
    work();
    manager.End();
    // The server hears of it later, and asks the dead one about new windows until then.
    EXPECT_TRUE(Eventually([&] { return !onlinux::HasAnyManager(*x); }));
    return true;
  }
  // Lets the program start a line of the shell that shows a window, and looks at what becomes of that window.
  void StartAndShow(const std::string& how, const std::string& line, onlinux::ShowState state) {
    SCOPED_TRACE(how + ' ' + line);
    ::setenv("VELMARO_START", "of one before", 1);
    const Child child({VELMARO_PROGRAM, "/q", "/h", how, "/bin/sh", "-c", "exec >/dev/null 2>&1; " + line});
    ::unsetenv("VELMARO_START");
    xcb_window_t window = XCB_NONE;
    EXPECT_TRUE(Eventually([&] {
      window = FindWindowA("Event Tester");
      const bool managed = std::ranges::count(x->ReadNumbers(x->Root(), "_NET_CLIENT_LIST"), window) == 1;
      return window != XCB_NONE && IsInState(*x, window, state) &&
             IsShown(window) == (state == onlinux::ShowState::Maximized) &&
             managed == (x->HasManager() && state != onlinux::ShowState::Hidden);
    }));
    ::xcb_kill_client(x->Line(), window);
    EXPECT_TRUE(x->Did(::xcb_no_operation_checked(x->Line())));
  }

  std::vector<xcb_window_t> windows;
  static inline std::optional<XServer> x;
};

TEST_F(LinuxWindows, AllTitlesAreListedFromFrontToBack) {
  using namespace std::string_literals;
  NewWindow("back");
  NewWindow("M\xfcnchen\0 more"s, "STRING");
  const auto mixed = NewWindow("\x1b$(BF|K\\\x1b(B \x1b-B\xb3\0 more"s, "COMPOUND_TEXT");
  Write(NewWindow("日本\0 more"s, "UTF8_STRING", false), "WM_STATE", 0);
  const auto front = NewWindow("back TO front");
  SetForItself(NewWindow("never shown", "UTF8_STRING", false));
  EXPECT_EQ(Rows(), (Texts{"back TO front", "日本", "日本 ł", "München", "back"}));
  EXPECT_EQ(FindWindowA("BACK to front"), front);
  EXPECT_EQ(FindWindowA("日本 Ł"), mixed);
  EXPECT_EQ(FindWindowA("back to"), 0U);
  const auto findInChild = [] { return ::close_range(3, ~0U, 0) == 0 && FindWindowA("back") != 0 ? 0 : 1; };
  EXPECT_EQ(InChild(findInChild), 0) << "a process that goes on by itself has a line of its own";
  std::array<char, 5> room{};
  EXPECT_EQ(GetWindowTextA(front, room.data(), 5), 4);
  EXPECT_STREQ(room.data(), "back");
  EXPECT_FALSE(AppActivate("ack"));
  EXPECT_TRUE(AppActivate("back")) << "a whole title goes before the beginning of one";
  EXPECT_TRUE(AppActivate("bac")) << "of two that begin like this, the one in front";
  EXPECT_EQ(Rows().front(), "back");
  EXPECT_TRUE(AppActivate("日本")) << "only a window that shows is activated";
  EXPECT_EQ(Rows().front(), "日本 ł");
  EXPECT_TRUE(SendKeys("~"));
  const onlinux::Reply<xcb_query_keymap_reply_t> down(
      ::xcb_query_keymap_reply(x->Line(), ::xcb_query_keymap(x->Line()), nullptr));
  EXPECT_EQ(std::ranges::count(down->keys, 0), 32) << "no key stays down";
  EXPECT_TRUE(Eventually([&] {
    const onlinux::Reply<xcb_generic_event_t> event(::xcb_poll_for_event(x->Line()));
    return event && (event->response_type & 0x7F) == XCB_KEY_PRESS;
  }));
}

TEST_F(LinuxWindows, TitlesInOldTextAreReadAsFastAsOthers) {
  if (UnderSanitizer) GTEST_SKIP() << "a sanitizer takes its own time";
  const auto timed = [&](const std::string& title, const std::string& kind) {
    for (int i = 0; i < 1000; ++i) NewWindow(title, kind);
    auto best = std::chrono::steady_clock::duration::max();
    for (int tries = 0; tries < 5; ++tries) {  // a busy machine may come between
      const auto start = std::chrono::steady_clock::now();
      EXPECT_EQ(std::ranges::count(Rows(), "ł"), 1000 * (kind == "UTF8_STRING" ? 1 : 2));
      best = std::min(best, std::chrono::steady_clock::now() - start);
    }
    return best;
  };
  const auto others = timed("ł", "UTF8_STRING");
  EXPECT_LT(timed("\x1b-B\xb3", "COMPOUND_TEXT"), others * 4) << "of the windows there are twice as many then";
}

TEST_F(LinuxWindows, HiddenShownAndPinnedIsWhatTheServerSaysAndAManagerIsAskedFor) {
  const auto window = NewWindow("pinned");
  const auto another = NewWindow("another");
  HideShowAndPin(window);
  if (!WithManager([&] {
        EXPECT_TRUE(Eventually([&] { return onlinux::IsManaged(*x, window); }));
        HideShowAndPin(window);
        onlinux::RequestState(*x, another, onlinux::ShowState::Minimized);
        EXPECT_TRUE(Eventually([&] { return IsInState(*x, another, onlinux::ShowState::Minimized); }));
        EXPECT_TRUE(AppActivate("another"));
        EXPECT_TRUE(Eventually([&] { return IsShown(another); })) << "it comes back";
        onlinux::RequestState(*x, another, onlinux::ShowState::Minimized);
        EXPECT_TRUE(Eventually([&] { return !IsShown(another); }));
        EXPECT_TRUE(Set(another, HWND_NOTOPMOST, SWP_HIDEWINDOW));
        EXPECT_TRUE(Eventually([&] { return !onlinux::IsManaged(*x, another); })) << "its manager lets go of it";
      }))
    GTEST_SKIP() << "there is no window manager";
  HideShowAndPin(window);  // the dead one's mark is still there
}

TEST_F(LinuxWindows, AQuietStartHidesTheWindowOfATitleAndOneThatIsGoneBreaksNothing) {
  const auto longer = NewWindow("Sound Server 2");
  const auto meant = NewWindow("Sound Server");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(InChild([]() -> int { Execute({VELMARO_PROGRAM, "/q", "/i", "/x", "sound server", "/bin/true"}); }), 0);
  EXPECT_TRUE(Eventually([&] { return !IsShown(meant); }));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(750)) << "it takes its time to show";
  EXPECT_TRUE(IsShown(longer));
  EXPECT_TRUE(x->Did(::xcb_destroy_window_checked(x->Line(), longer)));
  EXPECT_FALSE(Set(longer, HWND_TOPMOST, SWP_SHOWWINDOW) || ShowWindow(longer, SW_HIDE) || SetForegroundWindow(longer));
  EXPECT_EQ(GetWindowTextLengthA(longer), 0) << "a window that is gone breaks nothing";
}

TEST_F(LinuxWindows, TheFirstWindowOfAStartGetsItsStateWhateverStandsBetween) {
  using onlinux::ShowState;
  if (!fs::exists("/usr/bin/xev")) GTEST_SKIP() << "there is no program that shows a window";
  const Child owner("/usr/bin/sleep");
  const onlinux::Descent named{static_cast<std::uint32_t>(owner.Id()), ""};
  const auto all = [&] {
    const auto stranger = NewWindow("a stranger's");
    StartAndShow("/max", "exec xev", ShowState::Maximized);
    StartAndShow("/min", "xev -name first & sleep 0.3; kill $!; xev; true", ShowState::Minimized);
    StartAndShow("/hide", "xev & exit", ShowState::Hidden);
    StartAndShow("/min", "(env --unset=VELMARO_START xev; true) & wait", ShowState::Minimized);
    Write(NewWindow("unseen", "UTF8_STRING", false), "_NET_WM_PID", named.process);
    std::vector<xcb_window_t> ours = {stranger};
    for (const std::string kind : {"BARE", "SPLASH", "TOOLTIP", "NOTIFICATION", "MENU", "POPUP_MENU", "DROPDOWN_MENU",
                                   "COMBO", "DND", "DOCK", "DESKTOP", "NORMAL", "DIALOG"}) {
      ours.push_back(NewWindow(kind, "UTF8_STRING", false));
      if (kind == "BARE") SetForItself(ours.back());
      if (kind != "BARE") Write(ours.back(), "_NET_WM_WINDOW_TYPE", x->Atom("_NET_WM_WINDOW_TYPE_" + kind));
      Write(ours.back(), "_NET_WM_PID", named.process);
      EXPECT_TRUE(x->Did(::xcb_map_window_checked(x->Line(), ours.back())));
    }
    EXPECT_TRUE(Eventually([&] { return std::ranges::all_of(ours, IsShown); }));
    for (const auto* last : {"-+", "--"}) {
      EXPECT_EQ(onlinux::ShowFirstWindow(named, ShowState::Hidden, std::chrono::seconds(5)), Stage::Reached);
      std::string shown;
      for (const auto window : ours) shown += IsShown(window) ? '+' : '-';
      EXPECT_EQ(shown, "++++++++++++" + std::string(last)) << "no window but the first that is one";
    }
    EXPECT_EQ(onlinux::ShowFirstWindow(named, ShowState::Hidden, std::chrono::milliseconds(50)), Stage::None);
  };
  all();
  EXPECT_TRUE(WithManager(all));
}

}  // namespace
