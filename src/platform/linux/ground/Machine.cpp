#include "platform/machine.h"

#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "platform/kernel32.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/ground/Words.h"

namespace platform {
namespace {

bool IsFile(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

}  // namespace

std::string CommandLine() {
  auto words = onlinux::ReadWhole("/proc/self/cmdline");
  words.erase(0, words.find('\0') + 1);
  const auto end = words.find('\0');
  const bool isOneWord = end != std::string::npos && end + 1 == words.size();
  if (!isOneWord || IsFile(words.substr(0, end))) return words;
  // A single word can hold the whole line, as a file of shortcuts or a makefile passes it on.
  std::string split;
  for (const auto& word : onlinux::SplitWords(words.substr(0, end))) split += word + '\0';
  return split;
}

char PathSeparator() { return '/'; }

bool SwitchesAreWords() { return true; }

bool LineFeedEndsLine() { return true; }

std::uint32_t AppInstance() { return 1; }

void Sleep(std::uint32_t milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

}  // namespace platform
