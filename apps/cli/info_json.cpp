#include <nlohmann/json.hpp>

#include "cli/duration_text.h"
#include "cli/info_text.h"

namespace quorvel::cli {
namespace {

using Json = nlohmann::ordered_json;

/// Null for no time.
Json timeJson(const std::string& cellText) {
  const auto duration = durationOf(cellText);
  return duration ? Json{{"value", duration->value}, {"unit", std::string(duration->unit)}} : Json();
}

/// Null for an empty text.
Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json taskJson(const report::Task& task) {
  return {{"id", task.id},
          {"description", task.description},
          {"responsibleRole", task.responsibleRole},
          {"supportingRoles", task.supportingRoles},
          {"guidelines", task.guidelines},
          {"resources", task.resources},
          {"time", timeJson(task.completionTime)},
          {"frequency", task.frequency},
          {"notes", task.notes},
          {"linkedTask", textOrNull(task.linkedTask)},
          {"shapeId", task.shape.shapeId},
          {"uniqueId", textOrNull(task.uniqueId)}};
}

/// Null for a loose end.
Json endJson(const report::LinkEnd& end) {
  using Kind = report::LinkEnd::Kind;
  if (end.kind == Kind::Loose) return {};
  const char* kind = end.kind == Kind::Task ? "task" : end.kind == Kind::ProcessConnector ? "connector" : "shape";
  return {{"kind", kind}, {"label", end.label}, {"shapeId", end.shapeId}};
}

Json linkJson(const report::TaskLink& link) {
  return {{"from", endJson(link.from)},  {"to", endJson(link.to)},        {"description", link.description},
          {"time", timeJson(link.time)}, {"shapeId", link.shape.shapeId}, {"uniqueId", textOrNull(link.uniqueId)}};
}

Json connectorJson(const report::ProcessConnector& connector) {
  return {{"shownId", connector.shownId},
          {"target", textOrNull(report::hyperlinkTarget(connector.address, connector.subAddress))},
          {"address", textOrNull(connector.address)},
          {"subAddress", textOrNull(connector.subAddress)},
          {"shapeId", connector.shape.shapeId},
          {"uniqueId", textOrNull(connector.uniqueId)}};
}

Json hyperlinkJson(const report::Hyperlink& link) {
  return {{"on", link.owner},        {"description", link.description},
          {"address", link.address}, {"subAddress", link.subAddress},
          {"ownerId", link.ownerId}, {"shapeId", link.shape.shapeId}};
}

template <class Value>
Json listOf(const std::vector<Value>& values, Json (*toJson)(const Value&)) {
  Json list = Json::array();
  for (const Value& value : values) list.push_back(toJson(value));
  return list;
}

Json pageJson(const report::MapPage& page) {
  return {{"name", page.name},
          {"background", page.background},
          {"shapeCount", page.shapeCount},
          {"tasks", listOf(page.tasks, taskJson)},
          {"links", listOf(page.links, linkJson)},
          {"connectors", listOf(page.connectors, connectorJson)},
          {"hyperlinks", listOf(page.hyperlinks, hyperlinkJson)}};
}

}  // namespace

std::string infoJson(const report::ProcessMap& map, const std::string& file) {
  const Json json{{"file", file},
                  {"title", map.title},
                  {"template", textOrNull(map.templateName)},
                  {"isStencil", map.isStencil},
                  {"isProcessMap", map.isProcessMap},
                  {"masters", map.masters},
                  {"roles", map.roles},
                  {"pages", listOf(map.pages, pageJson)}};
  // Names in hostile files may be invalid UTF-8; such bytes are replaced.
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quorvel::cli
