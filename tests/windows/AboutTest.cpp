#include <gtest/gtest.h>

#include "Drive.h"

namespace drive {
namespace {

TEST(AboutTest, StandsAboveAllUntilItIsClosedByButtonOrKey) {
  const Folder folder;
  const auto other = StartProbe(folder.Probe(L"Other.exe"), L"--title Other");
  const Velmaro velmaro(folder);
  for (const bool byKey : {false, true}) {
    velmaro.Choose(L"About");
    const auto about = velmaro.Form();
    ASSERT_TRUE(about);
    EXPECT_TRUE(Child(about, L"STATIC", L"Velmaro 3.0"));
    EXPECT_TRUE(Child(about, L"STATIC", L"Change Process Priority, Free System Resources and Task Killer"));
    EXPECT_TRUE(::GetWindowLongW(about, GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_FALSE(::IsWindowEnabled(velmaro.Main()));
    EXPECT_TRUE(::IsWindowVisible(Child(about, L"BUTTON", L"OK")));
    Front(other.Window(L"Other"));
    for (auto below = about; below; below = ::GetWindow(below, GW_HWNDPREV)) EXPECT_NE(below, other.Window(L"Other"));
    // The splash screen would be gone by now.
    EXPECT_FALSE(Until([&] { return !::IsWindowVisible(about); }, 1500));
    Front(about);
    if (byKey)
      Keys({VK_ESCAPE});
    else
      Press(Child(about, L"BUTTON", L"OK"));
    EXPECT_TRUE(Gone(about));
    EXPECT_TRUE(Until([&] { return ::IsWindowEnabled(velmaro.Main()) != FALSE; }));
  }
}

}  // namespace
}  // namespace drive
