#include <cstdio>
#include <cstdlib>

#include "../ListForm.h"
#include "../Times.h"
#include "Children.h"
#include "Compare.h"
#include "platform/linux/Start.h"
#include "process/WalkProcesses.h"
#include "runtime/Application.h"

namespace {

constexpr int IdleCount = 2000;

void RefreshList(velmaro::ListBox& list) {
  const velmaro::ListBox::Refill refill(list);
  velmaro::WalkProcesses("", 0, true, &list);
}

template <class Work>
void CompareWith(const std::string& name, int rounds, velmaro::ListBox& list, Work work) {
  Way refresh{"list refresh"};
  Way other{name};
  for (int i = 0; i < rounds; ++i) {
    refresh.times.push_back(MillisecondsOf([&] { RefreshList(list); }));
    other.times.push_back(MillisecondsOf(work));
  }
  if (list.ListCount() < IdleCount) throw Failure("rows are missing in the list");
  PrintRatio(refresh, other);
}

void CompareWithViewer(std::vector<std::string> words, velmaro::ListBox& list) {
  std::string name;
  for (const auto& word : words) name += (name.empty() ? "" : " ") + word;
  const auto path = onlinux::FindFile(words.front());
  if (path.empty()) {
    std::printf("%s is not installed: left out\n", words.front().c_str());
    return;
  }
  words.front() = path;
  CompareWith(name, 11, list, [&] {
    if (!Reap(StartSilent(words))) throw Failure(name + " did not end well");
  });
}

}  // namespace

void CompareWalks() {
  const IdleChildren idle(IdleCount);
  velmaro::Application application;
  auto& list = application.New<ListForm>().list;
  const auto haveProgram = HaveProgram();
  std::printf("%d processes, %d of them idle children of this program\n", BareWalk(haveProgram), IdleCount);
  CompareWith("bare read of the same files", 31, list, [&] {
    if (BareWalk(haveProgram) < IdleCount) throw Failure("the bare read misses processes");
  });
  CompareWithViewer({"ps", "-eo", "pid,ni,comm"}, list);
  CompareWithViewer({"top", "-b", "-n", "1"}, list);
  if (!onlinux::FindFile("htop").empty() && std::system("htop --help 2>&1 | grep -qi batch") != 0)
    std::printf("htop has no batch mode: left out\n");
}
