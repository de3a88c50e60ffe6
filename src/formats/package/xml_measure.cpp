#include "formats/package/xml_measure.h"

#include <algorithm>

namespace quorvel::formats {
namespace {

constexpr std::uint64_t shapeWeight = 8;

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// Texts of two or four bytes a letter are counted without looking for where markup begins and ends.
bool isOfWideLetters(std::string_view xml) {
  if (xml.size() < 2) return false;
  const auto first = static_cast<unsigned char>(xml[0]), second = static_cast<unsigned char>(xml[1]);
  return first == 0 || second == 0 || first >= 0xFE;
}

XmlMeasure measureWide(std::string_view xml) {
  const auto tags = static_cast<std::uint64_t>(std::ranges::count(xml, '<'));
  const auto attributes = static_cast<std::uint64_t>(std::ranges::count(xml, '='));
  return {tags * shapeWeight + attributes, 0};
}

class Measurer {
 public:
  explicit Measurer(std::string_view xml) : xml_(xml) {}

  XmlMeasure run() {
    while ((at_ = xml_.find('<', at_)) != std::string_view::npos) {
      const std::string_view rest = xml_.substr(at_);
      if (rest.starts_with("<!--")) {
        skipBehind("-->", 4);
      } else if (rest.starts_with("<![CDATA[")) {
        ++measure_.weight;
        skipBehind("]]>", 9);
      } else if (rest.starts_with("<?")) {
        skipBehind("?>", 2);
      } else if (rest.starts_with("</")) {
        --depth_;
        skipBehind(">", 2);
      } else {
        takeStartTag();
      }
    }
    return measure_;
  }

 private:
  void skipBehind(std::string_view mark, std::size_t from) {
    const std::size_t found = xml_.find(mark, at_ + from);
    at_ = found == std::string_view::npos ? xml_.size() : found + mark.size();
  }

  void takeStartTag() {
    const std::size_t begin = at_ + 1;
    std::size_t end = begin;
    while (end < xml_.size() && !isSpace(xml_[end]) && xml_[end] != '>' && xml_[end] != '/') ++end;
    const std::string_view name = xml_.substr(begin, end - begin);
    const bool isShape = name.ends_with("Shape") && (name.size() == 5 || name[name.size() - 6] == ':');
    measure_.weight += isShape ? shapeWeight : 1;
    measure_.depth = std::max(measure_.depth, ++depth_);
    for (at_ = end; at_ < xml_.size() && xml_[at_] != '>'; ++at_) {
      if (xml_[at_] != '"' && xml_[at_] != '\'') continue;
      ++measure_.weight;
      at_ = xml_.find(xml_[at_], at_ + 1);
      if (at_ == std::string_view::npos) {
        at_ = xml_.size();
        return;
      }
    }
    if (at_ < xml_.size() && xml_[at_ - 1] == '/') --depth_;
    if (at_ < xml_.size()) ++at_;
  }

  const std::string_view xml_;
  std::size_t at_ = 0;
  int depth_ = 0;
  XmlMeasure measure_;
};

}  // namespace

XmlMeasure measureXml(std::string_view xml) { return isOfWideLetters(xml) ? measureWide(xml) : Measurer(xml).run(); }

}  // namespace quorvel::formats
