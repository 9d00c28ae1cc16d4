#include "memory/formFreeMem.h"

#include <algorithm>

#include "desktop/Credits.h"
#include "desktop/modFiles.h"
#include "mainform/formVelmaro.h"
#include "runtime/Application.h"
#include "runtime/Numbers.h"

namespace velmaro {
namespace {

constexpr double Kilobyte = 1024;
constexpr double Megabyte = 1048576;
// The slider's positions are table slots of a run, and one less than there are.
constexpr std::uint64_t LargestTarget = 2047;

}  // namespace

formFreeMem::formFreeMem()
    : Form({.Caption = "Free Memory",
            .ClientWidth = 4680,
            .ClientHeight = 1485,
            .BorderStyle = velmaro::BorderStyle::FixedSingle,
            .MaxButton = false,
            .StartUpPosition = velmaro::StartUpPosition::CenterScreen,
            .Icon = velmaro::Picture::Memory}),
      Picture1(*this, {.At = {0, 45, 4605, 330}, .TabIndex = 0, .AccessibleName = "Free memory"}, true),
      Picture2(Picture1, {.At = {-30, -15, 660, 495},
                          .TabIndex = 2,
                          .BackColor = SystemColor::Highlight,
                          .ForeColor = SystemColor::WindowText}),
      lblFreeMem(Picture2,
                 {.Caption = "0%",
                  .At = {30, 30, 615, 225},
                  .TabIndex = 6,
                  .Font = {.Name = "MS Sans Serif", .Size = 9.75F},
                  .ForeColor = SystemColor::HighlightText},
                 {.Alignment = Alignment::Center, .Transparent = true}),
      HScroll1(*this, {.At = {15, 435, 3225, 285}, .TabIndex = 3, .AccessibleName = "Megabytes to free"}),
      btnFree(*this, {.Caption = "Free", .At = {3285, 375, 1320, 420}, .TabIndex = 4}),
      lblStatus(*this, {.At = {-15, 900, 4185, 420}, .TabIndex = 1}),
      Image1(*this, {.At = {4155, 945, 480, 480}, .Picture = velmaro::Picture::Memory}),
      lblCredits(*this, {.Caption = credits::OneLine,
                         .At = {45, 1185, 1620, 225},
                         .TabIndex = 5,
                         .Font = {.Name = "MS Sans Serif", .Underline = true},
                         .ForeColor = Rgb(0, 0, 255),
                         .ToolTipText = credits::HomePage}),
      Timer1(*this, {.Interval = 3000}) {
  Load = [this] { Form_Load(); };
  Unload = [this](bool& cancel) { Form_Unload(cancel); };
  Picture1.Click = [this] { Picture1_Click(); };
  Picture2.Click = [this] { Picture2_Click(); };
  HScroll1.Change = [this] { HScroll1_Change(); };
  btnFree.Click = [this] { btnFree_Click(); };
  lblStatus.Click = [this] { lblStatus_Click(); };
  lblCredits.Click = [this] { lblCredits_Click(); };
  Timer1.Tick = [this] { Timer1_Timer(); };
}

void formFreeMem::Form_Load() {
  RefreshMemoryGauge();
  Resume([&] { HScroll1.SetValue(HScroll1.Max()); });
}

void formFreeMem::ShowMemoryStatus() {
  platform::GlobalMemoryStatus(memStatus);
  const auto free = static_cast<double>(memStatus.dwAvailPhys);
  const auto total = static_cast<double>(memStatus.dwTotalPhys);
  Resume([&] {
    lblStatus.SetCaption("Free: " + Format(free / Kilobyte, "###0.0 KB") + " - Usage: " +
                         Format(1 - free / total, "#0.0%") + " of " + Format(total / Megabyte, "#0.0") + " MB");
  });
  Resume([&] { SetCaption(std::to_string(memStatus.dwAvailPhys / 1024) + "KB Free Memory"); });
}

// The part of all memory that is free. Throws RuntimeError where the figures are missing.
double formFreeMem::FreeShare() const {
  if (memStatus.dwTotalPhys == 0) throw RuntimeError("there is no memory to take a share of");
  return static_cast<double>(memStatus.dwAvailPhys) / static_cast<double>(memStatus.dwTotalPhys);
}

void formFreeMem::RefreshMemoryGauge() {
  stopRequested = true;
  ShowMemoryStatus();
  const auto used = memStatus.dwTotalPhys - std::min(memStatus.dwAvailPhys, memStatus.dwTotalPhys);
  Resume([&] { HScroll1.SetMax(static_cast<std::int64_t>(std::min(used / 1048576, LargestTarget))); });
  if (HScroll1.Value() > HScroll1.Max()) Resume([&] { HScroll1.SetValue(HScroll1.Max()); });
  Resume([&] { Picture2.Move({0, 0, static_cast<Twips>(Picture1.Width() * FreeShare()), Picture2.Height()}); });
  Resume([&] { lblFreeMem.Move({0, lblFreeMem.Top(), Picture2.Width(), lblFreeMem.Height()}); });
  Resume([&] { lblFreeMem.SetCaption(Format(FreeShare(), "#0.0%")); });
  Resume(
      [&] { lblFreeMem.SetToolTipText(Format(static_cast<double>(memStatus.dwAvailPhys) / Kilobyte, "#,##0.0 KB")); });
}

void formFreeMem::HScroll1_Change() {
  if (HScroll1.Value() > HScroll1.Max()) Resume([&] { HScroll1.SetValue(HScroll1.Max()); });
  btnFree.SetCaption("Free " + std::to_string(HScroll1.Value()) + " MB");
}

void formFreeMem::Timer1_Timer() { RefreshMemoryGauge(); }

void formFreeMem::lblStatus_Click() { RefreshMemoryGauge(); }

void formFreeMem::Picture1_Click() { RefreshMemoryGauge(); }

void formFreeMem::Picture2_Click() { RefreshMemoryGauge(); }

void formFreeMem::lblCredits_Click() { ShowCreditsBox(); }

void formVelmaro::mnuFileFreeMem_Click() { App().Default<formFreeMem>().Show(); }

void formVelmaro::btnFreeMem_Click() { mnuFileFreeMem_Click(); }

}  // namespace velmaro
