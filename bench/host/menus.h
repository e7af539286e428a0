// Commands, menus and popup menus, as an add-in registers them.
#pragma once

#include <ProNotify.h>
#include <ProPopupmenu.h>
#include <ProUICmd.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

class Menus {
 public:
  struct Command {
    uiCmdCmdId id = 0;
    std::string name;
    uiCmdCmdActFn action = nullptr;
    uiCmdAccessFn access = nullptr;
    std::string icon;
    bool designated = false;  // the user may put it where he likes
  };
  struct Button {
    std::string name;
    std::wstring label;
    std::wstring help;
    uiCmdCmdId command = 0;
  };
  struct Menu {
    std::string name;
    std::wstring label;
    std::vector<Button> buttons;
  };
  struct PopupEntry {
    std::wstring name;
    std::wstring label;
    std::wstring help;
    uiCmdCmdId command = 0;
    uiCmdAccessFn access = nullptr;
  };

  // With the menus that every session has.
  Menus();

  // A new command, or the one of that name with other functions: an add-in that is started again brings its
  // own.
  Command& Add(const std::string& name, uiCmdCmdActFn action, uiCmdAccessFn access);
  Command* Find(const std::string& name);
  Command* Find(uiCmdCmdId id);

  // Puts a menu beside another one. False when there is one of that name, or no neighbour.
  bool AddMenu(Menu menu, const std::string& neighbour, bool behind);
  Menu* FindMenu(const std::string& name);
  const std::vector<Menu>& All() const { return menus_; }

  // Runs a command as the user does. False when there is none of that name, or it isn't to be had now.
  bool Run(const std::string& name);

  // What the add-in is told when a popup menu is being built; null for nothing.
  void Notify(ProPopupmenuCreatePostAction action) { popup_action_ = action; }
  bool IsNotified() const { return popup_action_ != nullptr; }

  // Builds a popup menu as for the user, and gives the entries that he would see.
  std::vector<PopupEntry> BuildPopup(const std::wstring& name);
  // The popup menu that is being built, if it has that name or number.
  std::optional<ProPopupMenuId> PopupBeingBuilt(const std::wstring& name) const;
  std::vector<PopupEntry>* EntriesOf(ProPopupMenuId popup);

  // Whether a function says that its command is to be had.
  static bool IsAvailable(uiCmdAccessFn access);

 private:
  struct Popup {
    ProPopupMenuId id = 0;
    std::wstring name;
    std::vector<PopupEntry> entries;
  };

  std::map<std::string, Command> commands_;
  uiCmdCmdId next_command_ = 1;
  std::vector<Menu> menus_;
  ProPopupmenuCreatePostAction popup_action_ = nullptr;
  std::optional<Popup> popup_;
  ProPopupMenuId next_popup_ = 1;
};

}  // namespace bench
