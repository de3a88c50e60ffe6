#include "formats/common/left_out.h"

#include <algorithm>

#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {
namespace {

constexpr const char* macros = "the macros";
constexpr const char* preview = "the preview picture";
constexpr const char* others = "what other programs keep in it";

}  // namespace

void addLeftOut(LeftOut& leftOut, const std::string& what) {
  if (std::ranges::find(leftOut, what) == leftOut.end()) leftOut.push_back(what);
}

bool isMacros(const CarriedPart& part) { return part.contentType.find("vba") != std::string::npos; }

/// A signature is about bytes that a save replaces.
bool isSignature(const CarriedPart& part) {
  return part.contentType.starts_with("application/vnd.openxmlformats-package.digital-signature");
}

void addPart(LeftOut& leftOut, const CarriedPackage& package, const CarriedPart& part) {
  const Relationship* const thumbnail = package.root.ofType("/thumbnail");
  addLeftOut(leftOut, isMacros(part)                                                ? macros
                      : isSignature(part)                                           ? "the digital signature"
                      : thumbnail && partKey(thumbnail->part) == partKey(part.name) ? preview
                                                                                    : others);
}

void addOlderElements(LeftOut& leftOut, const CarriedDocument& document) {
  static constexpr std::string_view said[] = {"DocumentProperties", "PrintSetup", "Fonts",
                                              "FaceNames",          "Windows",    "SolutionXML"};
  for (const auto& [name, xml] : document.olderElements) {
    std::string text = "<a>" + xml + "</a>";
    pugi::xml_document parsed;
    if (!parseXml(parsed, text).empty()) continue;
    for (const pugi::xml_node element : parsed.document_element()) {
      const std::string_view called = localName(element);
      if (called == "VBProjectData") {
        addLeftOut(leftOut, macros);
      } else if (called == "EmailRoutingData") {
        addLeftOut(leftOut, "the routing slip");
      } else if (called == "DocumentProperties" && childNamed(element, "PreviewPicture")) {
        addLeftOut(leftOut, preview);
      } else if (called != "DataRecordSets" && std::ranges::find(said, called) == std::end(said)) {
        addLeftOut(leftOut, others);
      }
    }
  }
}

}  // namespace quorvel::formats
