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

/// Deepest nesting of elements in any part. Groups nest two levels for each; nobody draws a hundred groups in each
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

/// The element as text, without formatting.
std::string rawXml(pugi::xml_node node);

/// Reads a whole number; `other` for anything else.
int wholeNumber(std::string_view text, int other);
/// An XML truth value: "1" or "true".
bool truth(std::string_view text);

/// All text directly inside the element.
std::string innerText(pugi::xml_node node);

}  // namespace quorvel::formats
