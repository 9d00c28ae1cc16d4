#include <gtest/gtest.h>

#include <cmath>

#include "Drive.h"

namespace drive {
namespace {

class LayoutTest : public testing::Test {
 protected:
  LayoutTest() : velmaro(folder) {
    const auto screen = ::GetDC(nullptr);
    dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    main = velmaro.Main();
  }
  double Twips(long pixels) const { return pixels * 1440.0 / dpi; }
  // A control's place in twips of the client area.
  RECT Place(const std::wstring& caption) const {
    RECT place{};
    ::GetWindowRect(caption == L"List1"        ? velmaro.List()
                    : caption == L"lblCredits" ? Child(main, L"STATIC")
                                               : Child(main, L"BUTTON", caption),
                    &place);
    ::MapWindowPoints(nullptr, main, reinterpret_cast<POINT*>(&place), 2);
    return place;
  }
  void ExpectPlace(const std::wstring& caption, double left, double top, double width, double height) const {
    const auto place = Place(caption);
    const double pixel = Twips(1);
    EXPECT_NEAR(Twips(place.left), left, pixel) << caption;
    EXPECT_NEAR(Twips(place.top), top, pixel) << caption;
    EXPECT_NEAR(Twips(place.right - place.left), width, pixel) << caption;
    EXPECT_NEAR(Twips(place.bottom - place.top), height, pixel) << caption;
  }
  SIZE Outer() const {
    RECT outer{};
    ::GetWindowRect(main, &outer);
    return {outer.right - outer.left, outer.bottom - outer.top};
  }
  void Resize(int width, int height) const {
    ::SetWindowPos(main, nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  int Limit(int twips) const { return static_cast<int>(std::ceil(twips * dpi / 1440.0)); }
  void ExpectLayout() const {
    RECT client{};
    ::GetClientRect(main, &client);
    const double inner = Twips(client.right);
    const double listHeight = Twips(Outer().cy) - 840 - 1200;
    ExpectPlace(L"List1", 30, 450, Twips(Outer().cx) - 180, listHeight);
    ExpectPlace(L"lblCredits", 45, listHeight + 600, 2145, 195);
    ExpectPlace(L"&Refresh", inner - 810 - 60, 30, 810, 360);
    double left = inner - 1260;
    ExpectPlace(L"Free Resources", left, listHeight + 480, 1260, 840);
    ExpectPlace(L"Free &Mem", left -= 1050, listHeight + 480, 1050, 840);
    ExpectPlace(L"&Launch...", left -= 1050 + 60, listHeight + 480, 1050, 840);
    ExpectPlace(L"Velmaro!", left - 1095, listHeight + 480, 1095, 840);
    ExpectPlace(L"&All", 45, 30, 780, 360);
    ExpectPlace(L"&Hidden", 4485, 30, 795, 360);
  }

  Folder folder;
  Velmaro velmaro;
  HWND main = nullptr;
  int dpi = 0;
};

TEST_F(LayoutTest, ControlsFollowTheWindowAndItsLimits) {
  RECT client{};
  ::GetClientRect(main, &client);
  EXPECT_NEAR(Twips(client.right), 7170, Twips(1));
  EXPECT_NEAR(Twips(client.bottom), 4110, Twips(1));
  ExpectLayout();
  for (const SIZE size : {SIZE{777, 555}, SIZE{901, 700}, SIZE{Limit(6500), Limit(3000)}, SIZE{1000, Limit(3000)}}) {
    SCOPED_TRACE(testing::Message() << size.cx << " x " << size.cy);
    Resize(size.cx, size.cy);
    EXPECT_EQ(Outer().cx, std::max<long>(size.cx, Limit(6500)));
    EXPECT_EQ(Outer().cy, std::max<long>(size.cy, Limit(3000)));
    ExpectLayout();
  }
  // Smaller than it may be: it springs back, the side that is large enough stays, and the layout runs.
  Resize(200, 900);
  EXPECT_EQ(Outer().cx, Limit(6500));
  EXPECT_EQ(Outer().cy, 900);
  ExpectLayout();
  Resize(900, 100);
  EXPECT_EQ(Outer().cx, 900);
  EXPECT_EQ(Outer().cy, Limit(3000));
  ExpectLayout();
  ::ShowWindow(main, SW_MINIMIZE);
  ::ShowWindow(main, SW_RESTORE);
  EXPECT_TRUE(Until([&] { return Outer().cx == 900; }));
  ExpectLayout();
}

}  // namespace
}  // namespace drive
