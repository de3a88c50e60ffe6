#include "form_access.h"

#include "script_host.h"
#include "values.h"

namespace quorvel::python {

Control& ControlAccess::control() const {
  if (!open_->form) throw Refused{"Control", open_->name + "." + name_, "the form is closed"};
  return *open_->form->find(name_);  // a form never gives up a control
}

template <class Act>
bool ControlAccess::act(Act act) const {
  Control& at = control();
  if (!open_->form->isOpen()) throw Refused{"Control", open_->name + "." + name_, "the form is closed"};
  return open_->host.enter([&] { return act(at); });
}

py::str ControlAccess::name() const { return textToPython(name_); }

const char* ControlAccess::kind() const {
  constexpr const char* names[] = {"Label",    "TextBox",  "Button", "CheckBox", "OptionButton", "ListBox",
                                   "ListView", "ComboBox", "Frame",  "TabStrip", "Picture"};
  return names[static_cast<int>(control().kind())];
}

py::str ControlAccess::caption() const { return textToPython(control().caption()); }
py::str ControlAccess::text() const { return textToPython(control().text()); }
py::str ControlAccess::tag() const { return textToPython(control().tag()); }

py::object ControlAccess::isOn() const {
  if (control().state() == CheckState::Grey) return py::none();
  return py::bool_(control().isOn());
}

bool ControlAccess::hasFocus() const { return open_->form && open_->form->focused() == &control(); }

py::list ControlAccess::rows() const {
  py::list all;
  for (const ListRow& row : control().rows()) {
    py::tuple columns(row.columns.size());
    for (std::size_t i = 0; i < row.columns.size(); ++i) columns[i] = textToPython(row.columns[i]);
    all.append(py::make_tuple(columns, row.selected));
  }
  return all;
}

py::list ControlAccess::tabs() const {
  py::list all;
  for (const std::string& tab : control().tabs) all.append(textToPython(tab));
  return all;
}

bool ControlAccess::click() const {
  return act([](Control& at) { return at.click(); });
}
bool ControlAccess::doubleClick() const {
  return act([](Control& at) { return at.doubleClick(); });
}
bool ControlAccess::focus() const {
  return act([](Control& at) { return at.focus(); });
}
bool ControlAccess::type(const std::string& text) const {
  return act([&](Control& at) { return at.type(text); });
}
bool ControlAccess::setOn(bool on) const {
  return act([&](Control& at) {
    if (!at.focus()) return false;
    at.setState(on ? CheckState::On : CheckState::Off);
    return true;
  });
}
bool ControlAccess::selectRow(std::size_t row, bool selected) const {
  return act([&](Control& at) {
    if (row >= at.rows().size() || !at.focus()) return false;
    at.selectRow(row, selected);
    return true;
  });
}
bool ControlAccess::showTab(int tab) const {
  return act([&](Control& at) {
    if (tab < 0 || tab >= static_cast<int>(at.tabs.size()) || !at.focus()) return false;
    at.showTab(tab);
    return true;
  });
}
bool ControlAccess::pressKey(int key) const {
  return act([&](Control& at) { return at.pressKey(key); });
}
bool ControlAccess::dropDown() const {
  return act([](Control& at) { return at.dropDown(); });
}
bool ControlAccess::keyDown(int key) const {
  return act([&](Control& at) { return at.keyDown(key); });
}

Form& FormAccess::form() const {
  if (!open_->form) throw Refused{"Form", open_->name, "the form is closed"};
  return *open_->form;
}

py::str FormAccess::caption() const { return textToPython(form().caption()); }

std::vector<std::string> FormAccess::controlNames() const {
  std::vector<std::string> names;
  for (const auto& control : form().controls()) names.push_back(control->name());
  return names;
}

std::string FormAccess::find(const std::string& name) const {
  const Control* found = form().find(name);
  return found ? found->name() : std::string();
}

void FormAccess::close() const {
  Form& open = form();
  open_->host.enter([&] { open.close(); });
}

}  // namespace quorvel::python
