// What the display dialogs share: the scope, OK and Cancel, and boxes whose changes are discarded only after a
// question.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/form.h"
#include "model/platform.h"

namespace quorvel::addin {

/// The words for the three scopes.
namespace displayScope {
inline constexpr std::string_view selected = "Selected", page = "Page", drawing = "Drawing";
}

/// A dialog that asks which shapes a command changes. It is cancelled unless it is closed by OK.
class DisplayDialog : public Form {
 public:
  bool cancelled() const { return cancelled_; }
  /// One of the words above.
  std::string_view scope() const;
  /// With a selection that scope is offered and set; without one it is not, and the page is set.
  void offerSelection(bool hasSelection);

 protected:
  struct Texts {
    const char *name, *caption, *scopeFrame, *selected, *page, *drawing;
  };
  explicit DisplayDialog(const Texts& texts);
  void loading() override { cancelled_ = true; }
  bool unloading() override;
  /// What Cancel does; a dialog with changes asks first.
  virtual void cancelClicked() { close(); }

  Control& fraScope;
  Control& OptionSelected;
  Control& OptionPage;
  Control& OptionDrawing;
  Control& BtnOK;
  Control& BtnCancel;

 private:
  bool cancelled_ = true;
};

/// A display dialog with boxes above its scope. After the user has changed a box, Cancel asks first.
class DisplayOptionsDialog : public DisplayDialog {
 public:
  /// 0 off, 1 on, 2 grey. To be filled before the dialog is shown.
  void setBox(std::size_t index, int value);
  int box(std::size_t index) const;

 protected:
  DisplayOptionsDialog(Platform& platform, const Texts& texts, const char* boxesFrame);
  Control& addBox(const char* name, const char* caption);
  void loading() override;
  void cancelClicked() override;
  /// A box was changed, by the user or in code.
  virtual void boxChanged(std::size_t /*index*/) {}

 private:
  Platform& platform_;
  std::vector<Control*> boxes_;
  bool changed_ = false;
};

}  // namespace quorvel::addin
