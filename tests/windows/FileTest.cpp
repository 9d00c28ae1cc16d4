#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

#include "Drive.h"

namespace drive {
namespace {

TEST(FileTest, NeedsSystemLibrariesAloneAndIsHardened) {
  // The 32-bit program is read here, also where a 64-bit one stands in for it in the other tests.
  std::ifstream file(std::filesystem::path(Beside(L"..\\windows\\velmaro.exe")), std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  const auto* const headers =
      reinterpret_cast<const IMAGE_NT_HEADERS32*>(bytes.empty() ? nullptr : ::ImageNtHeader(bytes.data()));
  ASSERT_TRUE(headers) << "velmaro.exe for 32-bit Windows is not built";
  ASSERT_EQ(headers->FileHeader.Machine, IMAGE_FILE_MACHINE_I386);
  EXPECT_TRUE(headers->FileHeader.Characteristics & IMAGE_FILE_LARGE_ADDRESS_AWARE);
  EXPECT_FALSE(headers->FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
  EXPECT_TRUE(headers->OptionalHeader.DllCharacteristics & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
  EXPECT_TRUE(headers->OptionalHeader.DllCharacteristics & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
  EXPECT_GT(headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC].Size, 0U);
  EXPECT_EQ(headers->FileHeader.NumberOfSymbols, 0U) << "it is not stripped";

  ULONG size = 0;
  const auto* import = static_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
      ::ImageDirectoryEntryToData(bytes.data(), FALSE, IMAGE_DIRECTORY_ENTRY_IMPORT, &size));
  ASSERT_TRUE(import);
  const std::set<std::string> system{"advapi32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "user32.dll"};
  for (; import->Name != 0; ++import) {
    std::string name =
        static_cast<const char*>(::ImageRvaToVa(::ImageNtHeader(bytes.data()), bytes.data(), import->Name, nullptr));
    for (auto& letter : name) letter = static_cast<char>(std::tolower(letter));
    EXPECT_TRUE(system.count(name)) << name;
  }
}

}  // namespace
}  // namespace drive
