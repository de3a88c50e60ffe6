#include "host/engine/command_bar_set.h"

#include <algorithm>

namespace quorvel::host {

CommandBarSet::CommandBarSet(std::string_view version) {
  struct Menus {
    std::string_view release;
    int insert, hyperlink, tools, reports;
  };
  static constexpr Menus releases[] = {
      {"10", 30005, 8, 30007, 6}, {"11", 30005, 10, 30007, 11}, {"12", 30005, 6, 50244, 8}};
  for (const Menus& menus : releases) {
    if (!version.starts_with(menus.release)) continue;
    const auto menu = [&](const char* caption, int command, const char* item, int itemCommand, HostCommand does) {
      const std::uint32_t id = addControl(0, 0, true, 0);
      controls_[id].commandId = command;
      controls_[id].caption = caption;
      controls_[id].builtIn = true;
      const std::uint32_t child = addControl(0, id, false, 0);
      controls_[child].commandId = itemCommand;
      controls_[child].caption = item;
      controls_[child].builtIn = true;
      controls_[child].hostCommand = does;
    };
    menu("&Insert", menus.insert, "Hyperl&inks...", menus.hyperlink, HostCommand::None);
    menu("&Tools", menus.tools, "&Reports...", menus.reports, HostCommand::Reports);
  }
}

std::vector<std::uint32_t>* CommandBarSet::itemsOf(std::uint32_t barId, std::uint32_t menuId) {
  if (Bar* owner = bar(barId)) return &owner->items;
  if (BarControl* owner = control(menuId)) return &owner->items;
  return nullptr;
}

std::uint32_t CommandBarSet::addBar(std::string name, int position) {
  Bar made;
  made.id = ++last_;
  made.name = std::move(name);
  made.position = position;
  made.index = static_cast<int>(bars_.size()) + 1;
  bars_[made.id] = std::move(made);
  return last_;
}

std::uint32_t CommandBarSet::addControl(std::uint32_t barId, std::uint32_t menuId, bool isMenu, int before) {
  BarControl made;
  made.id = ++last_;
  made.bar = barId;
  made.menu = menuId;
  made.isMenu = isMenu;
  const std::uint32_t id = made.id;
  controls_[id] = std::move(made);
  if (auto* items = itemsOf(barId, menuId)) {
    const auto count = static_cast<int>(items->size());
    items->insert(items->begin() + (before < 1 || before > count ? count : before - 1), id);
  }
  return id;
}

void CommandBarSet::removeBar(std::uint32_t id) {
  Bar* gone = bar(id);
  if (!gone) return;
  for (const std::uint32_t item : std::vector<std::uint32_t>(gone->items)) removeControl(item);
  bars_.erase(id);
}

void CommandBarSet::removeControl(std::uint32_t id) {
  BarControl* gone = control(id);
  if (!gone) return;
  for (const std::uint32_t item : std::vector<std::uint32_t>(gone->items)) removeControl(item);
  if (auto* items = itemsOf(gone->bar, gone->menu)) std::erase(*items, id);
  controls_.erase(id);
}

Bar* CommandBarSet::bar(std::uint32_t id) {
  const auto found = bars_.find(id);
  return found == bars_.end() ? nullptr : &found->second;
}

BarControl* CommandBarSet::control(std::uint32_t id) {
  const auto found = controls_.find(id);
  return found == controls_.end() ? nullptr : &found->second;
}

std::uint32_t CommandBarSet::menuWithCommand(int commandId) const {
  for (const auto& [id, control] : controls_) {
    if (control.isMenu && control.commandId == commandId) return id;
  }
  return 0;
}

}  // namespace quorvel::host
