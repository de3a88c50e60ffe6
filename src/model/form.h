// Dialogs as data: a form owns controls, a toolkit renders any form with one piece of code, and a script drives the
// same form by control name. No dialog exists twice.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

class Form;

/// Key codes and characters that the forms' handlers test.
namespace keys {
inline constexpr int backspace = 8, enter = 13, escape = 27, controlZ = 26, deleteKey = 46, keypadDelete = 110;
}

enum class ControlKind {
  Label,
  TextBox,
  Button,
  CheckBox,
  OptionButton,
  ListBox,
  ListView,
  ComboBox,
  Frame,
  TabStrip,
  Picture,
};

/// A row of a list box, combo box or list view.
struct ListRow {
  std::vector<std::string> columns;
  bool selected = false;
  std::string tag;
  const std::string& text() const { return columns.front(); }
};

/// Check boxes have three states; option buttons and the others use the first two.
enum class CheckState { Off, On, Grey };

/// One control of a form. Setting text or state in code raises the change or click handler as a user's act does.
class Control {
 public:
  Control(Form& form, ControlKind kind, std::string name);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  ControlKind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  Form& form() const { return form_; }

  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption);
  const std::string& text() const { return text_; }
  void setText(std::string text);
  CheckState state() const { return state_; }
  bool isOn() const { return state_ == CheckState::On; }
  /// Turning an option button on turns off the others of its frame.
  void setState(CheckState state);
  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);
  bool visible() const { return visible_; }
  void setVisible(bool visible);
  /// 0xBBGGRR; -1 for the toolkit's own.
  int foreColour() const { return foreColour_; }
  void setForeColour(int colour);
  const std::string& tag() const { return tag_; }
  void setTag(std::string tag);

  // Lists. Rows count from 0; a sorted list keeps its rows in order ignoring case.
  const std::vector<ListRow>& rows() const { return rows_; }
  bool sorted = false;
  bool multipleSelection = false;
  std::size_t addRow(std::string text) { return addRow(std::vector<std::string>{std::move(text)}); }
  /// Gives the index of the new row.
  std::size_t addRow(std::vector<std::string> columns);
  void setRowTag(std::size_t row, std::string tag);
  void setRowText(std::size_t row, std::size_t column, std::string text);
  void removeRow(std::size_t row);
  void clearRows();
  /// Selects, and in a single-selection list deselects the rest; raises `onSelect`.
  void selectRow(std::size_t row, bool selected = true);
  /// The first selected row, or -1.
  int selectedRow() const;
  std::vector<std::string> columnTitles;
  /// List views: how many columns are shown, from the first; 0 for all.
  std::size_t shownColumns = 0;
  /// Tabs of a tab strip by caption, and the 0-based one that shows.
  std::vector<std::string> tabs;
  int currentTab() const { return currentTab_; }
  void showTab(int tab);

  // What a user does. A disabled or hidden control takes nothing and answers false.
  bool click();
  bool doubleClick();
  /// One key press as the host sends it: the filter may change the key or reject it; a key that passes edits the text.
  bool pressKey(int key);
  /// The left button goes down and up over the control, and the pointer moves over it.
  bool mouseDown();
  bool mouseUp();
  bool mouseMove();
  /// Opens the list of a combo box, which may be filled only then.
  bool dropDown();
  /// A key that edits nothing and raises no key-press, such as Delete in a list.
  bool keyDown(int keyCode);
  /// Gives this control the focus; the one that had it loses it first. When the lost-focus handler of that one sends
  /// the focus elsewhere, it ends there, and this control neither gets nor loses it; a click goes on all the same.
  bool focus();
  /// Focuses, then replaces the text as if typed over, without going through the key filter. What goes beyond
  /// `maxLength` is cut off, as a box takes no more keys.
  bool type(std::string text);

  std::function<void()> onClick;
  std::function<void()> onDoubleClick;
  std::function<void()> onChange;
  std::function<void()> onSelect;
  std::function<void()> onDropDown;
  std::function<void()> onMouseDown;
  std::function<void()> onMouseUp;
  std::function<void()> onMouseMove;
  /// Gives the key to let through, or 0.
  std::function<int(int key)> onKeyPress;
  std::function<void(int keyCode)> onKeyDown;
  std::function<void()> onGotFocus;
  std::function<void()> onLostFocus;

  // Layout, without pixels: the 0-based cell of the grid of the frame or form that holds the control.
  int gridRow = 0, gridColumn = 0, columnSpan = 1;
  std::string frame;  ///< name of the frame that holds it; empty for the form itself
  int tab = -1;       ///< shown on this tab of the frame's tab strip; -1 on all
  int widthInCharacters = 0, heightInLines = 0;
  std::string pictureFile;
  bool isDefaultButton = false, isCancelButton = false;
  /// Text and combo boxes: the label before the box.
  std::string label;
  /// Characters that a user may type; 0 for any number. Code may set a longer text.
  int maxLength = 0;
  bool readOnly = false;

 private:
  friend class Form;
  void changed() const;

  Form& form_;
  ControlKind kind_;
  std::string name_, caption_, text_, tag_;
  CheckState state_ = CheckState::Off;
  bool enabled_ = true, visible_ = true;
  std::vector<ListRow> rows_;
  int currentTab_ = 0;
  int foreColour_ = -1;
};

/// A dialog. It is made, filled, shown through Platform::showModal and read when that returns.
class Form {
 public:
  Form(std::string name, std::string caption);
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& name() const { return name_; }
  const std::string& caption() const { return caption_; }
  void setCaption(std::string caption);

  /// The control of that name in any letter case; null when the form lacks it.
  Control* find(std::string_view name) const;
  const std::vector<std::unique_ptr<Control>>& controls() const { return controls_; }

  /// Open from showModal until hide or close. Both end the modal call; hide leaves the dialog's results alone, while
  /// close is unloading: it runs `unloading` first.
  bool isOpen() const { return open_; }
  void open();
  void hide();
  void close();

  Control* focused() const { return focused_; }
  /// Called for every change of caption, text, state, rows or visibility while a toolkit shows the form, and for the
  /// control to which a handler has moved the focus; null for none.
  std::function<void(const Control*)> observer;

 protected:
  Control& add(ControlKind kind, std::string name, std::string caption = {});
  /// Runs when the dialog is opened.
  virtual void loading() {}
  /// Runs when the dialog is closed by any way; false keeps it open.
  virtual bool unloading() { return true; }

 private:
  friend class Control;
  std::string name_, caption_;
  std::vector<std::unique_ptr<Control>> controls_;
  Control* focused_ = nullptr;
  Control* nextFocus_ = nullptr;  ///< the next focus while a lost-focus handler runs
  bool open_ = false;
};

}  // namespace quorvel
