// The native half of the module `quorvel`: sessions, open dialogs and the list of published members. What a script sees
// is built on it in Python.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <functional>

#include "form_access.h"
#include "script_host.h"
#include "values.h"

namespace quorvel::python {
namespace {

/// Raises the exception of that name from quorvel.errors.
template <class... Values>
void raise(const char* name, Values&&... values) {
  const py::object type = py::module_::import("quorvel.errors").attr(name);
  const py::object error = type(std::forward<Values>(values)...);
  PyErr_SetObject(type.ptr(), error.ptr());
}

void translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(thrown);
  } catch (const Refused& refused) {
    raise("HostError", refused.call, textToPython(refused.object), textToPython(refused.reason));
  } catch (const UnansweredTexts& unanswered) {
    py::tuple texts(unanswered.texts.size());
    for (std::size_t i = 0; i < unanswered.texts.size(); ++i) texts[i] = textToPython(unanswered.texts[i]);
    raise("Unanswered", texts);
  }
}

/// (number, kind, object, member, access) of each published member, access as in members.def.
py::list members() {
  constexpr const char* access[] = {"", "G", "P", "GP", "C"};
  py::list all;
  for (const MemberInfo& info : allMembers()) {
    all.append(py::make_tuple(static_cast<int>(info.member), static_cast<int>(info.object), info.objectName,
                              info.memberName, access[static_cast<int>(info.access)]));
  }
  return all;
}

std::unique_ptr<ScriptHost> makeHost(const py::object& application, const std::string& version,
                                     const std::string& installFolder, const std::string& profileFolder,
                                     bool answersDefaults, const std::string& recoveryFolder) {
  SessionOptions options;
  options.version = version;
  options.installFolder = installFolder;
  options.configurationFolder = profileFolder;
  options.recoveryFolder = recoveryFolder;
  return std::make_unique<ScriptHost>(application, std::move(options),
                                      answersDefaults ? Answers::Defaults : Answers::None);
}

py::list copiesLeftBehindFor(const std::string& folder) {
  py::list all;
  for (const LeftBehind& each : copiesLeftBehind(folder)) {
    all.append(py::make_tuple(textToPython(each.copy), textToPython(each.original), textToPython(each.name)));
  }
  return all;
}

void discardCopyOf(const std::string& copy) {
  if (const std::string wrong = discardCopy(copy); !wrong.empty()) throw Refused{"discard_copy", copy, wrong};
}

}  // namespace

PYBIND11_MODULE(_quorvel, module) {
  py::register_exception_translator(translate);
  module.def("members", members);
  module.def("event_names", eventNames);
  module.def("copies_left_behind", copiesLeftBehindFor);
  module.def("discard_copy", discardCopyOf);

  py::class_<ObjectRef>(module, "Reference")
      .def_property_readonly("kind", [](const ObjectRef& object) { return static_cast<int>(object.kind); })
      .def("__eq__", [](const ObjectRef& a, const ObjectRef& b) { return a == b; })
      .def("__hash__", [](const ObjectRef& object) {
        return std::hash<std::uint64_t>()(object.part * 1'000'003u + object.id * 64u +
                                          static_cast<std::uint64_t>(object.kind));
      });

  py::class_<ScriptHost>(module, "Host")
      .def(py::init(&makeHost))
      .def_property_readonly_static("application_reference",
                                    [](const py::object&) {
                                      return ObjectRef{ObjectKind::Application, 1, 0};
                                    })
      .def("get", &ScriptHost::get)
      .def("put", &ScriptHost::put)
      .def("call", &ScriptHost::call)
      .def("activate_page", &ScriptHost::activatePage)
      .def("activate_application", &ScriptHost::activateApplication)
      .def("mouse_down", &ScriptHost::mouseDown)
      .def("mouse_move", &ScriptHost::mouseMove)
      .def("edit_shape_data", &ScriptHost::editShapeData)
      .def("replace_text", &ScriptHost::replaceText)
      .def("export_pages", &ScriptHost::exportPages)
      .def("read_map", &ScriptHost::readMap)
      .def("report_definitions", &ScriptHost::reportDefinitions)
      .def("write_report", &ScriptHost::writeReport)
      .def("unknown_names", &ScriptHost::unknownNames)
      .def("write_recovery_copies", &ScriptHost::writeRecoveryCopies)
      .def("undo_limits", &ScriptHost::undoLimits)
      .def("set_undo_limits", &ScriptHost::setUndoLimits)
      .def("listen", [](ScriptHost& host, int event, bool on) { host.listen(static_cast<ScriptEvent>(event), on); })
      .def("asked", &ScriptHost::asked)
      .def("ask", [](ScriptHost& host, const std::string& text,
                     int buttons) { return host.ask(text, static_cast<MessageButtons>(buttons)); })
      .def("choose_file", &ScriptHost::chooseFile)
      .def("show_form", [](ScriptHost& host, const py::list& controls) {
        std::vector<TrialControl> wanted;
        for (const py::handle each : controls) {
          const auto control = py::reinterpret_borrow<py::tuple>(each);
          wanted.push_back({control[0].cast<int>(), control[1].cast<std::string>(),
                            control[2].cast<std::vector<std::string>>(), control[3].cast<bool>(),
                            control[4].cast<bool>()});
        }
        return host.showForm(wanted);
      });

  py::class_<FormAccess>(module, "FormAccess")
      .def_property_readonly("name", &FormAccess::name)
      .def_property_readonly("caption", &FormAccess::caption)
      .def_property_readonly("is_open", &FormAccess::isOpen)
      .def_property_readonly("control_names", &FormAccess::controlNames)
      .def("find", &FormAccess::find)
      .def("control", &FormAccess::control)
      .def("close", &FormAccess::close);

  py::class_<ControlAccess>(module, "ControlAccess")
      .def_property_readonly("name", &ControlAccess::name)
      .def_property_readonly("kind", &ControlAccess::kind)
      .def_property_readonly("caption", &ControlAccess::caption)
      .def_property_readonly("text", &ControlAccess::text)
      .def_property_readonly("is_on", &ControlAccess::isOn)
      .def_property_readonly("enabled", &ControlAccess::enabled)
      .def_property_readonly("visible", &ControlAccess::visible)
      .def_property_readonly("read_only", &ControlAccess::readOnly)
      .def_property_readonly("multiple_selection", &ControlAccess::multipleSelection)
      .def_property_readonly("has_focus", &ControlAccess::hasFocus)
      .def_property_readonly("tag", &ControlAccess::tag)
      .def_property_readonly("rows", &ControlAccess::rows)
      .def_property_readonly("tabs", &ControlAccess::tabs)
      .def_property_readonly("current_tab", &ControlAccess::currentTab)
      .def("click", &ControlAccess::click)
      .def("double_click", &ControlAccess::doubleClick)
      .def("focus", &ControlAccess::focus)
      .def("type", &ControlAccess::type)
      .def("set_on", &ControlAccess::setOn)
      .def("select_row", &ControlAccess::selectRow)
      .def("show_tab", &ControlAccess::showTab)
      .def("press_key", &ControlAccess::pressKey)
      .def("drop_down", &ControlAccess::dropDown)
      .def("key_down", &ControlAccess::keyDown);
}

}  // namespace quorvel::python
