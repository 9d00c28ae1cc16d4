#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/kernel32.h"
#include "platform/linux/ground/Descriptor.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/ground/UserFolder.h"
#include "platform/machine.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using Values = std::map<std::string, std::string>;

fs::path FileOf(const std::string& application, const std::string& section) {
  return onlinux::UserFolder(application) / (LowerCase(section) + ".conf");
}

// A value takes one line, and its key ends at the first "=".
std::string Escaped(std::string_view text, bool isKey) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\n')
      escaped += "\\n";
    else if (c == '\r')
      escaped += "\\r";
    else if (c == '\\')
      escaped += "\\\\";
    else if (c == '=' && isKey)
      escaped += "\\e";
    else
      escaped += c;
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char code = text[++i];
    plain += code == 'n' ? '\n' : code == 'r' ? '\r' : code == 'e' ? '=' : code;
  }
  return plain;
}

Values Parse(std::string_view text) {
  Values values;
  while (!text.empty()) {
    const auto line = text.substr(0, text.find('\n'));
    const auto equals = line.find('=');
    if (equals != std::string_view::npos)
      values[Unescaped(line.substr(0, equals))] = Unescaped(line.substr(equals + 1));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
  return values;
}

bool WriteValues(const std::string& path, const Values& values) {
  std::string text;
  for (const auto& [key, value] : values) text += Escaped(key, true) + '=' + Escaped(value, false) + '\n';
  std::string temporary;
  const OwnedFile file(CreateFileBeside(path, temporary));
  if (!file) return false;
  // The file can be another user's by an accident; the values matter more then than its owner.
  if (WriteFile(file.get(), text.data(), text.size()) && FlushFileBuffers(file.get()) &&
      (MoveFileReplace(temporary, path) || ::rename(temporary.c_str(), path.c_str()) == 0))
    return true;
  DeleteFileA(temporary);
  return false;
}

}  // namespace

std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key) {
  const auto values = Parse(onlinux::ReadWhole(FileOf(application, section)));
  const auto at = values.find(key);
  return at == values.end() ? std::nullopt : std::optional(at->second);
}

bool WriteSetting(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& value) {
  const auto path = FileOf(application, section);
  if (!onlinux::MakeUserFolder(path.parent_path())) return false;
  // Two windows of the program that write at once must not undo each other's values.
  const onlinux::Descriptor folder(::open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder || ::flock(folder.get(), LOCK_EX) != 0) return false;
  std::error_code error;
  const auto text = onlinux::ReadWhole(path);
  // A file that is there and can't be read holds values that must not be lost.
  if (text.empty() && fs::exists(path, error) && fs::file_size(path, error) != 0) return false;
  auto values = Parse(text);
  if (const auto at = values.find(key); at != values.end() && at->second == value) return true;
  values[key] = value;
  return WriteValues(path, values);
}

}  // namespace platform
