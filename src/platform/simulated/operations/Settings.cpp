#include <algorithm>
#include <utility>

#include "platform/advapi32.h"
#include "platform/machine.h"
#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

namespace platform {

std::string CommandLine() { return TheDesktop().commandLine; }

std::string AppFolder() { return TheDesktop().appFolder; }

char PathSeparator() { return '\\'; }

void BeginProgram() {}

bool AnswersTheShell(std::string_view) { return false; }

bool SwitchesAreWords() { return false; }

bool LineFeedEndsLine() { return false; }

std::uint32_t AppInstance() { return 0x400000; }

std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key) {
  const auto& settings = TheDesktop().settings;
  const auto at = settings.find(application + '\\' + section + '\\' + key);
  return at == settings.end() ? std::nullopt : std::optional(at->second);
}

bool WriteSetting(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& value) {
  auto& desktop = TheDesktop();
  if (desktop.settingsFail) return false;
  desktop.settings[application + '\\' + section + '\\' + key] = value;
  return true;
}

std::int32_t RegOpenKeyA(std::uint32_t root, const std::string& subKey, std::uint32_t& key) {
  auto& desktop = TheDesktop();
  const auto keys = desktop.registry.find(root);
  if (keys == desktop.registry.end() || !keys->second.contains(subKey)) return ERROR_FILE_NOT_FOUND;
  key = desktop.NewHandle();
  desktop.openKeys[key] = {root, subKey};
  return ERROR_SUCCESS;
}

std::int32_t RegQueryValueExA(std::uint32_t key, const std::string& value, std::uint32_t& type, char* data,
                              std::uint32_t& size) {
  auto& desktop = TheDesktop();
  const auto open = desktop.openKeys.find(key);
  if (open == desktop.openKeys.end()) return 6;
  const auto& values = desktop.registry[open->second.first][open->second.second];
  const auto at = values.find(value);
  if (at == values.end()) return ERROR_FILE_NOT_FOUND;
  const auto room = std::exchange(size, static_cast<std::uint32_t>(at->second.bytes.size()));
  type = at->second.type;
  if (data && room < size) return ERROR_MORE_DATA;
  if (data) std::ranges::copy(at->second.bytes, data);
  return ERROR_SUCCESS;
}

std::int32_t RegCloseKey(std::uint32_t key) {
  auto& desktop = TheDesktop();
  if (desktop.openKeys.erase(key) == 0) desktop.misuse.push_back("a key that is not open was closed");
  return desktop.closeKeyResult;
}

}  // namespace platform
