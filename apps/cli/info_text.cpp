#include "cli/info_text.h"

#include <algorithm>

#include "base/text.h"
#include "cli/duration_text.h"
#include "cli/text_table.h"

namespace quorvel::cli {
namespace {

using report::MapPage;

std::string counted(std::size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

void appendCount(std::string& line, std::size_t count, const std::string& noun) {
  if (count > 0) line += (line.empty() ? "" : ", ") + counted(count, noun);
}

std::string joined(const std::vector<std::string>& pieces) {
  std::string text;
  for (const std::string& piece : pieces)
    if (!piece.empty()) text += (text.empty() ? "" : ", ") + piece;
  return text;
}

std::string endOf(const report::LinkEnd& end) {
  switch (end.kind) {
    case report::LinkEnd::Kind::Loose:
      return "(loose)";
    case report::LinkEnd::Kind::ProcessConnector:
      return "> " + end.label;  // a Task may have the ID that it shows
    default:
      return end.label;
  }
}

std::string taskTable(const MapPage& page) {
  std::vector<std::vector<std::string>> rows;
  for (const auto& task : page.tasks) {
    rows.push_back({task.id, task.description, task.responsibleRole, joined(task.supportingRoles),
                    durationText(task.completionTime), task.frequency, task.linkedTask});
  }
  return tableText(
      {{"Task"}, {"Description", 36}, {"Responsible"}, {"Supporting", 28}, {"Time"}, {"Frequency", 16}, {"Opens"}},
      rows, 2);
}

std::string linkTable(const MapPage& page) {
  std::vector<std::vector<std::string>> rows;
  for (const auto& link : page.links)
    rows.push_back({endOf(link.from), endOf(link.to), link.description, durationText(link.time)});
  return tableText({{"From"}, {"To"}, {"Task Link", 48}, {"Time"}}, rows, 2);
}

std::string connectorTable(const MapPage& page) {
  std::vector<std::vector<std::string>> rows;
  for (const auto& connector : page.connectors) {
    const std::string target = report::hyperlinkTarget(connector.address, connector.subAddress);
    rows.push_back({connector.shownId, target.empty() ? "(nowhere)" : target});
  }
  return tableText({{"Connector"}, {"Continues at", 80}}, rows, 2);
}

std::string hyperlinkTable(const MapPage& page) {
  std::vector<std::vector<std::string>> rows;
  for (const auto& link : page.hyperlinks)
    rows.push_back({link.owner, report::hyperlinkTarget(link.address, link.subAddress), link.description});
  return tableText({{"Hyperlink on"}, {"Leads to", 48}, {"Description", 44}}, rows, 2);
}

std::string pageText(const MapPage& page) {
  std::string counts;
  appendCount(counts, page.tasks.size(), "Task");
  appendCount(counts, page.links.size(), "Task Link");
  appendCount(counts, page.connectors.size(), "Process Connector");
  if (counts.empty()) counts = counted(std::size_t(page.shapeCount), "shape");
  std::string text = "\n" + page.name + (page.background ? " (background)" : "") + ": " + counts + "\n";
  for (const std::string& table : {taskTable(page), linkTable(page), connectorTable(page), hyperlinkTable(page)})
    if (!table.empty()) text += "\n" + table;
  return text;
}

}  // namespace

std::string infoText(const report::ProcessMap& map, const std::string& file) {
  std::string text = file + "\n";
  if (!map.title.empty()) text += "  Title     " + map.title + "\n";
  const char* kind = map.isStencil ? "stencil" : map.isProcessMap ? "process map" : "drawing";
  const std::string extent = map.isStencil ? counted(map.masters.size(), "master") : counted(map.pages.size(), "page");
  text += std::string("  Kind      ") + kind + ", " + extent + "\n";
  if (!map.templateName.empty()) text += "  Based on  " + map.templateName + "\n";
  if (!map.masters.empty()) {
    std::vector<std::vector<std::string>> rows{{"Masters", joined(map.masters)}};
    const std::string masters = tableText({{"Based on"}, {"", 100}}, rows, 2);  // as wide as the labels above
    text += masters.substr(masters.find('\n') + 1);
  }
  for (const MapPage& page : map.pages) text += pageText(page);
  return text;
}

}  // namespace quorvel::cli
