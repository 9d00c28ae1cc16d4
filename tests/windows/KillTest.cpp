#include <gtest/gtest.h>

#include "Drive.h"

namespace drive {
namespace {

class KillTest : public testing::Test {
 protected:
  // Runs the kill list of the folder from the menu, and waits until the run is over.
  void RunList(const Velmaro& velmaro, int answer = IDYES) {
    velmaro.Choose(L"High");
    ASSERT_TRUE(Until([&] { return velmaro.Checks() == L"Auto Refresh|High"; }));
    velmaro.Choose(L"Kill Processes");
    const auto box = velmaro.Await();
    EXPECT_EQ(box.text, L"Do you want to kill all the processes listed\r\nin '" + folder.Path(L"killlist.txt") + L"'?");
    EXPECT_EQ(box.defaultButton, IDNO);
    box.Answer(answer);
    const auto option = answer == IDYES ? L"Real Time" : L"High";
    EXPECT_TRUE(Until([&] { return velmaro.Checks() == std::wstring(L"Auto Refresh|") + option; }));
    velmaro.Refresh();
    EXPECT_FALSE(velmaro.HasBox());
  }
  Folder folder;
};

TEST_F(KillTest, ListEndsOneProcessALineAndSparesTheProtected) {
  std::map<std::wstring, std::unique_ptr<Program>> programs;
  for (const auto name : {L"One", L"Two", L"Three", L"Spared", L"Comment", L"Feed"})
    programs[name] = std::make_unique<Program>(StartProbe(folder.Probe(name + std::wstring(L".exe"))));
  const auto again = StartProbe(folder.Path(L"One.exe"));
  // A lone CR ends a line and a lone LF does not, a name is no pattern here, and a path counts by its last part.
  folder.Write(
      L"killlist.txt",
      "; comment.exe\r\n  one.exe  \rTWO.EXE\r\n*.exe\r\n\"C:\\old folder\\three.exe\"\r\nfeed.exe\nx\r\nspared.exe\r\n"
      "none.exe");
  folder.Write(L"nokilllist.txt", "\r\n  ;*\r\nSPA[q-s]?[!x].ex*\r\n");
  const Velmaro velmaro(folder);
  RunList(velmaro, IDNO);
  for (const auto& [name, program] : programs) EXPECT_TRUE(program->Lives()) << name;
  RunList(velmaro);
  const auto first = std::move(programs.extract(L"One").mapped());
  for (const auto& [name, program] : programs) EXPECT_EQ(program->Lives(), name != L"Two" && name != L"Three") << name;
  EXPECT_NE(first->Lives(), again.Lives());
  EXPECT_EQ(velmaro.Row(L"\ttwo.exe"), L"");
}

TEST_F(KillTest, ListThatCanNotBeReadEndsNothing) {
  const auto one = StartProbe(folder.Probe(L"One.exe"));
  folder.Write(L"killlist.txt", "one.exe");
  folder.Write(L"nokilllist.txt", "[one");
  const Velmaro velmaro(folder);
  RunList(velmaro);
  EXPECT_TRUE(one.Lives()) << "an invalid pattern protects everything";
  ASSERT_TRUE(::DeleteFileW(folder.Path(L"nokilllist.txt").c_str()));
  const OwnedHandle lock(
      ::CreateFileW(folder.Path(L"killlist.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  velmaro.Choose(L"Kill Processes");
  velmaro.Await().Answer(IDYES);
  velmaro.Refresh();
  EXPECT_TRUE(one.Lives());
}

TEST_F(KillTest, FreeResourcesFreesMemoryFirstAndAsksThen) {
  const auto one = StartProbe(folder.Probe(L"One.exe"));
  folder.Write(L"killlist.txt", "one.exe");
  const Velmaro velmaro(folder);
  velmaro.Press(L"Free Resources");
  const auto meter = velmaro.Form();
  ASSERT_TRUE(meter);
  EXPECT_FALSE(velmaro.HasBox());
  Press(Child(meter, L"BUTTON", L"&Stop"));
  velmaro.Await().Answer(IDYES);
  EXPECT_FALSE(::IsWindowVisible(meter));
  EXPECT_EQ(one.ExitCode(), 0);
}

// Lets a program open text files while it lives.
class Opener {
 public:
  explicit Opener(const std::wstring& program) {
    DWORD bytes = sizeof before_;
    ::RegGetValueW(HKEY_CLASSES_ROOT, L".txt", L"", RRF_RT_REG_SZ, nullptr, before_, &bytes);
    Set(L".txt", L"VelmaroDrive");
    Set(L"VelmaroDrive\\shell\\open\\command", L'"' + program + L"\" \"%1\"");
  }
  Opener(const Opener&) = delete;
  Opener& operator=(const Opener&) = delete;
  ~Opener() {
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L"VelmaroDrive");
    Set(L".txt", before_);
  }

 private:
  static void Set(const wchar_t* key, const std::wstring& value) {
    ::RegSetKeyValueW(HKEY_CLASSES_ROOT, key, L"", REG_SZ, value.c_str(),
                      static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  }
  wchar_t before_[300]{};
};

TEST_F(KillTest, RightClickOnFreeResourcesOpensTheListInTheShell) {
  folder.Write(L"my list.txt", "nothing.exe");
  const auto reader = folder.Probe(L"Reader.exe");
  const Opener opener(reader);
  const Velmaro velmaro(folder, L"/k \"my list.txt\"");
  velmaro.Await().Answer(IDNO);
  Front(velmaro.Main());
  Click(Child(velmaro.Main(), L"BUTTON", L"Free Resources"), MOUSEEVENTF_RIGHTDOWN);
  EXPECT_TRUE(ReportOf(reader).line.ends_with(L" \"" + folder.Path(L"my list.txt") + L"\""));
  EXPECT_EQ(velmaro.Windows().size(), 1U) << "it starts neither the memory run nor the kill run";
}

}  // namespace
}  // namespace drive
