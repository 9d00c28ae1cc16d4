#include "Fixture.h"
#include "runtime/Text.h"
#include "startup/CommandLine.h"

namespace velmaro {
namespace {

// What was read from a command line, with what stands as if no switch was there left out.
std::string Summary(const StartOptions& options) {
  std::string text;
  if (options.help) text += "help ";
  if (options.quiet) text += "quiet ";
  if (options.hideWindow) text += "hide(" + options.hideTitle + ") ";
  if (options.windowStyle != 1) text += "style" + std::to_string(options.windowStyle) + ' ';
  if (!options.noKillListPath.empty()) text += "spare(" + options.noKillListPath + ") ";
  if (options.killRun) text += "kill(" + options.killListPath + ") ";
  if (options.freeMemory) text += "memory ";
  if (options.high) text += "high ";
  if (options.idle) text += "idle ";
  return text + '>' + options.target;
}

struct LineCase {
  std::string line;
  std::string summary;
};

void ExpectAll(const std::vector<LineCase>& cases) {
  for (const auto& [line, summary] : cases) EXPECT_EQ(Summary(ReadCommandLine(line, "C:\\V\\")), summary) << line;
}

TEST(CommandLine, SwitchesAreFoundAnywhereOnceAndInTheirOwnOrder) {
  ExpectAll({
      {"", ">"},
      {"   ", ">"},
      {"  epsxe.exe -nogui ", ">epsxe.exe -nogui"},
      {"/q x.exe", "quiet >x.exe"},
      {"x.exe /Q", "quiet >x.exe"},
      {"/q /q x.exe", "quiet >/q x.exe"},
      {"/quick", "quiet >uick"},
      {"x.exe a/?b", "help >"},
      {"/q /k a.txt /?", "help >"},
      {"/MAX x", "style3 >x"},
      {"/min /max x", "style2 >x"},
      {"/max /min x", "style2 >x"},
      {"/normal /min /max x", ">x"},
      {"/hide /normal /min /max x", "style0 >x"},
      {"/max /max", "style3 memory >ax"},
      {"/min /min x", "style2 memory >in x"},
      {"/hide /hide x", "style0 high >ide x"},
      {"/h /i x", "high idle >x"},
      {"/m x", "memory >x"},
      {"x.exe /install", "idle >x.exe nstall"},
      {"x.exe /unknown -a", ">x.exe /unknown -a"},
      {"a/qb", "quiet >ab"},
      {"a /q /m  b", "quiet memory >a    b"},
  });
}

TEST(CommandLine, TitleOfTheWindowToHide) {
  ExpectAll({
      {"/q /x ePSXe /h epsxe.exe", "quiet hide(ePSXe) high >epsxe.exe"},
      {"/x epsxe.exe", "hide(ePSXe) >epsxe.exe"},
      {"/x", "hide(ePSXe) >"},
      {"/x Game x.exe", "hide(Game) >x.exe"},
      {"/xTitle x.exe", "hide(Title) >x.exe"},
      {"/X \"Two Words\" x.exe", "hide(Two Words) >x.exe"},
      {"/x \"Two Words\"", "hide(Two Words) >"},
      {"/x \"\" x.exe", "hide(ePSXe) >x.exe"},
      {"/x  x.exe", "hide(ePSXe) >x.exe"},
      {"/x\"Two Words\" x.exe", "hide(\"Two) >Words\" x.exe"},
      {"/x \"open x.exe", "hide(ePSXe) >\"open x.exe"},
      {"/x \"a /q b\" x", "quiet hide(a  b) >x"},
      {"/x \"/x b\" /x c", "hide(/x b) >/x c"},
  });
}

TEST(CommandLine, ListFilesRunToTheFirstTextEnding) {
  ExpectAll({
      {"/k", "kill() >"},
      {"/k x.exe", "kill() >x.exe"},
      {"/k a.txt x.exe", "kill(C:\\V\\a.txt) >x.exe"},
      {"/ka.TXT", "kill(C:\\V\\a.TXT) >"},
      {"/k x.exe y.txt", "kill(C:\\V\\x.exe y.txt) >"},
      {"/k \"my list.txt\" x.exe", "kill(C:\\V\\my list.txt) >x.exe"},
      {"/k \"my list.txt\"x.exe", "kill(C:\\V\\my list.txt) >x.exe"},
      {"/k \"a.txt x.exe", "kill(C:\\V\\\"a.txt) >x.exe"},
      {"/k a.txt/m x.exe", "kill(C:\\V\\a.txt/) memory >x.exe"},
      {"/k sub\\a.txt x", "kill(sub\\a.txt) >x"},
      {"/k \"D:\\my lists\\a.txt\" x", "kill(D:\\my lists\\a.txt) >x"},
      {"/k a.txt.txt x", "kill(C:\\V\\a.txt.) >.txt x"},
      {"x.exe a.txt /k", "kill() >x.exe a.txt"},
      {"/y a.txt /k b.txt /m x", "spare(C:\\V\\a.txt) kill(C:\\V\\b.txt) memory >x"},
      {"/k b.txt /y a.txt x", "spare(C:\\V\\a.txt) kill(C:\\V\\b.txt) >x"},
      {"/y /k a.txt x.exe", "spare(C:\\V\\/k a.txt) >x.exe"},
      {"/y x.exe", ">x.exe"},
      {"/q /k /m /h x", "quiet kill() memory high >x"},
  });
}

TEST(CommandLine, PositionsAreSixteenBitsWide) {
  const std::string far(32767, 'a');
  EXPECT_FALSE(ReadCommandLine(far + "/q", "C:\\V\\").quiet);
  EXPECT_TRUE(ReadCommandLine(far.substr(1) + "/q", "C:\\V\\").quiet);
}

bool IsCutFrom(std::string_view whole, std::string_view part) {
  for (const char byte : whole)
    if (!part.empty() && part.front() == byte) part.remove_prefix(1);
  return part.empty();
}

TEST(CommandLine, AnyBytesGiveATargetThatIsCutFromThem) {
  Texts pieces = {"/q", "/x", "/max", "/MIN", "/hide", "/y", "/k", "/m",
                  "/h", "/i", ".txt", "\"",   " ",     " ",  "\\", "x.exe"};
  for (int byte = 0; byte < 256; byte += 5) pieces.emplace_back(1, static_cast<char>(byte));
  RandomTexts random(1, pieces);
  for (int round = 0; round < 2000; ++round) {
    const auto line = random.Next(round % 50 == 0 ? 20000 : 30).substr(0, 32767);
    const auto options = ReadCommandLine(line, "C:\\V\\");
    ASSERT_TRUE(IsCutFrom(line, options.target)) << line;
    ASSERT_EQ(Trim(options.target), options.target) << line;
    ASSERT_EQ(options.quiet, InStr(1, line, "/q", Compare::IgnoreCase) != 0 && !options.help) << line;
  }
}

TEST(CommandLine, AnyBytesStartTheProgramOneWayOrTheOther) {
  RandomTexts random(2, {"/q",
                         "/x",
                         "/max",
                         "/y",
                         "/k",
                         "/m",
                         "/h",
                         "/i",
                         "/?",
                         ".txt",
                         "\"",
                         " ",
                         " ",
                         "\\",
                         "vgs.exe",
                         "game.exe",
                         "[",
                         "\xFF",
                         "\xC3\x89",
                         std::string(1, '\0'),
                         std::string(3000, 'a')});
  for (int round = 0; round < 300; ++round) {
    simulated::Desktop desktop;
    Application application;
    desktop.memory.available = desktop.memory.total - (4U << 20);
    desktop.AddProcess("game.exe");
    desktop.commandLine = random.Next(12);
    auto& form = application.Default<formVelmaro>();
    form.Show();
    EXPECT_NE(application.Ended(), simulated::Shows(form)) << desktop.commandLine;
    EXPECT_EQ(desktop.misuse, Texts{}) << desktop.commandLine;
    EXPECT_EQ(desktop.OpenHandles(), 0U) << desktop.commandLine;
    EXPECT_TRUE(desktop.terminated.empty()) << desktop.commandLine;
  }
}

}  // namespace
}  // namespace velmaro
