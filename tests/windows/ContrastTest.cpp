#include <array>
#include <cmath>

#include "Velmaro.h"

namespace {

// Back and text of windows, of buttons and of what is selected, in this order.
using Colors = std::array<COLORREF, 6>;
constexpr std::array<int, 6> Elements{COLOR_WINDOW,  COLOR_WINDOWTEXT, COLOR_BTNFACE,
                                      COLOR_BTNTEXT, COLOR_HIGHLIGHT,  COLOR_HIGHLIGHTTEXT};

void Set(const Colors& colors) { ::SetSysColors(static_cast<int>(colors.size()), Elements.data(), colors.data()); }

double Luminance(DWORD color) {
  const auto part = [&](int shift) { return std::pow((color >> shift & 0xFF) / 255.0, 2.2); };
  return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

// The contrast of what stands out most at the place of a text with what most of the place shows.
double ContrastOf(HWND control) {
  RECT place;
  ::GetWindowRect(control, &place);
  const auto windowClass = ClassOf(control);
  if (windowClass == L"Button") place.top = std::max(place.top, place.bottom - 25);  // below a picture
  if (windowClass != L"Static") ::InflateRect(&place, -5, -5);
  const auto points = Shown(place);
  const auto back = std::ranges::max_element(points, {}, [](const auto& point) { return point.second; })->first;
  double best = 1;
  for (const auto& [color, count] : points) {
    const auto [low, high] = std::minmax({Luminance(color), Luminance(back)});
    best = std::max(best, (high + 0.05) / (low + 0.05));
  }
  return best;
}

TEST(ContrastTest, EveryTextCanBeReadInSchemesOfHighContrast) {
  Colors before{};
  std::ranges::transform(Elements, before.begin(), [](int element) { return ::GetSysColor(element); });
  const Folder folder;
  folder.Write(L"killlist.txt", "a.exe\r\n");
  for (const auto& colors :
       {Colors{0, 0xFFFFFF, 0, 0xFFFFFF, 0xFFEB1A, 0}, Colors{0xFFFFFF, 0, 0xFFFFFF, 0, 0x37, 0xFFFFFF}}) {
    Set(colors);
    const Velmaro velmaro(folder);
    velmaro.TellHighContrast();
    for (const auto* entry : {L"", L"Run...", L"Free Memory...", L"Find...", L"Edit Kill List Here...", L"About"}) {
      if (*entry) velmaro.Choose(entry);
      const auto form = *entry ? velmaro.Form() : velmaro.Main();
      Front(form);
      for (const auto control : Children(form)) {
        const bool hasText = !Text(control).empty() || control == velmaro.List();
        // A pressed button and the title of a frame Wine's own style paints, and it knows of no contrast.
        const bool isStyles = Text(control) == L"&All" || Text(control) == L"Priority";
        if (!hasText || !::IsWindowVisible(control) || isStyles) continue;
        EXPECT_TRUE(Until([&] { return ContrastOf(control) >= 4.5; }, 3000))
            << Text(form) << ": " << Text(control) << ' ' << ContrastOf(control);
      }
      if (*entry) ::PostMessageW(form, WM_CLOSE, 0, 0);
      EXPECT_TRUE(!*entry || Gone(form));
    }
  }
  Set(before);
}

}  // namespace
