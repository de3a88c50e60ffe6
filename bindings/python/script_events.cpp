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

#define EVENT(name, kind)                                                                  \
  void ScriptEvents::name(kind object) {                                                   \
    if (host_.listensTo(ScriptEvent::name)) host_.notify(ScriptEvent::name, object.ref()); \
  }
QUORVEL_OBJECT_EVENTS(EVENT)
#undef EVENT

void ScriptEvents::EnterScope(int scope, std::string_view description) {
  if (host_.listensTo(ScriptEvent::EnterScope)) host_.notify(ScriptEvent::EnterScope, scope, textToPython(description));
}

void ScriptEvents::ExitScope(int scope, std::string_view description) {
  if (host_.listensTo(ScriptEvent::ExitScope)) host_.notify(ScriptEvent::ExitScope, scope, textToPython(description));
}

void ScriptEvents::MarkerEvent(int sequence, std::string_view context) {
  if (host_.listensTo(ScriptEvent::MarkerEvent))
    host_.notify(ScriptEvent::MarkerEvent, sequence, textToPython(context));
}

void ScriptEvents::MouseDown(int button, int shift, double x, double y) {
  if (host_.listensTo(ScriptEvent::MouseDown)) host_.notify(ScriptEvent::MouseDown, button, shift, x, y);
}

void ScriptEvents::MouseMove(int button, int shift, double x, double y) {
  if (host_.listensTo(ScriptEvent::MouseMove)) host_.notify(ScriptEvent::MouseMove, button, shift, x, y);
}

}  // namespace quorvel::python
