// Names that the file format fixes: namespaces, relationship types, content types.
#pragma once

#include <string_view>

#include "formats/package/xml_reading.h"

namespace quorvel::formats::names {

inline constexpr std::string_view drawingNamespace = packageNamespace;
inline constexpr std::string_view relationshipNamespace = relationshipsNamespace;

inline constexpr std::string_view documentRelationship =
    "http://schemas.microsoft.com/visio/2010/relationships/document";
inline constexpr std::string_view mastersRelationship = "http://schemas.microsoft.com/visio/2010/relationships/masters";
inline constexpr std::string_view masterRelationship = "http://schemas.microsoft.com/visio/2010/relationships/master";
inline constexpr std::string_view pagesRelationship = "http://schemas.microsoft.com/visio/2010/relationships/pages";
inline constexpr std::string_view pageRelationship = "http://schemas.microsoft.com/visio/2010/relationships/page";
inline constexpr std::string_view imageRelationship =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/image";
inline constexpr std::string_view objectRelationship =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/oleObject";
inline constexpr std::string_view coreRelationship =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
inline constexpr std::string_view applicationRelationship =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/extended-properties";
inline constexpr std::string_view customRelationship =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/custom-properties";

inline constexpr std::string_view relationshipsType = "application/vnd.openxmlformats-package.relationships+xml";
inline constexpr std::string_view mastersType = "application/vnd.ms-visio.masters+xml";
inline constexpr std::string_view masterType = "application/vnd.ms-visio.master+xml";
inline constexpr std::string_view pagesType = "application/vnd.ms-visio.pages+xml";
inline constexpr std::string_view pageType = "application/vnd.ms-visio.page+xml";
inline constexpr std::string_view coreType = "application/vnd.openxmlformats-package.core-properties+xml";
inline constexpr std::string_view applicationType =
    "application/vnd.openxmlformats-officedocument.extended-properties+xml";
inline constexpr std::string_view customType = "application/vnd.openxmlformats-officedocument.custom-properties+xml";

/// What each kind of file says its document part is.
struct FileKind {
  std::string_view extension;
  std::string_view contentType;
  bool isStencil;
  bool holdsMacros;
};
inline constexpr FileKind fileKinds[] = {
    {"vsdx", "application/vnd.ms-visio.drawing.main+xml", false, false},
    {"vssx", "application/vnd.ms-visio.stencil.main+xml", true, false},
    {"vstx", "application/vnd.ms-visio.template.main+xml", false, false},
    {"vsdm", "application/vnd.ms-visio.drawing.macroEnabled.main+xml", false, true},
    {"vssm", "application/vnd.ms-visio.stencil.macroEnabled.main+xml", true, true},
    {"vstm", "application/vnd.ms-visio.template.macroEnabled.main+xml", false, true},
};

}  // namespace quorvel::formats::names
