#include "map_values.h"

#include "values.h"

namespace quorvel::python {
namespace {

using namespace py::literals;

py::list textsOf(const std::vector<std::string>& texts) {
  py::list list;
  for (const std::string& text : texts) list.append(textToPython(text));
  return list;
}

template <class Value>
py::list listOf(const std::vector<Value>& values, py::dict (*toPython)(const Value&)) {
  py::list list;
  for (const Value& value : values) list.append(toPython(value));
  return list;
}

py::tuple shapeOf(const report::ShapeKey& shape) { return py::make_tuple(shape.page, shape.shapeId); }

py::dict taskOf(const report::Task& task) {
  return py::dict("shape"_a = shapeOf(task.shape), "unique_id"_a = textToPython(task.uniqueId),
                  "id"_a = textToPython(task.id), "description"_a = textToPython(task.description),
                  "responsible_role"_a = textToPython(task.responsibleRole),
                  "supporting_roles"_a = py::tuple(textsOf(task.supportingRoles)),
                  "guidelines"_a = textToPython(task.guidelines), "resources"_a = textToPython(task.resources),
                  "completion_time"_a = textToPython(task.completionTime), "frequency"_a = textToPython(task.frequency),
                  "notes"_a = textToPython(task.notes), "sub_task"_a = textToPython(task.linkedTask));
}

const char* nameOf(report::LinkEnd::Kind kind) {
  switch (kind) {
    case report::LinkEnd::Kind::Task:
      return "task";
    case report::LinkEnd::Kind::ProcessConnector:
      return "connector";
    case report::LinkEnd::Kind::OtherShape:
      return "shape";
    case report::LinkEnd::Kind::Loose:
      break;
  }
  return "loose";
}

py::tuple endOf(const report::LinkEnd& end) {
  return py::make_tuple(nameOf(end.kind), textToPython(end.label), end.shapeId);
}

py::dict linkOf(const report::TaskLink& link) {
  return py::dict("shape"_a = shapeOf(link.shape), "unique_id"_a = textToPython(link.uniqueId),
                  "description"_a = textToPython(link.description), "time"_a = textToPython(link.time),
                  "start"_a = endOf(link.from), "end"_a = endOf(link.to));
}

py::dict connectorOf(const report::ProcessConnector& connector) {
  return py::dict("shape"_a = shapeOf(connector.shape), "unique_id"_a = textToPython(connector.uniqueId),
                  "shown_id"_a = textToPython(connector.shownId), "address"_a = textToPython(connector.address),
                  "sub_address"_a = textToPython(connector.subAddress));
}

py::dict hyperlinkOf(const report::Hyperlink& link) {
  return py::dict("shape"_a = shapeOf(link.shape), "owner_id"_a = link.ownerId, "owner"_a = textToPython(link.owner),
                  "description"_a = textToPython(link.description), "address"_a = textToPython(link.address),
                  "sub_address"_a = textToPython(link.subAddress), "extra_info"_a = textToPython(link.extraInfo),
                  "record"_a = textToPython(link.record), "is_default"_a = link.isDefault);
}

py::dict pageOf(const report::MapPage& page) {
  return py::dict("name"_a = textToPython(page.name), "background"_a = page.background,
                  "task_id_letters"_a = textToPython(page.taskIdLetters), "tasks"_a = listOf(page.tasks, taskOf),
                  "links"_a = listOf(page.links, linkOf), "connectors"_a = listOf(page.connectors, connectorOf),
                  "hyperlinks"_a = listOf(page.hyperlinks, hyperlinkOf));
}

}  // namespace

py::dict mapToPython(const report::ProcessMap& map) {
  return py::dict(
      "title"_a = textToPython(map.title), "is_process_map"_a = map.isProcessMap, "roles"_a = textsOf(map.roles),
      "time_units"_a = textsOf(map.timeUnits), "time_unit_abbreviations"_a = textsOf(map.timeUnitAbbreviations),
      "frequencies"_a = textsOf(map.frequencies), "frequency_abbreviations"_a = textsOf(map.frequencyAbbreviations),
      "pages"_a = listOf(map.pages, pageOf));
}

}  // namespace quorvel::python
