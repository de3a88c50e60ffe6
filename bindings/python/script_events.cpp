#include "script_events.h"

#include "script_host.h"
#include "values.h"

namespace quorvel::python {

py::tuple eventNames() {
#define EVENT(name, kind) #name,
  return py::make_tuple(QUORVEL_OBJECT_EVENTS(EVENT) "EnterScope", "ExitScope", "MarkerEvent", "MouseDown",
                        "MouseMove");
#undef EVENT
}

#define EVENT(name, kind)                                                            \
  void ScriptEvents::name(kind object) {                                             \
    if (host_.hears(ScriptEvent::name)) host_.tell(ScriptEvent::name, object.ref()); \
  }
QUORVEL_OBJECT_EVENTS(EVENT)
#undef EVENT

void ScriptEvents::EnterScope(int scope, std::string_view description) {
  if (host_.hears(ScriptEvent::EnterScope)) host_.tell(ScriptEvent::EnterScope, scope, textToPython(description));
}

void ScriptEvents::ExitScope(int scope, std::string_view description) {
  if (host_.hears(ScriptEvent::ExitScope)) host_.tell(ScriptEvent::ExitScope, scope, textToPython(description));
}

void ScriptEvents::MarkerEvent(int sequence, std::string_view context) {
  if (host_.hears(ScriptEvent::MarkerEvent)) host_.tell(ScriptEvent::MarkerEvent, sequence, textToPython(context));
}

void ScriptEvents::MouseDown(int button, int shift, double x, double y) {
  if (host_.hears(ScriptEvent::MouseDown)) host_.tell(ScriptEvent::MouseDown, button, shift, x, y);
}

void ScriptEvents::MouseMove(int button, int shift, double x, double y) {
  if (host_.hears(ScriptEvent::MouseMove)) host_.tell(ScriptEvent::MouseMove, button, shift, x, y);
}

}  // namespace quorvel::python
