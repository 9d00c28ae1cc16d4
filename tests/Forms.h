#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

// What each form looks like when it comes up, the same on every system. A test compares a model or live windows with
// it.
namespace forms {

// A row for each control: kind, left, top, width, height, tab index, (font), [marks], and how
// its text begins. Lengths are in twips, from the container's inner corner; "c" counts from the right edge of the
// inside of the window, "W" and "H" from its outer size, and "?" follows something else. Colours are those of a button
// where no mark tells. The row of a form itself: width and height of its inside, border, what it is centred on, and its
// name.
inline constexpr auto Table = R"(
form 7170 4110 sizable owner main [icon maximize minimize taskbar] Zeld's Velmaro Process;
list 30 450 W-180 H-2040 0 [ground:window ink:windowtext]; option 45 30 780 360 5 [set] &All;
option 810 30 765 360 6 &Normal; option 1560 30 795 360 7 Hi&gh; option 2340 30 885 360 8 Real &Time;
option 3210 30 600 360 9 &Idle; option 3795 30 615 360 10 &Emu; option 4485 30 795 360 13 &Hidden;
button c-4515 H-1560 1095 840 1 [default] Velmaro!; button c-3420 H-1560 1050 840 2 &Launch...;
button c-2310 H-1560 1050 840 3 Free &Mem; button c-1260 H-1560 1260 840 4 Free Resources;
button c-870 30 810 360 11 [ground:FFFFC0] &Refresh; label 45 H-1440 2145 195 12 (Arial line) [ink:0000FF] The Velmaro;
form 4680 1485 fixed screen meter [icon minimize taskbar];
image 4155 945 480 480 -1; panel 0 45 4605 330 0 [sunken]; label -15 900 4185 420 1 Free: ;
panel 0 0 ? 495 2 [ground:highlight ink:windowtext]; slider 15 435 3225 285 3; button 3285 375 1320 420 4 Free ;
label 45 1185 1620 225 5 (MS Sans Serif line) [ink:0000FF] The Velmaro;
label 0 30 ? 225 6 (9.75 MS Sans Serif) [center ground:highlight ink:highlighttext];
form 6570 2370 tool owner launcher [] Velmaro Launcher;
image 60 180 480 480 -1; combo 705 555 5640 315 0 [ground:window ink:windowtext];
label 705 240 4500 525 1 Type the name of the program that you want to run; button 2820 1080 1095 405 2 [default] OK;
button 3945 1080 1155 405 3 Cancel; button 5295 1080 1020 405 4 &Browse...;
frame 120 1005 2175 1320 5 Priority; option 150 240 1770 255 6 [set] &Real Time; option 150 495 1770 255 7 &High;
option 150 750 1770 255 8 &Normal; option 150 1005 1770 255 9 &Idle;
label 4695 2085 2145 195 10 (Arial line) [ink:0000FF] The Velmaro;
form 7830 5700 sizable owner editor [icon maximize minimize taskbar] Settings;
edit 0 0 c i-465 0 (9.75 MS Sans Serif) [ground:FFFEE1 ink:windowtext]; button c-2970 i-450 1440 435 1 &OK;
button c-1470 i-450 1440 435 2 &Cancel; button 30 i-420 375 345 3 (MS Sans Serif bold) [ground:FFFF80] ?;
label 495 i-360 2145 195 4 (Arial line) [ink:0000FF] The Velmaro;
form 6480 3915 none screen about [ground:000000];
panel 0 345 6480 3090 -1 [ground:window]; label 300 360 3780 1185 -1 (24 Arial) [ground:FFFFFF ink:000080] Velmaro;
line 1500 1440 4950 30 -1 [ink:FF0000]; label 270 1575 6075 285 -1 [ground:FFFFFF ink:windowtext right] Change Process;
label 2310 1800 4035 255 -1 [ground:FFFFFF ink:808080 right] Written;
label 4335 3555 2025 255 -1 (MS Sans Serif line) [ground:000000 ink:6080FF] https:;
label 60 3495 3990 315 -1 (12 MS Sans Serif) [ground:000000 ink:FFFF00] With thanks;
button 5055 2475 1305 375 0 [ground:FFFFFF] OK;
form 5400 1530 tool owner find [];
label 120 120 3825 660 -1 Enter text to find; edit 120 1095 5160 315 0 [ground:window ink:windowtext];
button 4065 120 1215 375 1 [default] OK; button 4065 570 1215 375 2 Cancel;)";

// The lengths of a window, in twips, by the letters above.
using Size = std::map<char, double>;

struct Row {
  std::string kind, tab, font, marks, text;
  std::array<std::string, 4> at;
  bool Has(const std::string& mark) const { return (' ' + marks + ' ').find(' ' + mark + ' ') != std::string::npos; }
  // A colour of the row: one of the desktop by its name, or six digits.
  std::string Color(const std::string& side, const std::string& otherwise) const {
    const auto start = (' ' + marks).find(' ' + side + ':');
    return start == std::string::npos
               ? otherwise
               : marks.substr(start + side.size() + 1, marks.find(' ', start) - start - side.size() - 1);
  }
  // A side of the place in twips, not a number where the table does not tell it.
  double Length(std::size_t side, const Size& window) const {
    const auto& text = at[side];
    if (text == "?") return std::nan("");
    const auto from = window.find(text[0]);
    if (from == window.end()) return std::stod(text);
    return from->second + (text.size() > 1 ? std::stod(text.substr(1)) : 0);
  }
};

// A form by its name: its own row, and those of its controls in the order of their tab indexes.
inline std::vector<Row> Rows(const std::string& name) {
  std::vector<Row> rows;
  std::istringstream table(Table);
  bool wanted = false;
  for (std::string text; std::getline(table, text, ';');) {
    std::istringstream words(text);
    Row row;
    words >> row.kind >> row.at[0] >> row.at[1] >> row.at[2] >> row.at[3] >> row.tab >> std::ws;
    if (words.peek() == '(') std::getline(words.ignore(), row.font, ')') >> std::ws;
    if (words.peek() == '[') std::getline(words.ignore(), row.marks, ']');
    std::getline(words >> std::ws, row.text);
    if (row.kind == "form") wanted = row.tab == name;
    if (wanted) rows.push_back(row);
  }
  std::stable_sort(rows.begin() + 1, rows.end(),
                   [](const Row& a, const Row& b) { return std::stoi(a.tab) < std::stoi(b.tab); });
  return rows;
}

}  // namespace forms
