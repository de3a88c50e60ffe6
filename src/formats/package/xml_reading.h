// Parsing XML parts as hostile: no document type, no entity but the built-in ones, bounded depth.
#pragma once

#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel::formats {

using Attributes = std::vector<std::pair<std::string, std::string>>;

/// Deepest nesting of elements in any part. Groups nest two levels for each; no drawing has a hundred groups in each
/// other.
inline constexpr int deepestElement = 512;

/// Parses `bytes` in place (they must outlive the document and are scrambled). Empty when it went well; else what is
/// wrong, fit for "part X is damaged: …".
std::string parseXml(pugi::xml_document& document, std::span<char> bytes);

/// The name without its prefix. Prefixes are the writer's choice; in the parts that we read local names are
/// unambiguous.
std::string_view localName(const char* name);
inline std::string_view localName(pugi::xml_node node) { return localName(node.name()); }

/// First child of that local name; null when there is none.
pugi::xml_node childNamed(pugi::xml_node node, std::string_view name);
/// Value of the attribute of that local name; null pointer when there is none.
const char* attributeNamed(pugi::xml_node node, std::string_view name);

/// The namespaces of drawings and of relationship ids. What belongs to them is kept without a prefix, and with `r`.
inline constexpr std::string_view packageNamespace = "http://schemas.microsoft.com/office/visio/2012/main";
inline constexpr std::string_view singleFileNamespace = "http://schemas.microsoft.com/visio/2003/core";
inline constexpr std::string_view firstFileNamespace = "urn:schemas-microsoft-com:office:visio";
inline constexpr std::string_view relationshipsNamespace =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

/// The element as text, without formatting, fit to be put into another part or file: prefixes that are declared around
/// the element are resolved or declared in it, for which the tree is changed.
std::string rawXml(pugi::xml_node node);
/// The element as it was written.
std::string writtenXml(pugi::xml_node node);
/// Keeps an attribute of `node`, with the declaration of its prefix.
void keepAttribute(pugi::xml_node node, pugi::xml_attribute attribute, Attributes& kept);

/// Reads a whole number; `other` for anything else.
int wholeNumber(std::string_view text, int other);
/// An XML truth value: "1" or "true".
bool truth(std::string_view text);

/// All text directly inside the element.
std::string innerText(pugi::xml_node node);

}  // namespace quorvel::formats
