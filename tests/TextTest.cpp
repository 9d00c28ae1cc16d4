#include <limits>
#include <map>
#include <random>

#include "../fuzz/NaiveMatch.h"
#include "Fixture.h"
#include "runtime/LineReader.h"
#include "runtime/Numbers.h"

namespace {

TEST(Text, WildcardsTestTheWholeTextExactly) {
  const auto expect = [](std::optional<bool> outcome, const Texts& cases) {
    for (const auto& text : cases) {
      const auto [tested, pattern] = Sides(text);
      EXPECT_EQ(naive::Tested(tested, pattern), outcome) << text;
    }
  };
  expect(true,
         {" => ", "abc => **c*", "9 => #", "! => [a!]", "! => [!]", "- => [-a]", "- => [a-]", "[ => [[]", "] => ]",
          "a] => [a]]", "ab => a[]b", "a => *[]", "e => [a-cd-f]", "\xC3\xA9 => [\xC3\xA8-\xC3\xAA]", "\xFF => ?"});
  expect(false, {" => ?", "abc => A*c", "abc => ab", "b => [-c]", "- => [!-a]", "x => [*?#]", "abc => *ab*b?",
                 "a => []", "\xC3 => \xC3\xA9", "e => [\xC3\xA9]"});
  expect(std::nullopt,
         {"a => [", " => [", "x => a[b", "zz => [b-a]", " => [!b-a]", "a => a*[9-0]", "\xC3\xA9 => [\xC3\xA9-e]"});
}

TEST(Text, WildcardsAgreeWithASecondMatcher) {
  // In an order that is the same on every run.
  std::mt19937 random(5);
  const auto next = [&](const Texts& pieces, std::size_t most) {
    std::string text;
    for (auto left = random() % (most + 1); left > 0; --left) text += pieces[random() % pieces.size()];
    return text;
  };
  const Texts texts = {"a", "b", "c", "1", "-", "[", "]", "!", "\xC3\xA9", "\xC3"};
  const Texts patterns = {"a", "b", "c", "*", "*", "?", "#", "[", "[a", "]", "]", "-", "!", "[!", "\xC3\xA9"};
  std::map<std::optional<bool>, int> outcomes;
  for (int round = 0; round < 60000; ++round) {
    const auto text = next(texts, 7);
    const auto pattern = next(patterns, 8);
    const auto outcome = naive::Tested(text, pattern);
    ASSERT_EQ(outcome, naive::Match(text, pattern)) << text << " and " << pattern;
    ++outcomes[outcome];
  }
  EXPECT_GT(std::min({outcomes[true], outcomes[false], outcomes[std::nullopt]}), 1000);
}

TEST(Text, SearchCountsFromOneInSixteenBits) {
  // Where a search begins, the text, and what is sought in it.
  auto compare = Compare::Exact;
  const auto hit = [&](const std::string& text) {
    std::istringstream words(text);
    std::size_t start = 0;
    std::string in, what;
    words >> start >> in >> what;
    return std::to_string(InStr(start, in, what, compare));
  };
  const std::string far(32767, '.');
  ExpectEach(hit, {"1 abcabc abc => 1", "2 abcabc abc => 4", "5 abcabc abc => 0", "7 abcabc c => 0", "6 abcabc c => 6",
                   "0 abc a => 0", "1 xABC abc => 0", "1 " + far.substr(1) + "a a => 32767", "1 " + far + "a a => 0"});
  compare = Compare::IgnoreCase;
  ExpectEach(hit, {"1 xABZ abz => 2", "2 \xC3\xA9\xC3\x89t\xC3\xA9 \xC3\xA9T => 3", "1 \xE2\x84\xAA.exe .EXE => 4",
                   "1 \xE2\x84\xAA.\xC3\xA9 \xC3\x89 => 5", "1 a\xFF/q /Q => 3"});
  EXPECT_EQ(FindInText(1, far + "a", "A", Compare::IgnoreCase), 32768U);
  EXPECT_EQ(Trim("  \ta b\t "), "\ta b\t");
  EXPECT_EQ(LCase("Z\xC3\x89\xD0\x96\xFF"), "z\xC3\xA9\xD0\xB6\xFF");
}

TEST(Text, NumbersAreWrittenByTheirPattern) {
  // A number, the pattern behind it, and what is written.
  const auto written = [](const std::string& text) { return Format(std::stod(text), text.substr(text.find(' ') + 1)); };
  ExpectEach(written, {"131072 ###0.0 KB => 131072.0 KB", "0.5 ###0.0 KB => 0.5 KB", "0.04 ###0.0 KB => 0.0 KB",
                       "1.46 #0.0 => 1.5", "0.25 #0.0 => 0.3", "0.75 #0.0% => 75.0%", "0.99996 #0.0% => 100.0%",
                       "-0.0004 #0.0% => 0.0%", "-0.25 #0.0% => -25.0%", "131072 #,##0.0 KB => 131,072.0 KB",
                       "999.96 #,##0.0 KB => 1,000.0 KB", "4194304 #,##0.0 KB => 4,194,304.0 KB", "0.3 #.0 => .3",
                       "7 000 => 007", "4503599627370495.5 #0.0 => 4503599627370495.5", "0.015 #0.00 => 0.02",
                       "1234.5 ###0 => 1235", "1e23 #,##0.00 => 99,999,999,999,999,991,611,392.00"});
  EXPECT_THROW(Format(std::numeric_limits<double>::quiet_NaN(), "#0.0"), RuntimeError);
}

TEST(Text, LinesEndAtCrLfOrALoneCr) {
  simulated::Desktop desktop;
  // The lines of a file, with "|" behind each, the same however little the system reads at a time.
  const auto lines = [&](const std::string& bytes) {
    desktop.files["C:\\a"].bytes = bytes;
    Texts read(4);
    for (std::size_t i = 0; i < 4; ++i) {
      desktop.largestRead = std::array{1, 2, 3, 100000}[i];
      LineReader reader("C:\\a");
      for (std::string line; reader.ReadLine(line);) read[i] += line + '|';
    }
    EXPECT_EQ(read, Texts(4, read[0]));
    return read[0];
  };
  const std::string far(70000, 'x');
  std::string wideSmiles, smiles;
  for (int i = 0; i < 5000; ++i) {
    wideSmiles += "\x3D\xD8\0\xDE"s;
    smiles += "\xF0\x9F\x98\x80";
  }
  ExpectEach(lines, {" => ", "a => a|", "a\r\n => a|", "a\r\nb => a|b|", "a\rb\r => a|b|", "\n => \n|",
                     "a\nb\r\n\nc => a\nb|\nc|", "\r\r\n\r => |||", "a\0b\r => a\0b|"s, far + "\r\ny => " + far + "|y|",
                     "\xEF\xBB\xBFx\r\ny => x|y|", "\xFF\xFEx\0\r\0\n\0\x3D\xD8\x00\xDEz => x|\xF0\x9F\x98\x80|"s,
                     "\xFE\xFF\0x\0\r\x30\x42 => x|\xE3\x81\x82|"s,
                     "\xEF\xBB\xBF\xEF\xBB\xBFx\r\xEF\xBB\xBFy\xEF\xBB\xBF => x|y\xEF\xBB\xBF|",
                     "\xFF\xFE\xFF\xFEx\0\r\0\xFF\xFEy\0 => x|y|"s,
                     // What belongs together lies in two pieces of a long file.
                     far.substr(0, 16383) + "\r\ny => " + far.substr(0, 16383) + "|y|",
                     "\xFF\xFEx\0"s + wideSmiles + " => x" + smiles + '|'});
  std::string line;
  EXPECT_FALSE(LineReader("C:\\none").ReadLine(line));
}

}  // namespace
