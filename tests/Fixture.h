#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "mainform/formVelmaro.h"
#include "platform/simulated/Desktop.h"
#include "platform/simulated/User.h"
#include "runtime/Application.h"

namespace velmaro {

using Texts = std::vector<std::string>;

inline const std::string KillList = "C:\\Velmaro\\killlist.txt";
inline const std::string NoKillList = "C:\\Velmaro\\nokilllist.txt";

// The flags of a box that tells something, and of one that asks and has No preselected.
inline constexpr std::uint32_t Tells = 64;
inline constexpr std::uint32_t Asks = 36;
inline constexpr std::uint32_t AsksWithNo = 292;

inline std::pair<std::string, std::string> Sides(const std::string& text) {
  const auto arrow = text.find(" => ");
  return {text.substr(0, arrow), text.substr(arrow + 4)};
}

// Each case is written as "left => right": what is made of its left side must be its right side.
inline void ExpectEach(const std::function<std::string(const std::string&)>& made, const Texts& cases) {
  for (const auto& text : cases) {
    const auto [left, right] = Sides(text);
    EXPECT_EQ(made(left), right) << text;
  }
}

struct Program {
  formVelmaro& Start(const std::string& line = "") {
    desktop.commandLine = line;
    auto& form = application.Default<formVelmaro>();
    form.Show();
    return form;
  }

  simulated::Desktop desktop;
  Application application;
};

// When a test ends, nothing of its desktop may be left open or misused, and whatever the user was to answer or choose
// must have come up.
class OnDesktop : public testing::Test, protected Program {
 protected:
  // Lets processes run, each written as its base priority and its name.
  void Run(const Texts& processes) {
    for (const auto& text : processes) desktop.AddProcess(text.substr(text.find(' ') + 1), std::stoi(text));
  }

  static Texts Rows(const ListBox& list) {
    Texts rows;
    for (int row = 0; row < list.ListCount(); ++row) rows.push_back(list.List(row));
    return rows;
  }

  // The checked option, its number, and the selected row: "High 1, row 0 of 5".
  static std::string State(const formVelmaro& form) {
    std::string text;
    for (const auto& entry : form.mnuOptions)
      if (entry.Checked()) text += entry.Caption() + ' ';
    return text + std::to_string(form.PriorityChoice) + ", row " + std::to_string(form.List1.ListIndex()) + " of " +
           std::to_string(form.List1.ListCount());
  }

  // The names of the processes that the program ended, in the order of their ends.
  Texts Ended() {
    Texts names;
    for (const auto id : desktop.terminated) names.push_back(desktop.ProcessById(id).name);
    return names;
  }

  void ExpectLastBox(const std::string& text, std::uint32_t flags, const std::string& title = "Velmaro") const {
    ASSERT_FALSE(desktop.boxes.empty());
    const auto& box = desktop.boxes.back();
    EXPECT_EQ(std::tuple(box.text, box.flags, box.title), std::tuple(text, flags, title));
  }

  void TearDown() override {
    desktop.CompareWithModels();
    EXPECT_EQ(desktop.misuse, Texts{});
    EXPECT_TRUE(desktop.OpenHandles() == 0 && desktop.openKeys.empty() && desktop.memory.live.empty());
    EXPECT_TRUE(desktop.answers.empty() && desktop.choices.empty() && desktop.picks.empty() && desktop.script.empty())
        << "the user was never asked";
  }
};

}  // namespace velmaro

using namespace std::string_literals;
using namespace velmaro;
using namespace simulated;
