#include "formats/package/xml_reading.h"

#include <charconv>

namespace quorvel::formats {
namespace {

struct StringSink : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
};

/// Walks without recursion: the tree may be as deep as the part is long.
bool isDeeperThan(pugi::xml_node root, int limit) {
  int depth = 0;
  pugi::xml_node at = root;
  while (true) {
    if (const pugi::xml_node child = at.first_child()) {
      if (++depth > limit) return true;
      at = child;
      continue;
    }
    while (at != root && !at.next_sibling()) {
      at = at.parent();
      --depth;
    }
    if (at == root) return false;
    at = at.next_sibling();
  }
}

}  // namespace

std::string parseXml(pugi::xml_document& document, std::span<char> bytes) {
  const unsigned flags = pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_doctype;
  const pugi::xml_parse_result result = document.load_buffer_inplace(bytes.data(), bytes.size(), flags);
  if (result.status == pugi::status_no_document_element) return "it is empty";
  if (!result) return std::string("it is not well-formed XML (") + result.description() + ")";
  for (const pugi::xml_node node : document) {
    if (node.type() == pugi::node_doctype) return "it declares a document type, which drawings may not";
  }
  if (isDeeperThan(document, deepestElement)) return "its elements are nested too deep";
  return {};
}

std::string_view localName(const char* name) {
  const std::string_view whole(name);
  const std::size_t colon = whole.rfind(':');
  return colon == std::string_view::npos ? whole : whole.substr(colon + 1);
}

pugi::xml_node childNamed(pugi::xml_node node, std::string_view name) {
  for (const pugi::xml_node child : node) {
    if (child.type() == pugi::node_element && localName(child) == name) return child;
  }
  return {};
}

const char* attributeNamed(pugi::xml_node node, std::string_view name) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (localName(attribute.name()) == name) return attribute.value();
  }
  return nullptr;
}

std::string rawXml(pugi::xml_node node) {
  StringSink sink;
  node.print(sink, "", pugi::format_raw | pugi::format_no_declaration);
  return std::move(sink.text);
}

int wholeNumber(std::string_view text, int other) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && !text.empty() ? number : other;
}

bool truth(std::string_view text) { return text == "1" || text == "true"; }

std::string innerText(pugi::xml_node node) {
  std::string text;
  for (const pugi::xml_node child : node) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) text += child.value();
  }
  return text;
}

}  // namespace quorvel::formats
