#include "formats/package/part_name.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace quorvel::formats {
namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = lower(c);
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// Relationship targets are references and may escape blanks and letters; part names in the package don't.
std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 && hexDigit(text[i + 2]) >= 0) {
      result += static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

std::string escaped(std::string_view text) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    if (c == ' ' || c == '%' || c == '#' || c == '?' || c == '"' || c == '<' || c == '>') {
      result += {'%', digits[static_cast<unsigned char>(c) >> 4], digits[c & 15]};
    } else {
      result += c;
    }
  }
  return result;
}

}  // namespace

bool isSafePartName(std::string_view name) {
  if (name.empty() || name.size() > 1024) return false;
  for (const char c : name) {
    if (c == '\\' || c == ':' || static_cast<unsigned char>(c) < 0x20) return false;
  }
  return std::ranges::none_of(splitAt(name, '/'),
                              [](std::string_view step) { return step.empty() || step == "." || step == ".."; });
}

std::string partKey(std::string_view name) {
  std::string key(name);
  std::ranges::transform(key, key.begin(), lower);
  return key;
}

std::string resolveTarget(std::string_view source, std::string_view target) {
  const std::string plain = unescaped(target.substr(0, target.find('#')));
  std::vector<std::string_view> steps;
  if (!plain.starts_with('/')) {
    for (const std::string_view step : splitAt(source.substr(0, source.rfind('/') + 1), '/')) {
      if (!step.empty()) steps.push_back(step);
    }
  }
  for (const std::string_view step : splitAt(plain, '/')) {
    if (step.empty() || step == ".") continue;
    if (step == "..") {
      if (steps.empty()) return {};
      steps.pop_back();
    } else {
      steps.push_back(step);
    }
  }
  std::string part;
  for (const std::string_view step : steps) part.append("/").append(step);
  return part.size() > 1 && isSafePartName(std::string_view(part).substr(1)) ? part : std::string();
}

std::string relativeTarget(std::string_view source, std::string_view part) {
  std::size_t common = 0;
  for (std::size_t i = 0; i < source.size() && i < part.size() && source[i] == part[i]; ++i) {
    if (source[i] == '/') common = i + 1;
  }
  std::string target;
  for (const char c : source.substr(common)) {
    if (c == '/') target += "../";
  }
  return target + escaped(part.substr(common));
}

std::string relationshipsPartOf(std::string_view source) {
  const std::size_t slash = source.rfind('/');
  return std::string(source.substr(0, slash + 1)) + "_rels/" + std::string(source.substr(slash + 1)) + ".rels";
}

std::string extensionOf(std::string_view name) {
  const std::string_view last = lastStep(name);
  const std::size_t dot = last.rfind('.');
  return dot == std::string_view::npos ? std::string() : partKey(last.substr(dot + 1));
}

std::string_view lastStep(std::string_view path) {
  const std::size_t slash = path.find_last_of("/\\");
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

}  // namespace quorvel::formats
