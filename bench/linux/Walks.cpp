#include <cstdio>
#include <cstdlib>

#include "../ListForm.h"
#include "Children.h"
#include "Clock.h"
#include "Compare.h"
#include "platform/linux/starts/Start.h"
#include "process/WalkProcesses.h"
#include "runtime/Application.h"

namespace {

constexpr int IdleCount = 2000;

void RefreshList(velmaro::ListBox& list) {
  const velmaro::ListBox::Refill refill(list);
  velmaro::WalkProcesses("", 0, true, &list);
}

template <class Work>
double ProcessorTimeOf(Work work) {
  const auto before = Used();
  work();
  return Used() - before;
}

template <class Work>
void CompareWith(const std::string& name, int rounds, velmaro::ListBox& list, double wanted, Work work) {
  Way refresh{"list refresh, processor time"};
  Way other{name};
  RefreshList(list);  // the first one of a program fills the list; what counts is what all others cost
  for (int i = 0; i < rounds; ++i) {
    refresh.times.push_back(ProcessorTimeOf([&] { RefreshList(list); }));
    other.times.push_back(ProcessorTimeOf(work));
  }
  if (list.ListCount() < IdleCount) throw Failure("rows are missing in the list");
  PrintRatio(refresh, other, wanted);
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
  CompareWith(name, 11, list, 0, [&] {
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
  CompareWith("bare read of status and path", 65, list, 0.7, [&] {
    if (BareWalk(haveProgram) < IdleCount) throw Failure("the bare read misses processes");
  });
  CompareWithViewer({"ps", "-eo", "pid,ni,comm"}, list);
  CompareWithViewer({"top", "-b", "-n", "1"}, list);
  if (!onlinux::FindFile("htop").empty() && std::system("htop --help 2>&1 | grep -qi batch") != 0)
    std::printf("htop has no batch mode: left out\n");
}
