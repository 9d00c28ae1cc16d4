#include "process/KillLists.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdlib>

#include "NaiveMatch.h"
#include "platform/simulated/Desktop.h"
#include "runtime/Application.h"
#include "mainform/formVelmaro.h"

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
  // Lists in UTF-16 are for tests that know what stands in them.
  if (list.starts_with("\xFF\xFE") || list.starts_with("\xFE\xFF")) return 0;
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
