// Toolbars and menus as objects, without a screen.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvel::host {

/// What one of the host's own items does when nothing else was put on it.
enum class HostCommand { None, Reports };

/// The picture of a button, row by row from the top, as large as the picture file.
struct ButtonFace {
  int width = 0, height = 0;
  std::vector<std::uint32_t> colours;  ///< 0xRRGGBB
  std::vector<bool> mask;              ///< true where the button shows through
};

struct BarControl {
  std::uint32_t id = 0;    ///< our number for it
  std::uint32_t bar = 0;   ///< the bar that holds it, or 0
  std::uint32_t menu = 0;  ///< the menu that holds it, or 0
  int commandId = 1;       ///< the host's command number; 1 for a custom control
  bool isMenu = false, beginGroup = false, builtIn = false;
  HostCommand hostCommand = HostCommand::None;
  std::string caption, tag, tooltip, onAction, parameter;
  std::optional<ButtonFace> face;
  int state = 0;
  std::vector<std::uint32_t> items;
};

struct Bar {
  std::uint32_t id = 0;
  std::string name, context;
  int index = 0, position = 1, rowIndex = 0, left = 0, top = 0, width = 0, height = 0, protection = 0;
  bool visible = true, enabled = true;
  std::vector<std::uint32_t> items;
};

class CommandBarSet {
 public:
  /// The menus that the release has: Insert with its hyperlink item, Tools with its reports item.
  explicit CommandBarSet(std::string_view version);

  std::uint32_t addBar(std::string name, int position);
  /// `owner`: the list of a bar or of a menu. `before` is a 1-based place, 0 for the end.
  std::uint32_t addControl(std::uint32_t bar, std::uint32_t menu, bool isMenu, int before);
  void removeBar(std::uint32_t id);
  void removeControl(std::uint32_t id);
  Bar* bar(std::uint32_t id);
  BarControl* control(std::uint32_t id);
  const std::map<std::uint32_t, Bar>& bars() const { return bars_; }
  /// The host's menu of that number; 0 when this release lacks it.
  std::uint32_t menuWithCommand(int commandId) const;

  /// What Platform::placeFace put there for PasteFace.
  std::optional<ButtonFace> clipboardFace;

 private:
  std::vector<std::uint32_t>* itemsOf(std::uint32_t bar, std::uint32_t menu);
  std::map<std::uint32_t, Bar> bars_;
  std::map<std::uint32_t, BarControl> controls_;
  std::uint32_t last_ = 0;
};

}  // namespace quorvel::host
