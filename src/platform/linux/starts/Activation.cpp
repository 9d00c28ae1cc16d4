#include "platform/linux/starts/Activation.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/linux/processes/ServiceManager.h"

namespace onlinux {
namespace {

constexpr std::string_view Ending = ".desktop";

std::string_view WithoutFolder(std::string_view path) { return path.substr(path.rfind('/') + 1); }

bool IsName(std::string_view text) {
  const auto fits = [](char one) {
    return (one >= 'a' && one <= 'z') || (one >= 'A' && one <= 'Z') || (one >= '0' && one <= '9') || one == '.' ||
           one == '-' || one == '_';
  };
  return text.find('.', 1) != std::string_view::npos && std::ranges::all_of(text, fits);
}

}  // namespace

std::vector<std::string> ActivatedApps(const std::vector<std::string>& words) {
  std::vector<std::string> apps;
  const auto starter = words.empty() ? std::string_view() : WithoutFolder(words.front());
  const bool takesNames = starter == "gtk-launch" || starter == "gapplication";
  for (std::size_t i = 1; i < words.size(); ++i) {
    auto word = WithoutFolder(words[i]);
    const bool isEntry = word.ends_with(Ending);
    if (isEntry) word.remove_suffix(Ending.size());
    if ((isEntry || takesNames) && IsName(word)) apps.emplace_back(word);
  }
  return apps;
}

std::vector<std::string> AppsToCome(const std::vector<std::string>& words) {
  auto apps = ActivatedApps(words);
  std::erase_if(apps, [](const std::string& app) { return OwnerOnBus(app) != 0; });
  return apps;
}

}  // namespace onlinux
