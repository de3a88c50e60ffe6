#include "hyperlinks/link_record.h"

#include <algorithm>

#include "base/basic_text.h"
#include "base/text.h"
#include "links/link_target.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

constexpr std::array<std::string_view, 4> recordFields{"hyperLinkType", "relOrAbs", "absPath", "docName"};

struct Zoom {
  std::string_view choice, number;
};
constexpr std::array<Zoom, 8> zooms{{{"400%", "400"},
                                     {"200%", "200"},
                                     {"150%", "150"},
                                     {"100%", "100"},
                                     {"75%", "75"},
                                     {"50%", "50"},
                                     {"Page", "-1"},
                                     {"width", "-2"}}};
constexpr std::string_view zoomStart = "zoom=";

}  // namespace

std::string getTypeOfHyperLink(std::string_view field, std::string_view record) {
  const auto place = std::ranges::find(recordFields, field);
  return place == recordFields.end() ? std::string() : slot(parse(record, "+"), place - recordFields.begin()).or_({});
}

std::string linkRecord(std::string_view kind, std::string_view relOrAbs, std::string_view absPath,
                       std::string_view docName) {
  std::string record(kind);
  for (const std::string_view field : {relOrAbs, absPath, docName}) (record += '+') += field;
  return record;
}

std::string getSubAdd(std::string_view field, std::string_view subAddress) {
  const LinkTarget target = linkTarget(subAddress);
  return field == "pageName" ? target.page : field == "taskName" ? target.taskId : std::string();
}

std::string zoomToExtraInfo(std::string_view choice) {
  // The list and what is read back spell the width of the page differently.
  const auto zoom =
      std::ranges::find_if(zooms, [&](const Zoom& each) { return equalIgnoringCase(each.choice, choice); });
  return zoom == zooms.end() ? std::string() : std::string(zoom->number);
}

std::string zoomText(std::string_view choice) {
  const std::string number = zoomToExtraInfo(choice);
  return number.empty() ? number : std::string(zoomStart) + number;
}

std::string shownZoom(std::string_view number) {
  if (number.empty()) return std::string(defaultZoom);
  if (number == "-1") return "Page";
  if (number == "-2") return "Width";
  return std::string(number) + "%";
}

std::string zoomChoiceOf(std::string_view extraInfo) {
  return shownZoom(mid(extraInfo, static_cast<long>(zoomStart.size()) + 1));
}

std::string getPageTaskName(std::string_view name) {
  return replaceAll(replaceAll(replaceAll(name, " ", "%20"), "<", "%3c"), ">", "%3e");
}

std::string getPageTaskNamWithSpace(std::string_view name) {
  return replaceAll(replaceAll(replaceAll(name, "%20", " "), "%3c", "<"), "%3e", ">");
}

std::string getTaskName(const std::string& taskDescription, const Document& document) {
  std::string found;
  forEachShape(document, [&](const Shape& shape) {
    if (IsTask(shape) && shape.Cells(schema::taskCells::description).ResultStr(visio::unitsNone) == taskDescription)
      keep(found, shape.Name());
  });
  return found;
}

bool isValidEmail(std::string_view address) {
  if (address.empty()) return true;
  return address.find('@') != std::string_view::npos &&
         slot(parse(address, "@"), 1).or_({}).find('.') != std::string::npos;
}

}  // namespace quorvel::addin
