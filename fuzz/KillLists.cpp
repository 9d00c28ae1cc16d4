#include "process/KillLists.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdlib>

#include "NaiveMatch.h"
#include "platform/simulated/Desktop.h"
#include "runtime/Application.h"
#include "startup/formVelmaro.h"

namespace {

// The answer of the guard, worked out again from the bytes of a no-kill list.
bool IsProtected(const std::string& name, std::string list) {
  for (std::size_t at = 0; (at = list.find("\r\n", at)) != std::string::npos; ++at) list.erase(at + 1, 1);
  list += '\r';
  for (std::size_t end = 0; (end = list.find('\r')) != std::string::npos; list.erase(0, end + 1)) {
    auto line = platform::LowerCase(list.substr(0, end));
    line.erase(0, line.find_first_not_of(' '));
    line.erase(line.find_last_not_of(' ') + 1);
    if (line.empty() || line[0] == ';') continue;
    if (naive::Match(platform::LowerCase(name), "*" + line).value_or(true)) return true;
  }
  return false;
}

}  // namespace

// Whatever both lists hold: the guard answers as its file says, and a kill run ends nothing that the file covers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  simulated::Desktop desktop;
  velmaro::Application application;
  auto& form = application.Default<velmaro::formVelmaro>();
  desktop.largestRead = input.ConsumeIntegralInRange<std::size_t>(1, 64);
  auto name = input.ConsumeRandomLengthString(40);
  name.erase(std::find(name.begin(), name.end(), '\0'), name.end());
  for (const auto& running : {name, std::string("explorer.exe"), std::string("mame.exe")}) desktop.AddProcess(running);
  desktop.files["C:\\kill"].bytes = input.ConsumeRandomLengthString();
  const auto list = desktop.files["C:\\spare"].bytes = input.ConsumeRemainingBytesAsString();
  form.KillListPath = "C:\\kill";
  form.QuietMode = true;
  velmaro::NoKillListPath = "C:\\spare";
  if (velmaro::CanKillProcess(name) == IsProtected(name, list)) std::abort();
  form.mnuFileKillProcesses_Click();
  for (const auto id : desktop.terminated)
    if (IsProtected(desktop.ProcessById(id).name, list)) std::abort();
  if (!desktop.misuse.empty() || desktop.OpenHandles() != 0) std::abort();
  return 0;
}
