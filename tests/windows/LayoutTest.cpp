
#include "../Forms.h"
#include "Velmaro.h"

namespace {

using Sides = std::array<LONG, 4>;

RECT PlaceOf(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  return place;
}

// Left, top, width and height in the window around it.
Sides SidesOf(HWND window) {
  auto place = PlaceOf(window);
  ::MapWindowPoints(nullptr, ::GetParent(window), reinterpret_cast<POINT*>(&place), 2);
  return {place.left, place.top, place.right - place.left, place.bottom - place.top};
}

DWORD ColorOf(const std::string& name) {
  const std::map<std::string, int> desktop = {{"face", COLOR_BTNFACE},        {"text", COLOR_BTNTEXT},
                                              {"window", COLOR_WINDOW},       {"windowtext", COLOR_WINDOWTEXT},
                                              {"highlight", COLOR_HIGHLIGHT}, {"highlighttext", COLOR_HIGHLIGHTTEXT}};
  const auto at = desktop.find(name);
  if (at == desktop.end()) return std::stoul(name, nullptr, 16);
  const auto color = ::GetSysColor(at->second);
  return RGB(GetBValue(color), GetGValue(color), GetRValue(color));
}

class LayoutTest : public testing::Test {
 protected:
  double Twips(long pixels) const { return pixels * 1440.0 / dpi; }
  int Limit(int twips) const { return static_cast<int>(std::ceil(twips * dpi / 1440.0)); }

  void ExpectControl(HWND control, const forms::Row& row, const std::array<double, 4>& meant) const {
    const auto sides = SidesOf(control);
    const double off = dpi == 96 ? 0.5 : 1.5;
    for (std::size_t side = 0; side < 4; ++side)
      EXPECT_FALSE(std::abs(sides[side] - meant[side]) > off)
          << "side " << side << " is " << sides[side] << ", not " << meant[side];
    const auto style = ::GetWindowLongW(control, GWL_STYLE);
    const bool isLabel = row.kind == "label";
    EXPECT_EQ(isLabel && (style & SS_TYPEMASK) == SS_RIGHT, row.Has("right"));
    EXPECT_EQ(isLabel && (style & SS_TYPEMASK) == SS_CENTER, row.Has("center"));
    EXPECT_EQ(row.kind == "button" && (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON, row.Has("default"));
    EXPECT_EQ(row.kind == "option" && ::SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED, row.Has("set"));
    EXPECT_EQ((::GetWindowLongW(control, GWL_EXSTYLE) & WS_EX_STATICEDGE) != 0, row.Has("sunken"));
    auto inside = PlaceOf(control);
    const auto ink = ColorOf(row.Color("ink", "text"));
    if (row.kind == "line") {
      const RECT across{inside.left + 20, inside.top - 3, inside.left + 21, inside.bottom + 3};
      EXPECT_EQ(Shown(across)[ink], ::MulDiv(2, static_cast<int>(dpi), 96));
    }
    // What looks as the desktop's theme wants it has no colours of its own.
    const bool themed = row.kind == "button" || row.kind == "option" || row.kind == "panel";
    if ((themed && row.Color("ground", "").empty()) || row.kind == "line" || row.kind == "image" ||
        row.kind == "slider")
      return;
    ::InflateRect(&inside, -3, -3);
    const auto pixels = Shown(inside);
    const auto most = std::ranges::max_element(pixels, {}, [](const auto& pixel) { return pixel.second; });
    EXPECT_EQ(most->first, ColorOf(row.Color("ground", "face")));
    EXPECT_TRUE(row.text.empty() || pixels.contains(ink));
  }

  // Looks at all of a form that the table tells of.
  void ExpectLook(HWND form, const std::string& name, bool isNew = true) const {
    SCOPED_TRACE(name);
    const auto rows = forms::Rows(name);
    RECT inside{};
    ::GetClientRect(form, &inside);
    const auto outer = PlaceOf(form);
    auto around = PlaceOf(main);
    if (form == main || rows[0].at[3] == "screen") ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &around, 0);
    EXPECT_FALSE(isNew && std::abs(inside.right - std::stod(rows[0].at[0]) * dpi / 1440) > 0.5);
    EXPECT_FALSE(isNew && std::abs(inside.bottom - std::stod(rows[0].at[1]) * dpi / 1440) > 0.5);
    EXPECT_FALSE(isNew && std::abs(outer.left + outer.right - around.left - around.right) > 2) << outer.left;
    EXPECT_FALSE(isNew && std::abs(outer.top + outer.bottom - around.top - around.bottom) > 2) << outer.top;
    const auto style = ::GetWindowLongW(form, GWL_STYLE), extended = ::GetWindowLongW(form, GWL_EXSTYLE);
    const auto* border = (style & WS_CAPTION) != WS_CAPTION ? "none"
                         : style & WS_THICKFRAME            ? "sizable"
                         : extended & WS_EX_TOOLWINDOW      ? "tool"
                                                            : "fixed";
    EXPECT_EQ(border, rows[0].at[2]);
    EXPECT_EQ((style & WS_MAXIMIZEBOX) != 0, rows[0].Has("maximize"));
    EXPECT_EQ((style & WS_MINIMIZEBOX) != 0, rows[0].Has("minimize"));
    EXPECT_EQ((extended & WS_EX_APPWINDOW) != 0, rows[0].Has("taskbar"));
    EXPECT_EQ(style & WS_CAPTION && !(extended & WS_EX_DLGMODALFRAME), rows[0].Has("icon"));
    auto left = Children(form);
    std::erase_if(
        left, [](HWND window) { return !::IsWindowVisible(window) || ClassOf(::GetParent(window)) == L"ComboBox"; });
    std::vector<HWND> stops;
    const forms::Size size = {{'c', Twips(inside.right)},
                              {'i', Twips(inside.bottom)},
                              {'W', Twips(outer.right - outer.left)},
                              {'H', Twips(outer.bottom - outer.top)}};
    for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
      SCOPED_TRACE(row->kind + ' ' + row->at[0] + ' ' + row->at[1] + ' ' + row->text);
      std::array<double, 4> meant{};
      for (std::size_t side = 0; side < 4; ++side) meant[side] = row->Length(side, size) * dpi / 1440;
      if (row->kind == "combo") meant[3] = std::nan("");  // the system makes it as high as its font
      // The nearest of the windows that bear the text.
      const auto distance = [&](HWND window) {
        const auto sides = SidesOf(window);
        const bool fits = Text(window).starts_with(std::wstring(row->text.begin(), row->text.end()));
        return fits ? std::hypot(sides[0] - meant[0], sides[1] - meant[1]) : 1e9;
      };
      const auto at = std::ranges::min_element(left, {}, distance);
      ASSERT_TRUE(at != left.end());
      ExpectControl(*at, *row, meant);
      if (::GetWindowLongW(*at, GWL_STYLE) & WS_TABSTOP) stops.push_back(*at);
      left.erase(at);
    }
    EXPECT_TRUE(left.empty()) << Text(left[0]) << " stands in no table";
    for (std::size_t i = 0; i < stops.size(); ++i) {
      EXPECT_EQ(::GetNextDlgTabItem(form, stops[i], FALSE), stops[(i + 1) % stops.size()]) << Text(stops[i]);
      // A screen reader takes the text, or for a field the label in front of it, for its name.
      const bool isField = ClassOf(stops[i]) == L"Edit" || ClassOf(stops[i]) == L"ComboBox";
      const auto named = isField ? ::GetWindow(stops[i], GW_HWNDPREV) : stops[i];
      EXPECT_TRUE(named && !Text(named).empty() && (!isField || ClassOf(named) == L"Static")) << i;
    }
  }

  const Settings settings;
  Folder folder;
  Velmaro velmaro{folder};
  HWND main = velmaro.Main();
  UINT dpi = ::GetDpiForSystem();
};

TEST_F(LayoutTest, ControlsFollowTheWindowAndItsLimits) {
  Front(main);
  ExpectLook(main, "main");
  MINMAXINFO limits{};
  ::SendMessageW(main, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_EQ(limits.ptMinTrackSize.x, Limit(6500)) << "the mouse stops there";
  EXPECT_EQ(limits.ptMinTrackSize.y, Limit(3000));
  // Smaller than it may be, it springs back, and the side that is large enough stays.
  for (const SIZE size : {SIZE{777, 555}, SIZE{200, 900}, SIZE{900, 100}}) {
    SCOPED_TRACE(testing::Message() << size.cx << " x " << size.cy);
    ::SetWindowPos(main, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(PlaceOf(main).right, std::max<long>(size.cx, Limit(6500)));
    EXPECT_EQ(PlaceOf(main).bottom, std::max<long>(size.cy, Limit(3000)));
    ::RedrawWindow(main, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    ExpectLook(main, "main", false);
  }
  ::ShowWindow(main, SW_MINIMIZE);
  ::ShowWindow(main, SW_RESTORE);
  EXPECT_TRUE(Until([&] { return PlaceOf(main).right - PlaceOf(main).left == 900; }));
  ExpectLook(main, "main", false);
}

TEST_F(LayoutTest, EveryFormComesUpAsItWasDesigned) {
  ::SetWindowPos(main, nullptr, 60, 150, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  const std::array entries = {L"Run...", L"Edit Kill List Here...", L"About", L"Find...", L"Free Memory..."};
  const std::array names = {"launcher", "editor", "about", "find", "meter"};
  for (std::size_t i = 0; i < entries.size(); ++i) {
    velmaro.Choose(entries[i]);
    const auto form = velmaro.Form();
    ASSERT_TRUE(form);
    Front(form);
    ExpectLook(form, names[i]);
    if (names[i] == std::string("editor")) {
      ::SetWindowPos(form, nullptr, 60, 150, 700, 300, SWP_NOZORDER);
      ExpectLook(form, names[i], false);
    }
    ::PostMessageW(form, WM_CLOSE, 0, 0);
    EXPECT_TRUE(Gone(form));
  }
}

}  // namespace
