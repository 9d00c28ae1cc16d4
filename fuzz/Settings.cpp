#include "Checks.h"
#include "platform/linux/files/SettingsText.h"

// Whatever the file holds: its values come back from the text that they are saved as, and any key and value do.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto bytes = fuzz::Text(data, size);
  auto values = onlinux::ParseSettings(bytes);
  for (const auto& [key, value] : values)
    fuzz::Expect(fuzz::IsCutFrom(bytes, key.substr(0, key.find_first_of("=\n\r"))));
  const auto middle = bytes.size() / 2;
  values[bytes.substr(0, middle)] = bytes.substr(middle);
  fuzz::Expect(onlinux::ParseSettings(onlinux::SettingsText(values)) == values);
  return 0;
}
