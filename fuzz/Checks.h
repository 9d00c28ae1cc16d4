#pragma once

#include <stdlib.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace fuzz {

inline void Expect(bool holds) {
  if (!holds) std::abort();
}

inline std::string Text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// True where `part` is what is left of `whole` when some of its bytes are cut.
inline bool IsCutFrom(std::string_view whole, std::string_view part) {
  for (const char byte : whole)
    if (!part.empty() && part.front() == byte) part.remove_prefix(1);
  return part.empty();
}

// A folder of the target's own, which the program's functions read as they would the system's.
class Folder {
 public:
  ~Folder() { std::filesystem::remove_all(path_); }
  std::string Path(const std::string& name = {}) const { return name.empty() ? path_ : path_ + '/' + name; }
  void Write(const std::string& name, std::string_view bytes) const { std::ofstream(Path(name)) << bytes; }

 private:
  char pattern_[16] = "/tmp/fuzzXXXXXX";
  std::string path_ = ::mkdtemp(pattern_);
};

}  // namespace fuzz
