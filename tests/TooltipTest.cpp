#include "Fixture.h"
#include "desktop/Tooltip.h"

namespace {

class Tip : public OnDesktop {};

TEST_F(Tip, TakesSomeOfItsSidesAtOnceAndTheOthersWhenItIsMadeAnew) {
  auto& form = Start();
  velmaro::Tooltip tip;
  // What the one tip window has been told: style and flags, text, title and icon, colours.
  const auto shown = [&] {
    std::string all;
    for (const auto& [window, told] : desktop.tooltips) {
      const auto color = [](const auto& value) { return value ? ", " + std::to_string(*value) : ""; };
      EXPECT_TRUE(told.topmost && told.owner == form.btnLaunch.hWnd() && told.tool.value().hwnd == told.owner);
      all += std::to_string(told.style) + ' ' + std::to_string(told.tool->uFlags) + ' ' + told.tool->lpszText + " | " +
             told.title + ' ' + std::to_string(told.icon) + color(told.backColor) + color(told.textColor);
    }
    return all;
  };
  tip.SetTipText("a");
  EXPECT_TRUE(!tip.Create() && shown().empty()) << "it belongs to no control";
  tip.SetParentControl(&form.btnLaunch);
  // What is told, and how the tip stands then and once it is made anew.
  const std::vector<std::tuple<std::function<void()>, std::string, std::string>> steps = {
      {[] {}, "", "3 16 a |  0"},
      {[&] { tip.SetTipText("b"), tip.SetTitle("t"), tip.SetStyle(2), tip.SetCentered(true); }, "3 16 b |  0",
       "3 18 b | t 0"},
      {[&] { tip.SetIcon(2), tip.SetBackColor(5), tip.SetForeColor(6); }, "3 18 b | t 2, 5, 6", "3 18 b | t 2, 5, 6"},
      {[&] { tip.SetTitle("u"), tip.SetStyle(1), tip.SetCentered(false); }, "3 18 b | u 2, 5, 6",
       "67 16 b | u 2, 5, 6"},
      {[&] { tip.SetTitle(""), tip.SetIcon(3), tip.SetBackColor(0); }, "67 16 b | u 2, 0, 6", "67 16 b |  3, 6"},
      {[&] { tip.SetParentControl(nullptr), tip.SetForeColor(0); }, "67 16 b |  3, 0", ""}};
  for (const auto& [tell, now, anew] : steps) {
    tell();
    EXPECT_EQ(shown(), now);
    EXPECT_FALSE(tip.Create());
    EXPECT_EQ(shown(), anew);
  }
}

}  // namespace
