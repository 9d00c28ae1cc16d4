#include "platform/linux/files/SettingsText.h"

#include <algorithm>

namespace onlinux {
namespace {

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

}  // namespace

Settings ParseSettings(std::string_view text) {
  Settings values;
  while (!text.empty()) {
    const auto line = text.substr(0, text.find('\n'));
    const auto equals = line.find('=');
    if (equals != std::string_view::npos)
      values[Unescaped(line.substr(0, equals))] = Unescaped(line.substr(equals + 1));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
  return values;
}

std::string SettingsText(const Settings& values) {
  std::string text;
  for (const auto& [key, value] : values) text += Escaped(key, true) + '=' + Escaped(value, false) + '\n';
  return text;
}

}  // namespace onlinux
