#include "process/KillLists.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdlib>

#include "NaiveList.h"
#include "mainform/formVelmaro.h"
#include "platform/simulated/Desktop.h"
#include "runtime/Application.h"

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
  // Marks behind the first one, and lists in UTF-32, are for tests that know what stands in them.
  for (const auto* mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"})
    if (list.find(mark, 1) != std::string::npos || !naive::ListText(list)) return 0;
  form.KillListPath = "C:\\kill";
  form.QuietMode = true;
  velmaro::NoKillListPath = "C:\\spare";
  if (velmaro::CanKillProcess(name) == naive::Covers(list, name)) std::abort();
  form.mnuFileKillProcesses_Click();
  for (const auto id : desktop.terminated)
    if (naive::Covers(list, desktop.ProcessById(id).name)) std::abort();
  if (!desktop.misuse.empty() || desktop.OpenHandles() != 0) std::abort();
  return 0;
}
