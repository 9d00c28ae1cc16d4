#include "Fixture.h"
#include "startup/CommandLine.h"

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

std::string Read(const std::string& line) { return Summary(ReadCommandLine(line, "C:\\V\\")); }

TEST(CommandLine, SwitchesAreFoundAnywhereOnceAndInTheirOwnOrder) {
  ExpectEach(Read,
             {"    => >", "  epsxe.exe -nogui  => >epsxe.exe -nogui", "/q x.exe => quiet >x.exe",
              "x.exe /Q => quiet >x.exe", "/q /q x.exe => quiet >/q x.exe", "x.exe a/?b => help >",
              "/q /k a.txt /? => help >", "x.exe /install => idle >x.exe nstall",
              "x.exe /unknown -a => >x.exe /unknown -a", "a/qb => quiet >ab", "a /q /m  b => quiet memory >a    b"});
  ExpectEach(Read, {"/MAX x => style3 >x", "/min /max x => style2 >x", "/normal /min /max x => >x",
                    "/hide /normal /min /max x => style0 >x", "/max /max => style3 memory >ax",
                    "/hide /hide x => style0 high >ide x", "/h /i x => high idle >x", "//mh x => memory high >x"});
}

TEST(CommandLine, TitleOfTheWindowToHide) {
  ExpectEach(Read,
             {"/q /x ePSXe /h epsxe.exe => quiet hide(ePSXe) high >epsxe.exe", "/x epsxe.exe => hide(ePSXe) >epsxe.exe",
              "/x => hide(ePSXe) >", "/x Game x.exe => hide(Game) >x.exe", "/x\" x.exe => hide(\") >x.exe",
              "/xTitle x.exe => hide(Title) >x.exe", R"(/X "Two Words" x.exe => hide(Two Words) >x.exe)",
              R"(/x "Two Words" => hide(Two Words) >)", R"(/x "" x.exe => hide(ePSXe) >x.exe)",
              "/x  x.exe => hide(ePSXe) >x.exe", R"(/x"Two Words" x.exe => hide("Two) >Words" x.exe)",
              R"(/x "open x.exe => hide(ePSXe) >"open x.exe)", R"(/x "a /q b" x => quiet hide(a  b) >x)",
              R"(/x "/x b" /x c => hide(/x b) >/x c)"});
}

TEST(CommandLine, ListFilesRunToTheFirstTextEnding) {
  ExpectEach(
      Read, {"/k => kill() >", "/k x.exe => kill() >x.exe", R"(/k a.txt x.exe => kill(C:\V\a.txt) >x.exe)",
             R"(/ka.TXT => kill(C:\V\a.TXT) >)", R"(/k "my list.txt" x.exe => kill(C:\V\my list.txt) >x.exe)",
             R"(/k "my list.txt"x.exe => kill(C:\V\my list.txt) >x.exe)",
             R"(/k "a.txt x.exe => kill(C:\V\"a.txt) >x.exe)", R"(/k a.txt/m x.exe => kill(C:\V\a.txt/) memory >x.exe)",
             R"(/k sub\a.txt x => kill(sub\a.txt) >x)", R"(/k "D:\my lists\a.txt" x => kill(D:\my lists\a.txt) >x)",
             R"(/k a.txt.txt x => kill(C:\V\a.txt.) >.txt x)", "x.exe a.txt /k => kill() >x.exe a.txt",
             R"(/y a.txt /k b.txt /m x => spare(C:\V\a.txt) kill(C:\V\b.txt) memory >x)",
             R"(/k b.txt /y a.txt x => spare(C:\V\a.txt) kill(C:\V\b.txt) >x)",
             R"(/y /k a.txt x.exe => spare(C:\V\/k a.txt) >x.exe)", "/y x.exe => >x.exe",
             "/q /k /m /h x => quiet kill() memory high >x"});
}

TEST(CommandLine, WordsAreSwitchesUpToTheProgram) {
  // Written with "|" behind each word.
  const auto read = [](std::string words) {
    std::ranges::replace(words, '|', '\0');
    auto options = ReadCommandWords(words, "C:\\V\\");
    std::ranges::replace(options.target, '\0', '|');
    return Summary(options);
  };
  ExpectEach(read, {" => >", "/Q|/h|game| => quiet high >game|", "game|/q|/?|| => >game|/q|/?||",
                    R"(/q|/usr/max/h|a "b|c\| => quiet >/usr/max/h|a "b|c\|)", "/quick|/i| => >/quick|/i|",
                    "|/q| => >|/q|", "/m|/?|game| => help >", "/k|game|a.txt| => kill() >game|a.txt|",
                    R"(/k|my list.TXT|/y|D:\b.txt|game| => spare(D:\b.txt) kill(C:\V\my list.TXT) >game|)",
                    "/k|/y|/i|g| => kill() idle >g|", "/max|/hide|/min|g| => style0 >g|", "/max|/normal|g| => >g|",
                    "/min|/normal|g| => >g|", "/max|/min|g| => style2 >g|", "/x|My Game|g|a| => hide(My Game) >g|a|",
                    "/x|game| => hide(ePSXe) >game|", "/x|/q|game| => quiet hide(ePSXe) >game|",
                    "/x||game| => hide(ePSXe) >game|", "/x| => hide(ePSXe) >"});
}

}  // namespace
