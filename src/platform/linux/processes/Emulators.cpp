#include "platform/identity.h"

namespace platform {

// By the files of their programs, as distributions and their makers name them.
std::string_view NativeEmulators() {
  return "86box;ares;atari800;azahar;basiliskii;blastem;bochs;bochs-bin;bsnes;cap32;cemu;cen64;citra;citra-qt;"
         "desmume;desmume-cli;desmume-glade;dolphin-emu;dolphin-emu-nogui;dolphin-emu-qt2;dosbox;dosbox-debug;"
         "dosbox-staging;dosbox-x;dosemu.bin;dosemu2.bin;duckstation;duckstation-nogui;duckstation-qt;"
         "fceux;flycast;fs-uae;fuse;fuse-gtk;fuse-sdl;gngb;hatari;higan;jzintv;mame;mednafen;mednaffe;melonds;mesen;"
         "mgba;"
         "mgba-qt;mupen64plus;nestopia;openmsx;oricutron;osmose;osmose-emulator;pcem;pcsx2;pcsx2-qt;pcsxr;"
         "ppsspp;ppsspp-qt;ppsspp-sdl;ppssppqt;ppssppsdl;retroarch;rmg;rpcs3;ryujinx;sameboy;"
         "scummvm;sheepshaver;simcoupe;snes9x;snes9x-gtk;snes9x-qt;stella;tiemu;tilem2;vba;vbam;virtualjaguar;"
         "visualboyadvance;visualboyadvance-m;vsid;x128;x64;x64dtv;x64sc;xcbm2;xcbm5x0;xemu;xpet;xplus4;xroar;xscpu64;"
         "xvic;yabause;yabause-gtk;yabause-qt;yuzu;yuzu-cmd;zesarux;zsnes";
}

}  // namespace platform
