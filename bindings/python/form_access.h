// An open dialog for a script: controls by name, valid only during its modal call.
#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/form.h"

namespace quorvel::python {

namespace py = pybind11;

class ScriptHost;

/// Shared by all objects that a script keeps of one dialog.
struct OpenForm {
  OpenForm(Form& shown, ScriptHost& of) : form(&shown), host(of), name(shown.name()) {}
  Form* form;        ///< null once the modal call has returned
  ScriptHost& host;  ///< exists at least as long as `form` is set
  const std::string name;
};

class ControlAccess {
 public:
  ControlAccess(std::shared_ptr<OpenForm> open, std::string name) : open_(std::move(open)), name_(std::move(name)) {}

  // Reading. All throw Refused after the form is closed.
  py::str name() const;
  const char* kind() const;
  py::str caption() const;
  py::str text() const;
  /// None for a grey one.
  py::object isOn() const;
  bool enabled() const { return control().enabled(); }
  bool visible() const { return control().visible(); }
  bool readOnly() const { return control().readOnly; }
  bool multipleSelection() const { return control().multipleSelection; }
  bool hasFocus() const;
  py::str tag() const;
  /// Pairs of the columns' texts and whether the row is selected.
  py::list rows() const;
  py::list tabs() const;
  int currentTab() const { return control().currentTab(); }

  // What a user does. False: the control accepts no input now.
  bool click() const;
  bool doubleClick() const;
  bool focus() const;
  bool type(const std::string& text) const;
  bool setOn(bool on) const;
  bool selectRow(std::size_t row, bool selected) const;
  bool showTab(int tab) const;
  /// Whether the key was accepted.
  bool pressKey(int key) const;
  bool dropDown() const;
  bool keyDown(int key) const;

 private:
  Control& control() const;
  template <class Act>
  bool act(Act act) const;

  std::shared_ptr<OpenForm> open_;
  std::string name_;
};

class FormAccess {
 public:
  explicit FormAccess(std::shared_ptr<OpenForm> open) : open_(std::move(open)) {}

  const std::string& name() const { return open_->name; }
  py::str caption() const;
  bool isOpen() const { return open_->form && open_->form->isOpen(); }
  std::vector<std::string> controlNames() const;
  /// The control's name as the form spells it; empty when it has none of that name.
  std::string find(const std::string& name) const;
  ControlAccess control(const std::string& name) const { return ControlAccess(open_, name); }
  /// As by the close box; the form may refuse.
  void close() const;

 private:
  Form& form() const;
  std::shared_ptr<OpenForm> open_;
};

}  // namespace quorvel::python
