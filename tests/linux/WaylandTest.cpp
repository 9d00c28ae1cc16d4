#include <algorithm>

#include "Compositor.h"
#include "Rows.h"
#include "platform/linux/desktop/AllWindows.h"
#include "platform/linux/desktop/CompositorLine.h"
#include "platform/linux/desktop/FirstWindow.h"
#include "platform/linux/desktop/Twins.h"
#include "platform/linux/x11/XServer.h"
#include "platform/machine.h"
#include "platform/reach.h"
#include "platform/user32.h"

namespace {

using namespace platform;
using onlinux::ShowState;
using Stage = onlinux::FirstWindow::Stage;

// A form of the test's own, without a title.
struct OwnForm : onlinux::OwnWindow {
  explicit OwnForm(WindowHandle number) : number(number) {}
  WindowHandle Number() const override { return number; }
  PixelRect Inside() const override { return {}; }
  bool IsForm() const override { return true; }
  const WindowHandle number;
};

class LinuxWayland : public InFolder {
 protected:
  // Looks, in a process without an X server, at what a compositor shows.
  template <class Work>
  void WithWindows(const std::vector<StandInWindow>& windows, Work work) {
    const auto socket = folder / "wayland";
    const auto run = [&]() -> int { return StandInCompositor(socket, windows).Run(), 0; };
    const auto id = Fork();
    if (id == 0) ::prctl(PR_SET_PDEATHSIG, SIGKILL), ::_exit(run());
    Child compositor(id);
    Alone([&] {
      ::unsetenv("DISPLAY");
      ::setenv("WAYLAND_DISPLAY", socket.c_str(), 1);
      ASSERT_TRUE(Eventually([] { return static_cast<bool>(onlinux::LineToCompositor()); }));
      work(compositor);
    });
  }
};

TEST_F(LinuxWayland, AWindowThatTwoServersListIsFoundAgain) {
  // A title, a name of the kind and a process each, or nothing of it; and the place of the twin.
  const std::vector<std::tuple<std::string, std::string, std::uint32_t, std::optional<std::size_t>>> cases = {
      {"43 fps", "emu", 0, 0},           {"Game <2>", "other", 9, 2},          {"Game", "game", 9, 1},
      {"Game", "game", 8, std::nullopt}, {"Notes", "editor", 0, std::nullopt}, {"Notes", "", 0, 4},
      {"44 fps", "emu", 0, std::nullopt}};
  std::vector<onlinux::WindowTraits> windows;
  std::vector<std::optional<std::size_t>> twins;
  for (const auto& [title, name, process, twin] : cases) {
    windows.push_back({title, {name}, process ? std::vector{process} : std::vector<std::uint32_t>()});
    twins.push_back(twin);
  }
  const onlinux::WindowTraits game = {"Game", {"game", "Game"}, {7, 9}};
  EXPECT_EQ(FindTwins(windows, {{"42 fps", {"emu", "Emu"}, {}}, game, game, {}, {"Notes", {"", ""}, {}}}), twins);
}

TEST_F(LinuxWayland, HiddenIsMinimizedAndWhatACompositorDoesNotDoIsTold) {
  const StandInWindow panel{.title = "a panel", .state = 0}, closing{.title = "closing", .closes = true};
  WithWindows({{.title = "back"}, panel, closing, {.title = "front"}}, [](Child&) {
    EXPECT_TRUE((Rows() == Texts{"front", "closing", "back"}) && WhyWindowsAreMissing().empty());
    const auto front = FindWindowA("FRONT"), back = FindWindowA("back"), gone = FindWindowA("closing");
    EXPECT_EQ(Refusal(back, SWP_HIDEWINDOW), "");
    EXPECT_EQ(Rows().back(), "back (minimized)");
    EXPECT_TRUE(AppActivate("back"));
    EXPECT_EQ(Rows().back(), "back") << "it comes back";
    EXPECT_EQ(Refusal(back, SWP_SHOWWINDOW), "") << "it does already";
    EXPECT_NE(Refusal(front, 0, HWND_TOPMOST).find("on top"), std::string::npos);
    EXPECT_EQ(Refusal(gone, SWP_HIDEWINDOW), "") << "it goes meanwhile";
    EXPECT_EQ(Rows(), (Texts{"front", "back"}));
    EXPECT_TRUE(FindWindowA("front") == front && !ShowWindow(gone, SW_HIDE));
  });
}

TEST_F(LinuxWayland, ACompositorThatHangsOrGoesHoldsNothingUp) {
  WithWindows({{.title = "there"}}, [](Child& compositor) {
    const auto window = FindWindowA("there");
    const auto inTime = [](auto work) {
      const auto start = std::chrono::steady_clock::now();
      return work() && std::chrono::steady_clock::now() - start < std::chrono::seconds(2);
    };
    onlinux::EndProcess(compositor.Id(), onlinux::HoldProcess(compositor.Id()), SIGSTOP);
    EXPECT_TRUE(inTime([] { return Rows() == Texts{"there"}; })) << "what it told of before";
    EXPECT_TRUE(inTime([&] { return !Refusal(window, SWP_HIDEWINDOW).empty(); }));
    EXPECT_TRUE(
        inTime([] { return ShowFirstWindow({}, ShowState::Hidden, std::chrono::milliseconds(1)) == Stage::None; }));
    compositor.End();
    EXPECT_TRUE(inTime([&] { return Rows().empty() && !SetForegroundWindow(window); }));
  });
}

TEST_F(LinuxWayland, TheFirstWindowOfAStartGetsItsState) {
  const Child owner("/usr/bin/sleep");
  const auto process = static_cast<std::uint32_t>(owner.Id());
  const auto look = [&](StandInWindow another, StandInWindow own, std::uint32_t started, const std::string& remark) {
    WithWindows({another, own}, [&](Child&) {
      const std::chrono::milliseconds limit(remark.empty() ? 500 : 5000);
      EXPECT_EQ(ShowFirstWindow({started, ""}, ShowState::Hidden, limit),
                remark.empty() ? Stage::None : Stage::Reached);
      EXPECT_EQ(Rows(), (Texts{"own" + remark, "another"}));
    });
  };
  // Where the processes are told, where the next window that comes must be it, and where nothing of the start runs.
  look({"another", 1, false, true}, {"own", process, false, true}, process, " (minimized)");
  look({"another"}, {"own", 0, false, true}, process, " (minimized)");
  look({"another"}, {"own", 0, false, true}, 0, "");
}

TEST_F(LinuxWayland, OnXTheHelpersOfToolkitsAreNoWindows) {
  if (!UseDisplay()) GTEST_SKIP() << "there is no Xvfb";
  onlinux::XServer toolkit, another;
  const auto make = [](onlinux::XServer& line, const std::string& title, std::uint16_t side = 80) {
    const auto window = ::xcb_generate_id(line.Line());
    ::xcb_create_window(line.Line(), 0, window, line.Root(), 0, 0, side, side, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, 0, 0,
                        nullptr);
    ::xcb_change_property(line.Line(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                          static_cast<std::uint32_t>(title.size()), title.data());
    return window;
  };
  const OwnForm form(make(toolkit, "a hidden form"));
  make(another, "hidden by its program");
  make(toolkit, "a helper of the toolkit");
  make(another, "a helper of another's", 10);
  ::xcb_map_window(toolkit.Line(), make(toolkit, "a box"));
  for (auto* line : {&another, &toolkit}) EXPECT_TRUE(line->Did(::xcb_no_operation_checked(line->Line())));
  auto rows = Rows();
  std::ranges::sort(rows);
  EXPECT_EQ(rows, (Texts{"a box", "hidden by its program"}));
  EXPECT_EQ(onlinux::AllWindows().size(), 3U) << "a form stays, shown or not";
}

}  // namespace
