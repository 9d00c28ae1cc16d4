#include "startup/CommandLine.h"

#include <algorithm>

#include "Checks.h"
#include "runtime/Text.h"

// Whatever the line is: nothing is made up that the line does not hold, and what is told keeps to its limits.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzz::Expect, fuzz::IsCutFrom, velmaro::Compare;
  const std::string folder = "C:\\Velmaro\\";
  const auto line = fuzz::Text(data, std::min<std::size_t>(size, 32767));
  const auto options = velmaro::ReadCommandLine(line, folder);
  const auto holds = [&](std::string_view text) { return velmaro::InStr(1, line, text, Compare::IgnoreCase) != 0; };
  Expect(options.help == holds("/?"));
  if (options.help) return 0;
  Expect(options.quiet == holds("/q"));
  Expect(options.windowStyle >= 0 && options.windowStyle <= 3);
  Expect(options.hideWindow != options.hideTitle.empty());
  Expect(options.hideTitle == "ePSXe" || IsCutFrom(line, options.hideTitle));
  for (const std::string_view path : {options.noKillListPath, options.killListPath})
    Expect(path.empty() || (path.find('\\') != std::string::npos &&
                            IsCutFrom(line, path.starts_with(folder) ? path.substr(folder.size()) : path)));
  Expect(IsCutFrom(line, options.target));
  Expect(velmaro::Trim(options.target) == options.target);
  return 0;
}
