#include <fcntl.h>

#include "Checks.h"
#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/linux/processes/Script.h"

// The first byte ends the status line, and what is behind it is the command line: what is told of the process stands in
// them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Folder proc;
  static const bool made = std::filesystem::create_directory(proc.Path("7"));
  fuzz::Expect(made && std::filesystem::exists(proc.Path("7")));
  const auto text = fuzz::Text(data, size);
  const auto end = text.find('\n');
  const auto stat = text.substr(0, end);
  const auto words = '\0' + (end == std::string::npos ? std::string() : text.substr(end + 1)) + '\0';
  proc.Write("7/stat", stat);
  proc.Write("7/cmdline", std::string_view(words).substr(1));
  const onlinux::Descriptor folder(::open(proc.Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const auto process = onlinux::ReadProcess({folder.get(), 7, "7", 0});
  if (!process) return 0;
  const auto& [state, parent, terminal, flags, nice, threads, start, policy, shortName] = process->status;
  fuzz::Expect(stat.find('(' + shortName + ')') != std::string::npos);
  return 0;
}
