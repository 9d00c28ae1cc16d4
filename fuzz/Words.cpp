#include "platform/linux/ground/Words.h"

#include <cerrno>

#include "Checks.h"
#include "platform/linux/starts/Command.h"

namespace {

std::string Quoted(const std::string& word) {
  std::string quoted = "\"";
  for (const char c : word) quoted += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
  return quoted + '"';
}

}  // namespace

// A line gives words that stand in it; words in quotes come back as they were; what is started is there.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto line = fuzz::Text(data, size);
  std::erase(line, '\0');
  std::string again;
  const auto words = onlinux::SplitWords(line);
  for (const auto& word : words) {
    fuzz::Expect(fuzz::IsCutFrom(line, word));
    again += Quoted(word) + "\t";
  }
  fuzz::Expect(onlinux::SplitWords(again) == words);
  onlinux::Refusal refusal;
  if (const auto command = onlinux::Resolve(onlinux::SplitCommand(line), refusal))
    fuzz::Expect(onlinux::IsProgram(command->path) && !command->words.empty());
  else
    fuzz::Expect(refusal.error == ENOENT || refusal.error == EACCES);
  return 0;
}
