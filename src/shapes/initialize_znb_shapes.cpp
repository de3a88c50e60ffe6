#include "shapes/initialize_znb_shapes.h"

#include "base/basic_text.h"
#include "connect/host_queries.h"
#include "data/stencil_texts.h"
#include "schema/cells.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

void initializeTaskLink(const Shape& link) {
  const Cell description = link.Cells(schema::taskLinkCells::description);
  // This also protects the field below: a link that shows its time must not get it again.
  if (!(description.ResultStr(visio::unitsNone) == placeholder::taskLink)) return;
  description.FormulaForce(quoted("Task Link"));
  link.Cells(schema::taskLinkCells::description.column("Label")).FormulaForce(quoted("Task Link Description"));
  link.Cells("Fields.Value").FormulaForce(std::string(schema::taskLinkCells::description));
}

void initializeTask(const Shape& task) {
  const Cell description = task.Cells(schema::taskCells::description);
  if (!(description.ResultStr(visio::unitsNone) == placeholder::taskDescription)) return;
  description.FormulaForce(quoted("Task Description"));
  if (const auto id = task.ID()) {
    task.Shapes()
        .Item(taskMember::descriptionBox)
        .Cells("Fields.Value")
        .FormulaForce("Sheet." + std::to_string(*id) + "!" + std::string(schema::taskCells::description));
  }
}

void initialize(const Shape& shape) {
  if (IsTaskLink(shape)) initializeTaskLink(shape);
  // A member of a Task has the same master, but neither the description nor the boxes.
  if (isWholeTask(shape)) initializeTask(shape);
}

}  // namespace

void InitializeZNBShapes(const dsrVisioConnect& connect, const Shape& dropped, const Page& page) {
  // A shape need not be selected: its drawing may have no window.
  initialize(dropped);
  const Window window = windowOf(connect, page.Document());
  if (!(window.Page() == page)) return;
  for (const Shape& shape : window.Selection().all()) {
    if (!(shape == dropped)) initialize(shape);
  }
}

}  // namespace quorvel::addin
