#include "launcher/Settings.h"

#include "platform/machine.h"

namespace velmaro {
namespace {

constexpr auto SettingsApplication = "Velmaro";
constexpr auto SettingsSection = "Settings";

}  // namespace

std::string GetSetting(const std::string& key, const std::string& defaultValue) {
  return platform::ReadSetting(SettingsApplication, SettingsSection, key).value_or(defaultValue);
}

void SaveSetting(const std::string& key, const std::string& value) {
  platform::WriteSetting(SettingsApplication, SettingsSection, key, value);
}

}  // namespace velmaro
