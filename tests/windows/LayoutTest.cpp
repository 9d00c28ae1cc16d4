#include <cmath>

#include "Drive.h"

namespace {

class LayoutTest : public testing::Test {
 protected:
  double Twips(long pixels) const { return pixels * 1440.0 / dpi; }
  // Looks at a control's place, in twips of the client area.
  void ExpectPlace(HWND control, double left, double top, double width, double height) const {
    RECT place{};
    ::GetWindowRect(control, &place);
    ::MapWindowPoints(nullptr, main, reinterpret_cast<POINT*>(&place), 2);
    const double pixel = Twips(1);
    EXPECT_NEAR(Twips(place.left), left, pixel) << Text(control);
    EXPECT_NEAR(Twips(place.top), top, pixel) << Text(control);
    EXPECT_NEAR(Twips(place.right - place.left), width, pixel) << Text(control);
    EXPECT_NEAR(Twips(place.bottom - place.top), height, pixel) << Text(control);
  }
  SIZE Outer() const {
    RECT outer{};
    ::GetWindowRect(main, &outer);
    return {outer.right - outer.left, outer.bottom - outer.top};
  }
  int Limit(int twips) const { return static_cast<int>(std::ceil(twips * dpi / 1440.0)); }
  void ExpectLayout() const {
    RECT client{};
    ::GetClientRect(main, &client);
    const double inner = Twips(client.right);
    const double listHeight = Twips(Outer().cy) - 840 - 1200;
    ExpectPlace(velmaro.List(), 30, 450, Twips(Outer().cx) - 180, listHeight);
    ExpectPlace(Child(main, L"BUTTON", L"Velmaro!"), inner - 4515, listHeight + 480, 1095, 840);
  }

  Folder folder;
  Velmaro velmaro{folder};
  HWND main = velmaro.Main();
  UINT dpi = ::GetDpiForSystem();
};

TEST_F(LayoutTest, ControlsFollowTheWindowAndItsLimits) {
  RECT client{};
  ::GetClientRect(main, &client);
  EXPECT_NEAR(Twips(client.right), 7170, Twips(1));
  EXPECT_NEAR(Twips(client.bottom), 4110, Twips(1));
  ExpectLayout();
  // Smaller than it may be, it springs back, and the side that is large enough stays.
  for (const SIZE size :
       {SIZE{777, 555}, SIZE{Limit(6500), Limit(3000)}, SIZE{1000, Limit(3000)}, SIZE{200, 900}, SIZE{900, 100}}) {
    SCOPED_TRACE(testing::Message() << size.cx << " x " << size.cy);
    ::SetWindowPos(main, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(Outer().cx, std::max<long>(size.cx, Limit(6500)));
    EXPECT_EQ(Outer().cy, std::max<long>(size.cy, Limit(3000)));
    ExpectLayout();
  }
  ::ShowWindow(main, SW_MINIMIZE);
  ::ShowWindow(main, SW_RESTORE);
  EXPECT_TRUE(Until([&] { return Outer().cx == 900; }));
  ExpectLayout();
}

}  // namespace
