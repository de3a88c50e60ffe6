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

Json taskJson(const report::TaskSummary& task) {
  return {{"id", task.id},
          {"description", task.description},
          {"responsibleRole", task.responsibleRole},
          {"supportingRoles", task.supportingRoles},
          {"time", timeJson(task.completionTime)},
          {"frequency", task.frequency},
          {"linkedTask", textOrNull(task.linkedTask)},
          {"shapeId", task.shapeId}};
}

Json linkJson(const report::LinkSummary& link) {
  return {{"from", textOrNull(link.from)},
          {"to", textOrNull(link.to)},
          {"description", link.description},
          {"time", timeJson(link.time)},
          {"shapeId", link.shapeId}};
}

Json connectorJson(const report::ConnectorSummary& connector) {
  return {{"shownId", connector.shownId}, {"target", textOrNull(connector.target)}, {"shapeId", connector.shapeId}};
}

Json hyperlinkJson(const report::HyperlinkSummary& link) {
  return {
      {"on", link.on}, {"description", link.description}, {"address", link.address}, {"subAddress", link.subAddress}};
}

template <class Summary>
Json listOf(const std::vector<Summary>& summaries, Json (*toJson)(const Summary&)) {
  Json list = Json::array();
  for (const Summary& summary : summaries) list.push_back(toJson(summary));
  return list;
}

Json pageJson(const report::PageSummary& page) {
  return {{"name", page.name},
          {"background", page.background},
          {"shapeCount", page.shapeCount},
          {"tasks", listOf(page.tasks, taskJson)},
          {"links", listOf(page.links, linkJson)},
          {"connectors", listOf(page.connectors, connectorJson)},
          {"hyperlinks", listOf(page.hyperlinks, hyperlinkJson)}};
}

}  // namespace

std::string infoJson(const report::MapSummary& summary, const std::string& file) {
  const Json json{{"file", file},
                  {"title", summary.title},
                  {"template", textOrNull(summary.templateName)},
                  {"isStencil", summary.isStencil},
                  {"isProcessMap", summary.isProcessMap},
                  {"masters", summary.masters},
                  {"pages", listOf(summary.pages, pageJson)}};
  // Names in hostile files may be no UTF-8; such bytes are replaced.
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quorvel::cli
