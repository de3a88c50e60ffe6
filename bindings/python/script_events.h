// Passes the host's events to a script.
#pragma once

#include <pybind11/pybind11.h>

#include <cstddef>

#include "model/host_model.h"

namespace quorvel::python {

class ScriptHost;

/// Events with one object, and its kind.
#define QUORVEL_OBJECT_EVENTS(EVENT)    \
  EVENT(DocumentCreated, Document)      \
  EVENT(DocumentOpened, Document)       \
  EVENT(BeforeDocumentSave, Document)   \
  EVENT(BeforeDocumentSaveAs, Document) \
  EVENT(DocumentSaved, Document)        \
  EVENT(DocumentSavedAs, Document)      \
  EVENT(BeforeDocumentClose, Document)  \
  EVENT(PageAdded, Page)                \
  EVENT(PageChanged, Page)              \
  EVENT(ShapeAdded, Shape)              \
  EVENT(BeforeShapeDelete, Shape)       \
  EVENT(ShapeParentChanged, Shape)      \
  EVENT(BeforeShapeTextEdit, Shape)     \
  EVENT(ShapeExitedTextEdit, Shape)     \
  EVENT(TextChanged, Shape)             \
  EVENT(CellChanged, Cell)              \
  EVENT(FormulaChanged, Cell)           \
  EVENT(SelectionChanged, Window)       \
  EVENT(WindowActivated, Window)        \
  EVENT(AppActivated, Application)      \
  EVENT(BeforeModal, Application)       \
  EVENT(AfterModal, Application)        \
  EVENT(Click, CommandBarButton)

enum class ScriptEvent {
#define EVENT(name, kind) name,
  QUORVEL_OBJECT_EVENTS(EVENT)
#undef EVENT
      EnterScope,
  ExitScope,
  MarkerEvent,
  MouseDown,
  MouseMove,
};
inline constexpr std::size_t scriptEventCount = static_cast<std::size_t>(ScriptEvent::MouseMove) + 1;

/// The events' names in the order of ScriptEvent.
pybind11::tuple eventNames();

class ScriptEvents : public ApplicationEvents {
 public:
  explicit ScriptEvents(ScriptHost& host) : host_(host) {}

#define EVENT(name, kind) void name(kind object) override;
  QUORVEL_OBJECT_EVENTS(EVENT)
#undef EVENT
  void EnterScope(int scope, std::string_view description) override;
  void ExitScope(int scope, std::string_view description) override;
  void MarkerEvent(int sequence, std::string_view context) override;
  void MouseDown(int button, int shift, double x, double y) override;
  void MouseMove(int button, int shift, double x, double y) override;

 private:
  ScriptHost& host_;
};

}  // namespace quorvel::python
