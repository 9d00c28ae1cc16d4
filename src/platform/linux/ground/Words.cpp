#include "platform/linux/ground/Words.h"

namespace onlinux {

std::vector<char*> Pointers(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const auto& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> SplitWords(std::string_view line, std::string_view escaped) {
  std::vector<std::string> words;
  bool open = false;  // a word has begun, which may be empty
  char quote = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    const char next = i + 1 < line.size() ? line[i + 1] : '\0';
    if (quote == 0 && (c == ' ' || c == '\t' || c == '\n')) {
      open = false;
      continue;
    }
    if (!open) words.emplace_back();
    open = true;
    if (c == quote) {
      quote = 0;
    } else if (quote == 0 && (c == '"' || c == '\'')) {
      quote = c;
    } else if (c == '\\' && next != '\0' && (quote == 0 || (quote == '"' && escaped.find(next) != escaped.npos))) {
      words.back() += next;
      ++i;
    } else {
      words.back() += c;
    }
  }
  return words;
}

}  // namespace onlinux
