#include "formats/package/xml_reading.h"

#include <algorithm>
#include <charconv>

namespace quorvel::formats {
namespace {

/// A carriage return is written as a reference: reading turns a plain one into a line feed.
struct StringSink : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override {
    std::string_view rest(static_cast<const char*>(data), size);
    for (std::size_t at = rest.find('\r'); at != std::string_view::npos; at = rest.find('\r')) {
      text.append(rest.substr(0, at)).append("&#13;");
      rest.remove_prefix(at + 1);
    }
    text.append(rest);
  }
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

std::string_view prefixOf(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

/// The element that declares the prefix ("": elements without one), itself or around it; null when none does.
pugi::xml_node declaring(pugi::xml_node node, std::string_view prefix) {
  const std::string declaration = prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix);
  while (node && !node.attribute(declaration.c_str())) node = node.parent();
  return node;
}

std::string_view declaredAs(pugi::xml_node declaring, std::string_view prefix) {
  const std::string declaration = prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix);
  return declaring.attribute(declaration.c_str()).value();
}

bool isOfDrawings(std::string_view name) {
  return name == packageNamespace || name == singleFileNamespace || name == firstFileNamespace;
}

void declare(pugi::xml_node node, std::string_view prefix, std::string_view name) {
  const std::string declaration = prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix);
  if (!node.attribute(declaration.c_str())) node.append_attribute(declaration.c_str()) = std::string(name).c_str();
}

/// Resolves or declares the prefixes of a tree, so that it means the same wherever it is put.
class PrefixResolver : public pugi::xml_tree_walker {
 public:
  explicit PrefixResolver(pugi::xml_node root) : root_(root) {}

  bool for_each(pugi::xml_node& node) override {
    if (node.type() != pugi::node_element) return true;
    resolveName(node);
    for (pugi::xml_attribute attribute : node.attributes()) resolveAttribute(node, attribute);
    return true;
  }

 private:
  bool isInside(pugi::xml_node node) const {
    while (node && node != root_) node = node.parent();
    return static_cast<bool>(node);
  }

  void resolveName(pugi::xml_node node) {
    const std::string prefix(prefixOf(node.name()));
    const pugi::xml_node where = declaring(node, prefix);
    const std::string name(declaredAs(where, prefix));
    if (prefix.empty()) {
      if (node == root_ && where && where != root_ && !isOfDrawings(name)) declare(root_, prefix, name);
      return;
    }
    if (!where) return;
    if (isOfDrawings(name)) {
      const pugi::xml_node around = declaring(node, {});
      const bool otherInside = around && isInside(around) && !isOfDrawings(declaredAs(around, {}));
      node.set_name(std::string(localName(node)).c_str());
      if (otherInside) declare(node, {}, name);
    } else if (!isInside(where)) {
      declare(root_, prefix, name);
    }
  }

  void resolveAttribute(pugi::xml_node node, pugi::xml_attribute attribute) {
    const std::string prefix(prefixOf(attribute.name()));
    if (prefix.empty() || prefix == "xml" || prefix == "xmlns") return;
    const pugi::xml_node where = declaring(node, prefix);
    if (!where) return;
    const std::string name(declaredAs(where, prefix));
    if (name == relationshipsNamespace) {
      attribute.set_name(("r:" + std::string(localName(attribute.name()))).c_str());
    } else if (!isInside(where)) {
      declare(root_, prefix, name);
    }
  }

  pugi::xml_node root_;
};

void resolvePrefixes(pugi::xml_node node) {
  PrefixResolver resolver(node);
  resolver.for_each(node);
  node.traverse(resolver);
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

std::string writtenXml(pugi::xml_node node) {
  StringSink sink;
  node.print(sink, "", pugi::format_raw | pugi::format_no_declaration);
  return std::move(sink.text);
}

std::string rawXml(pugi::xml_node node) {
  std::string text = writtenXml(node);
  if (node.type() != pugi::node_element) return text;
  // Nearly all elements use no prefix, and are in the namespace of drawings.
  const pugi::xml_node around = declaring(node, {});
  if (text.find(':') == std::string::npos && (!around || isOfDrawings(declaredAs(around, {})))) return text;
  resolvePrefixes(node);
  return writtenXml(node);
}

void keepAttribute(pugi::xml_node node, pugi::xml_attribute attribute, Attributes& kept) {
  std::string name = attribute.name();
  const std::string prefix(prefixOf(name));
  const auto isKept = [&](std::string_view called) {
    return std::ranges::find(kept, called, &Attributes::value_type::first) != kept.end();
  };
  if (prefix == "xmlns") {
    if (isKept(name)) return;
  } else if (!prefix.empty() && prefix != "xml") {
    const pugi::xml_node where = declaring(node, prefix);
    const std::string declaration = "xmlns:" + prefix;
    if (declaredAs(where, prefix) == relationshipsNamespace) {
      name = "r:" + std::string(localName(attribute.name()));
    } else if (where && !isKept(declaration)) {
      kept.emplace_back(declaration, declaredAs(where, prefix));
    }
  }
  kept.emplace_back(std::move(name), attribute.value());
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
