#include "process/KnownEmulators.h"

#include <algorithm>

#include "platform/identity.h"
#include "platform/machine.h"

namespace velmaro {
namespace {

constexpr std::string_view KnownEmulatorTable =
    "bleem.exe;bleem!.exe;vgs.exe;cvgs.exe;tnkxfs.dat;psemu.exe;psemupro.exe;epsxe.exe;zsnesw.exe;snes9xw.exe;"
    "mame32.exe;mame.exe;gens.exe;nemu.exe;ultrahle.exe;rew.exe;impactemu.exe;nesticle.exe;daedalus.exe;adripsx.exe;"
    "pec.exe;fpse.exe;blade.exe;project64.exe;nemu64.exe;no$gmb.exe;igba.exe;vgba.exe;visualboyadvance.exe;dboy.exe;"
    "boycottadvance.exe;bgb.exe;zinc.exe;adriile.exe;psinex pc emulator.exe;fanbuild.exe;visualboyadvance-sdl.exe;"
    "boyca.exe;neoragex.exe;winkawaks.exe;pcsx.exe;1964.exe;nebula.exe;epsxecutor.exe;pec.exe;vivanonno.exe";

bool HasEntry(std::string_view table, std::string_view entry) {
  for (std::size_t start = 0; start < table.size();) {
    const auto end = std::min(table.find(';', start), table.size());
    if (table.substr(start, end - start) == entry) return true;
    start = end + 1;
  }
  return false;
}

}  // namespace

bool IsKnownEmulator(std::string_view processName) {
  const auto separator = processName.rfind(platform::PathSeparator());
  const auto base = separator == std::string_view::npos ? processName : processName.substr(separator + 1);
  if (platform::NamesAreWholeParts())
    return HasEntry(KnownEmulatorTable, base) || HasEntry(platform::NativeEmulators(), base);
  return KnownEmulatorTable.find(base) != std::string_view::npos;
}

}  // namespace velmaro
