#include "platform/windows/peers/FormMenus.h"

#include "platform/windows/ground/Codepage.h"

namespace windows {
namespace {

constexpr UINT FirstId = 0x8000;

void Empty(HMENU native) {
  // Removing leaves the popups alive; deleting would end them with their entry.
  while (::RemoveMenu(native, 0, MF_BYPOSITION)) continue;
}

std::wstring TextFor(const velmaro::Menu& menu) {
  const auto shortcut = velmaro::ShortcutText(menu.Shortcut());
  return platform::Widen(shortcut.empty() ? menu.Caption() : menu.Caption() + '\t' + shortcut, platform::Nul::Escaped);
}

}  // namespace

FormMenus::FormMenus(const std::vector<velmaro::Menu*>& bar) : top_(bar) {
  if (bar.empty()) return;
  for (auto* menu : bar) AddItem(*menu);
  for (const auto& item : items_)
    if (item.popup) Fill(item.popup.get(), item.menu->Entries());
  bar_.Reset(::CreateMenu());
  Fill(bar_.get(), top_);
}

FormMenus::~FormMenus() {
  if (bar_) Empty(bar_.get());
  for (const auto& item : items_)
    if (item.popup) Empty(item.popup.get());
}

void FormMenus::AddItem(velmaro::Menu& menu) {
  items_.push_back({&menu, OwnedMenu(menu.Entries().empty() ? nullptr : ::CreatePopupMenu())});
  for (auto* entry : menu.Entries()) AddItem(*entry);
}

void FormMenus::Fill(HMENU native, const std::vector<velmaro::Menu*>& entries) const {
  Empty(native);
  for (const auto* entry : entries)
    if (entry->Visible()) Append(native, *entry);
}

void FormMenus::Append(HMENU native, const velmaro::Menu& entry) const {
  if (entry.IsSeparator()) {
    ::AppendMenuW(native, MF_SEPARATOR, 0, nullptr);
    return;
  }
  const auto popup = PopupOf(entry);
  const auto id = popup ? reinterpret_cast<UINT_PTR>(popup) : IdOf(&entry);
  ::AppendMenuW(native, MF_STRING | (popup ? MF_POPUP : 0U) | (entry.Checked() ? MF_CHECKED : 0U), id,
                TextFor(entry).c_str());
}

HMENU FormMenus::PopupOf(const velmaro::Menu& menu) const {
  for (const auto& item : items_)
    if (item.menu == &menu) return item.popup.get();
  return nullptr;
}

velmaro::Menu* FormMenus::Find(UINT id) const {
  return id >= FirstId && id - FirstId < items_.size() ? items_[id - FirstId].menu : nullptr;
}

UINT FormMenus::IdOf(const velmaro::Menu* menu) const {
  for (std::size_t i = 0; i < items_.size(); ++i)
    if (items_[i].menu == menu) return FirstId + static_cast<UINT>(i);
  return 0;
}

void FormMenus::Update(const velmaro::Menu& menu) {
  if (menu.Parent())
    Fill(PopupOf(*menu.Parent()), menu.Parent()->Entries());
  else
    Fill(bar_.get(), top_);
}

}  // namespace windows
