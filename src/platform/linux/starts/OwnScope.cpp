#include "platform/linux/starts/OwnScope.h"

#include <unistd.h>

#include <chrono>

#include "platform/kernel32.h"
#include "platform/linux/desktop/RunToEnd.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/ground/Words.h"
#include "platform/linux/starts/Command.h"

namespace onlinux {
namespace {

using Clock = std::chrono::steady_clock;

bool IsInGroup(const std::string& part) { return ReadWhole("/proc/self/cgroup").find('/' + part) != std::string::npos; }

}  // namespace

std::string TakeScope() {
  constexpr std::chrono::seconds limit{1};
  constexpr std::uint32_t pause = 2;  // milliseconds
  // Elsewhere the programs beside it are in the group that it has, and would be in another one than the program's.
  if (!IsInGroup("user@" + std::to_string(::getuid()) + ".service/")) return {};
  const auto asker = FindFile("busctl");
  if (!asker.starts_with('/')) return {};
  const auto process = std::to_string(::getpid());
  auto scope = "velmaro-" + process + ".scope";
  // A weight, whichever, makes the manager share the processor out among the groups beside this one.
  auto words = SplitWords(
      "--user --auto-start=no call org.freedesktop.systemd1 /org/freedesktop/systemd1 org.freedesktop.systemd1.Manager "
      "StartTransientUnit ssa(sv)a(sa(sv)) " +
      scope + " fail 3 PIDs au 1 " + process + " CPUWeight t 100 CollectMode s inactive-or-failed 0");
  words.insert(words.begin(), asker);
  const auto code = RunSilently(words, limit);
  // It answers before it is done.
  const auto end = Clock::now() + limit;
  while (code == 0 && Clock::now() < end) {
    if (IsInGroup(scope)) return scope;
    platform::Sleep(pause);
  }
  return {};
}

}  // namespace onlinux
