#include "Velmaro.h"

namespace {

class SoakTest : public testing::Test {
 protected:
  SoakTest() { velmaro.Checks(); }
  std::tuple<std::size_t, DWORD, std::size_t> Holds() const {
    std::size_t windows = 0;
    for (const auto window : velmaro.Windows(false)) windows += 1 + Children(window).size();
    DWORD handles = 0;
    EXPECT_TRUE(::GetProcessHandleCount(Open(velmaro.Id(), PROCESS_QUERY_INFORMATION).get(), &handles));
    return {windows, handles, PrivateBytes(velmaro.Id())};
  }
  // What is held after many rounds must be what was held after the first ten.
  void Repeat(int rounds, const std::function<void()>& round) const {
    if (::GetEnvironmentVariableW(L"VELMARO_SOAK", nullptr, 0) > 0) rounds *= 7;
    for (int i = 0; i < 10; ++i) round();
    const auto [windows, handles, bytes] = Holds();
    for (int i = 10; i < rounds; ++i) round();
    const auto [windowsNow, handlesNow, bytesNow] = Holds();
    EXPECT_EQ(windowsNow, windows);
    EXPECT_LE(handlesNow, handles + 2);
    EXPECT_LE(bytesNow, bytes + bytes / 20 + 256U * 1024) << "from " << bytes;
  }

  Folder folder;
  Velmaro velmaro{folder};
};

TEST_F(SoakTest, RefreshesAndPopups) {
  for (const auto view : {L"&All", L"&Hidden"}) {
    velmaro.Press(view);
    Repeat(150, [&] { velmaro.Refresh(); });
  }
  Repeat(30, [this] {
    ::PostMessageW(velmaro.List(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
    ::PostMessageW(velmaro.List(), WM_RBUTTONUP, 0, MAKELPARAM(5, 5));
    const auto popup = velmaro.Popup();
    ASSERT_TRUE(popup);
    ::PostMessageW(velmaro.Main(), WM_CANCELMODE, 0, 0);
    ASSERT_TRUE(Until([&] { return !::IsWindow(popup); }));
  });
}

TEST_F(SoakTest, Forms) {
  const Settings settings;
  for (const auto entry : {L"Free Memory...", L"Run...", L"About", L"Edit Kill List Here...", L"Find..."})
    Repeat(30, [&] {
      velmaro.Choose(entry);
      const auto form = velmaro.Form();
      ASSERT_TRUE(form) << entry;
      ::PostMessageW(form, WM_CLOSE, 0, 0);
      ASSERT_TRUE(Until([&] { return !::IsWindow(form); })) << entry;
    });
}

}  // namespace
