#include "Velmaro.h"

namespace {

TEST(StartTest, QuietRunsReachTheTargetAndNeverHaveAnyWindow) {
  const Folder folder;
  const auto probe = folder.Probe(L"Target.exe");
  const auto run = [&](const std::wstring& line) {
    const Velmaro velmaro(folder, line);
    while (velmaro.Lives()) ASSERT_TRUE(velmaro.Windows(false).empty());
    EXPECT_EQ(velmaro.ExitCode(), 0);
  };
  for (const auto& noProgram :
       {std::wstring(L"\"unclosed"), std::wstring(32000, L'x'), L"/x \"open " + std::wstring(300, L'"')})
    run(L"/q " + noProgram);
  const std::vector<std::tuple<std::wstring, int, DWORD, std::wstring>> cases{
      {L"/q /max /i", SW_SHOWMAXIMIZED, IDLE_PRIORITY_CLASS, L" -a"},
      {L"/q /hide", SW_HIDE, REALTIME_PRIORITY_CLASS, L" -b \"two words\""},
      {L"/Q /MAX /Normal /i /h", SW_SHOWNORMAL, IDLE_PRIORITY_CLASS, L" /z"}};
  for (const auto& [switches, show, priorityClass, arguments] : cases) {
    run(switches + L' ' + probe + arguments);
    const auto report = ReportOf(probe);
    EXPECT_EQ(report.show, show);
    EXPECT_EQ(ClassOf(report.id), priorityClass);
    EXPECT_EQ(report.folder, L"C:\\");
    EXPECT_TRUE(report.line.ends_with(arguments)) << report.line;
    End(report.id);
  }
}

TEST(StartTest, ListsAndMemoryComeBeforeTheTarget) {
  const Folder folder;
  // With marks, as editors write them. A lone CR ends a line, a lone LF does not, and a name may lack its front.
  folder.Write(L"my list.txt", "\xEF\xBB\xBFSpared.exe\r\nx\nFeed.exe\r*.exe\romed.exe");
  folder.Write(L"spare.txt", std::string("\xFF\xFEs\0p\0a\0r\0e\0d\0*\0", 16));
  const auto doomed = StartProbe(folder.Probe(L"Doomed.exe"));
  const auto spared = StartProbe(folder.Probe(L"Spared.exe"));
  const auto feed = StartProbe(folder.Probe(L"Feed.exe"));
  {
    const OwnedHandle held(
        ::CreateFileW(folder.Path(L"spare.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(Velmaro(folder, L"/q /y spare.txt /k \"my list.txt\" \"unclosed").ExitCode(), 0);
    EXPECT_TRUE(doomed.Lives()) << "a no-kill list that is held protects everything";
  }
  const auto probe = folder.Probe(L"Target.exe");
  const Velmaro velmaro(folder, L"/q /y spare.txt /k \"my list.txt\" /m /h " + probe);
  const auto meter = velmaro.WindowOf(L"Velmaro.Form");
  ASSERT_TRUE(meter) << "the memory run shows its window";
  EXPECT_FALSE(doomed.Lives());
  EXPECT_TRUE(spared.Lives() && feed.Lives());
  Press(Child(meter, L"BUTTON", L"&Stop"));
  EXPECT_EQ(velmaro.ExitCode(), 0);
  EXPECT_EQ(ClassOf(ReportOf(probe).id), static_cast<DWORD>(HIGH_PRIORITY_CLASS));
}

TEST(StartTest, ListsHoldWhateverTheSystemsPageIs) {
  for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
    const std::string name = mark.empty() ? "z\xFCrich" : "z\xC3\xBCrich";
    const Folder folder;
    auto program = folder.Read(L"velmaro.exe");
    // A system that knows nothing of the page that the manifest asks for. The folder's name it can't spell.
    for (std::size_t at = 0; !mark.empty() && (at = program.find("activeCodePage")) != std::string::npos;)
      program.replace(at, 6, "unused");
    const std::wstring inner = L"\u6e38\\";
    std::filesystem::create_directory(folder.Path(inner));
    folder.Write(inner + L"velmaro.exe", program);
    folder.Write(inner + L"killlist.txt", mark + name + ".exe\r\n" + name + "2.exe");
    folder.Write(inner + L"nokilllist.txt", mark + name + ".exe");
    const auto spared = StartProbe(folder.Probe(L"z\u00fcrich.exe"));
    const auto doomed = StartProbe(folder.Probe(L"z\u00fcrich2.exe"));
    EXPECT_EQ(Program(folder.Path(inner + L"velmaro.exe"), L"/q /k none").ExitCode(), 0);
    EXPECT_TRUE(spared.Lives() && !doomed.Lives()) << name;
  }
}

}  // namespace
