#include "model/form.h"

#include <algorithm>
#include <utility>

#include "base/basic_text.h"
#include "base/text.h"

namespace quorvel {

Control::Control(Form& form, ControlKind kind, std::string name) : form_(form), kind_(kind), name_(std::move(name)) {}

void Control::changed() const {
  if (form_.observer) form_.observer(this);
}

void Control::setCaption(std::string caption) {
  caption_ = std::move(caption);
  changed();
}

void Control::setText(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  changed();
  if (onChange) onChange();
}

void Control::setState(CheckState state) {
  if (state == state_) return;
  state_ = state;
  if (kind_ == ControlKind::OptionButton && state == CheckState::On) {
    for (const auto& other : form_.controls_) {
      if (other.get() == this || other->kind_ != ControlKind::OptionButton || other->frame != frame) continue;
      if (other->state_ == CheckState::Off) continue;
      other->state_ = CheckState::Off;
      other->changed();
    }
  }
  changed();
  if (onClick) onClick();
}

void Control::setEnabled(bool enabled) {
  enabled_ = enabled;
  changed();
}

void Control::setVisible(bool visible) {
  visible_ = visible;
  changed();
}

void Control::setForeColour(int colour) {
  foreColour_ = colour;
  changed();
}

void Control::setTag(std::string tag) { tag_ = std::move(tag); }

std::size_t Control::addRow(std::vector<std::string> columns) {
  if (columns.empty()) columns.emplace_back();
  auto place = rows_.end();
  if (sorted) {
    place = std::upper_bound(
        rows_.begin(), rows_.end(), columns.front(),
        [](const std::string& text, const ListRow& row) { return compareIgnoringCase(text, row.text()) < 0; });
  }
  place = rows_.insert(place, ListRow{std::move(columns), false, {}});
  const auto index = static_cast<std::size_t>(place - rows_.begin());
  changed();
  return index;
}

void Control::setRowTag(std::size_t row, std::string tag) {
  if (row < rows_.size()) rows_[row].tag = std::move(tag);
}

void Control::setRowText(std::size_t row, std::size_t column, std::string text) {
  if (row >= rows_.size()) return;
  auto& columns = rows_[row].columns;
  if (column >= columns.size()) columns.resize(column + 1);
  columns[column] = std::move(text);
  changed();
}

void Control::removeRow(std::size_t row) {
  if (row >= rows_.size()) return;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
  changed();
}

void Control::clearRows() {
  rows_.clear();
  changed();
}

void Control::selectRow(std::size_t row, bool selected) {
  if (row >= rows_.size()) return;
  if (!multipleSelection && selected) {
    for (auto& other : rows_) other.selected = false;
  }
  rows_[row].selected = selected;
  if (kind_ == ControlKind::ComboBox && selected) text_ = rows_[row].text();
  changed();
  if (onSelect) onSelect();
}

int Control::selectedRow() const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [](const ListRow& row) { return row.selected; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void Control::showTab(int tab) {
  if (tab < 0 || tab >= static_cast<int>(tabs.size()) || tab == currentTab_) return;
  currentTab_ = tab;
  changed();
  if (onClick) onClick();
}

bool Control::focus() {
  if (!enabled_ || !visible_) return false;
  if (form_.nextFocus_) {
    form_.nextFocus_ = this;
    return true;
  }
  Control* before = form_.focused_;
  if (before == this) return true;
  form_.nextFocus_ = this;
  if (before && before->onLostFocus) before->onLostFocus();
  Control* after = std::exchange(form_.nextFocus_, nullptr);
  form_.focused_ = after;
  if (after != this) after->changed();
  if (after->onGotFocus) after->onGotFocus();
  return true;
}

bool Control::click() {
  if (!focus()) return false;
  switch (kind_) {
    case ControlKind::OptionButton:
      setState(CheckState::On);
      return true;
    case ControlKind::CheckBox:
      setState(state_ == CheckState::On ? CheckState::Off : CheckState::On);
      return true;
    default:
      if (onClick) onClick();
      return true;
  }
}

bool Control::doubleClick() {
  if (!focus()) return false;
  if (onDoubleClick) onDoubleClick();
  return true;
}

bool Control::pressKey(int key) {
  if (!focus()) return false;
  if (onKeyPress) key = onKeyPress(key);
  if (key == 0 || !form_.isOpen() || kind_ != ControlKind::TextBox || readOnly) return key != 0;
  if (key == keys::backspace) {
    std::string shorter = text_;
    while (!shorter.empty() && (shorter.back() & 0xC0) == 0x80) shorter.pop_back();
    if (!shorter.empty()) shorter.pop_back();
    setText(std::move(shorter));
  } else if (key >= ' ') {
    if (maxLength > 0 && lengthOf(text_) >= static_cast<std::size_t>(maxLength)) return false;
    std::string typed = text_;
    appendUtf8(typed, static_cast<char32_t>(key));
    setText(std::move(typed));
  }
  return true;
}

bool Control::mouseDown() {
  if (!enabled_ || !visible_) return false;
  if (onMouseDown) onMouseDown();
  return true;
}

bool Control::mouseUp() {
  if (!enabled_ || !visible_) return false;
  if (onMouseUp) onMouseUp();
  return true;
}

bool Control::mouseMove() {
  if (!enabled_ || !visible_) return false;
  if (onMouseMove) onMouseMove();
  return true;
}

bool Control::dropDown() {
  if (kind_ != ControlKind::ComboBox || !focus()) return false;
  if (onDropDown) onDropDown();
  return true;
}

bool Control::keyDown(int keyCode) {
  if (!focus()) return false;
  if (onKeyDown) onKeyDown(keyCode);
  return true;
}

bool Control::type(std::string text) {
  if (readOnly || !focus()) return false;
  setText(maxLength > 0 ? left(text, maxLength) : std::move(text));
  return true;
}

Form::Form(std::string name, std::string caption) : name_(std::move(name)), caption_(std::move(caption)) {}

void Form::setCaption(std::string caption) {
  caption_ = std::move(caption);
  if (observer) observer(nullptr);
}

Control* Form::find(std::string_view name) const {
  for (const auto& control : controls_) {
    if (equalIgnoringCase(control->name(), name)) return control.get();
  }
  return nullptr;
}

Control& Form::add(ControlKind kind, std::string name, std::string caption) {
  auto& control = *controls_.emplace_back(std::make_unique<Control>(*this, kind, std::move(name)));
  control.caption_ = std::move(caption);
  return control;
}

void Form::open() {
  open_ = true;
  focused_ = nullptr;
  loading();
}

void Form::hide() {
  open_ = false;
  if (observer) observer(nullptr);
}

void Form::close() {
  if (!open_ || !unloading()) return;
  hide();
}

}  // namespace quorvel
