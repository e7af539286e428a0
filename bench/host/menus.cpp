#include "bench/host/menus.h"

#include <algorithm>
#include <utility>

#include "bench/host/text.h"

namespace bench {

Menus::Menus() {
  for (const char* name : {"File", "Edit", "View", "Insert", "Analysis", "Info", "Applications", "Tools",
                           "Window", "Help", "ActionMenu"})
    menus_.push_back({name, FromUtf8(name), {}});
}

Menus::Command& Menus::Add(const std::string& name, uiCmdCmdActFn action, uiCmdAccessFn access) {
  Command& command = commands_[name];
  if (command.id == 0) command.id = next_command_++;
  command.name = name;
  command.action = action;
  command.access = access;
  return command;
}

Menus::Command* Menus::Find(const std::string& name) {
  const auto found = commands_.find(name);
  return found == commands_.end() ? nullptr : &found->second;
}

Menus::Command* Menus::Find(uiCmdCmdId id) {
  for (auto& [name, command] : commands_)
    if (command.id == id) return &command;
  return nullptr;
}

bool Menus::AddMenu(Menu menu, const std::string& neighbour, bool behind) {
  const auto beside = std::ranges::find(menus_, neighbour, &Menu::name);
  if (FindMenu(menu.name) || beside == menus_.end()) return false;
  menus_.insert(behind ? beside + 1 : beside, std::move(menu));
  return true;
}

Menus::Menu* Menus::FindMenu(const std::string& name) {
  const auto found = std::ranges::find(menus_, name, &Menu::name);
  return found == menus_.end() ? nullptr : &*found;
}

bool Menus::IsAvailable(uiCmdAccessFn access) {
  return !access || access(ACCESS_MODE_NORMAL) == ACCESS_AVAILABLE;
}

bool Menus::Run(const std::string& name) {
  const Command* command = Find(name);
  if (!command || !IsAvailable(command->access)) return false;
  command->action(command->id, nullptr, nullptr);
  return true;
}

std::vector<Menus::PopupEntry> Menus::BuildPopup(const std::wstring& name) {
  popup_ = Popup{next_popup_++, name, {}};
  if (popup_action_) {
    ProName buffer{};
    std::ranges::copy(name.substr(0, PRO_NAME_SIZE - 1), buffer);
    popup_action_(buffer);
  }
  std::vector<PopupEntry> entries = std::move(popup_->entries);
  popup_.reset();
  std::erase_if(entries, [](const PopupEntry& entry) { return !IsAvailable(entry.access); });
  return entries;
}

std::optional<ProPopupMenuId> Menus::PopupBeingBuilt(const std::wstring& name) const {
  if (!popup_ || popup_->name != name) return std::nullopt;
  return popup_->id;
}

std::vector<Menus::PopupEntry>* Menus::EntriesOf(ProPopupMenuId popup) {
  return popup_ && popup_->id == popup ? &popup_->entries : nullptr;
}

}  // namespace bench
