#include "formats/package/xml_writing.h"

#include "base/text.h"

namespace quorvel::formats {

void appendEscaped(std::string& out, std::string_view text, bool inAttribute) {
  std::size_t at = 0;
  while (at < text.size()) {
    const char c = text[at];
    if (static_cast<unsigned char>(c) >= 0x80) {
      const char32_t codePoint = decodeNext(text, at);
      if (codePoint != 0xFFFE && codePoint != 0xFFFF) appendUtf8(out, codePoint);
      continue;
    }
    ++at;
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += inAttribute ? "&quot;" : "\"";
        break;
      case '\n':
        out += inAttribute ? "&#10;" : "\n";
        break;
      case '\t':
        out += inAttribute ? "&#9;" : "\t";
        break;
      case '\r':
        out += "&#13;";
        break;
      default:
        if (static_cast<unsigned char>(c) >= 0x20) out += c;
    }
  }
}

XmlWriter& XmlWriter::start(std::string_view name) {
  closeStart();
  out_.append("<").append(name);
  open_.emplace_back(name);
  startIsOpen_ = true;
  return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, std::string_view value) {
  out_.append(" ").append(name).append("=\"");
  appendEscaped(out_, value, true);
  out_ += '"';
  return *this;
}

XmlWriter& XmlWriter::attribute(std::string_view name, long value) { return attribute(name, std::to_string(value)); }

XmlWriter& XmlWriter::text(std::string_view text) {
  if (text.empty()) return *this;
  closeStart();
  appendEscaped(out_, text, false);
  return *this;
}

XmlWriter& XmlWriter::raw(std::string_view xml) {
  if (xml.empty()) return *this;
  closeStart();
  out_.append(xml);
  return *this;
}

XmlWriter& XmlWriter::end() {
  if (startIsOpen_) {
    out_ += "/>";
    startIsOpen_ = false;
  } else {
    out_.append("</").append(open_.back()).append(">");
  }
  open_.pop_back();
  return *this;
}

XmlWriter& XmlWriter::endWhole() {
  closeStart();
  return end();
}

void XmlWriter::closeStart() {
  if (startIsOpen_) out_ += '>';
  startIsOpen_ = false;
}

}  // namespace quorvel::formats
