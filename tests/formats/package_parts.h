// Packages put together from the text of their parts.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "formats/package/zip_package.h"

namespace quorvel::formats::testing {

using Parts = std::map<std::string, std::string>;

/// The parts of a small valid drawing: one page without shapes. Tests change what they are about.
inline Parts plainParts() {
  const std::string main = "xmlns='http://schemas.microsoft.com/office/visio/2012/main'";
  const std::string r = "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'";
  const std::string rels = "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>";
  const std::string type = "http://schemas.microsoft.com/visio/2010/relationships/";
  return {
      {"[Content_Types].xml",
       "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>"
       "<Default Extension='rels' ContentType='application/vnd.openxmlformats-package.relationships+xml'/>"
       "<Default Extension='xml' ContentType='application/xml'/>"
       "<Override PartName='/visio/document.xml' ContentType='application/vnd.ms-visio.drawing.main+xml'/>"
       "<Override PartName='/visio/masters/masters.xml' ContentType='application/vnd.ms-visio.masters+xml'/>"
       "<Override PartName='/visio/masters/master1.xml' ContentType='application/vnd.ms-visio.master+xml'/>"
       "<Override PartName='/visio/pages/pages.xml' ContentType='application/vnd.ms-visio.pages+xml'/>"
       "<Override PartName='/visio/pages/page1.xml' ContentType='application/vnd.ms-visio.page+xml'/></Types>"},
      {"_rels/.rels",
       rels + "<Relationship Id='rId1' Type='" + type + "document' Target='visio/document.xml'/></Relationships>"},
      {"visio/document.xml",
       "<VisioDocument " + main + " " + r +
           " xml:space='preserve'><DocumentSettings TopPage='0'/>"
           "<StyleSheets><StyleSheet ID='0' NameU='No Style' Name='No Style'/></StyleSheets></VisioDocument>"},
      {"visio/_rels/document.xml.rels",
       rels + "<Relationship Id='rId1' Type='" + type + "pages' Target='pages/pages.xml'/></Relationships>"},
      {"visio/pages/pages.xml",
       "<Pages " + main + " " + r + "><Page ID='0' NameU='Page-1' Name='Page-1'><Rel r:id='rId1'/></Page></Pages>"},
      {"visio/pages/_rels/pages.xml.rels",
       rels + "<Relationship Id='rId1' Type='" + type + "page' Target='page1.xml'/></Relationships>"},
      {"visio/pages/page1.xml", "<PageContents " + main + " " + r + "/>"},
  };
}

/// The same with one master, "Task", whose contents are `contents`.
inline Parts partsWithMaster(const std::string& contents) {
  Parts parts = plainParts();
  const std::string type = "http://schemas.microsoft.com/visio/2010/relationships/";
  std::string& rels = parts["visio/_rels/document.xml.rels"];
  rels.insert(rels.find("</Relationships>"),
              "<Relationship Id='rId2' Type='" + type + "masters' Target='masters/masters.xml'/>");
  parts["visio/masters/masters.xml"] =
      "<Masters xmlns='http://schemas.microsoft.com/office/visio/2012/main' "
      "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>"
      "<Master ID='2' NameU='Task' Name='Task' Prompt='Drag me'><Rel r:id='rId1'/></Master></Masters>";
  parts["visio/masters/_rels/masters.xml.rels"] =
      "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'>"
      "<Relationship Id='rId1' Type='" +
      type + "master' Target='master1.xml'/></Relationships>";
  parts["visio/masters/master1.xml"] =
      "<MasterContents xmlns='http://schemas.microsoft.com/office/visio/2012/main' "
      "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>" +
      contents + "</MasterContents>";
  return parts;
}

inline void setPage(Parts& parts, const std::string& contents) {
  parts["visio/pages/page1.xml"] =
      "<PageContents xmlns='http://schemas.microsoft.com/office/visio/2012/main' "
      "xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships'>" +
      contents + "</PageContents>";
}

inline std::string zipOf(const Parts& parts, bool packed = true) {
  std::vector<ZipEntry> entries;
  for (const auto& [name, bytes] : parts) entries.push_back({name, bytes});
  return makeZip(entries, packed);
}

}  // namespace quorvel::formats::testing
