// Takes drawings and lines of formulas apart into seeds: make_seeds FOLDER FILE...
// Packages, their single parts, the pages of single-file drawings, and every formula in any of them.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <pugixml.hpp>
#include <set>
#include <string>

#include "formats/package/zip_package.h"

namespace {

namespace fs = std::filesystem;

/// Larger parts would be cut in the middle by the targets' own limit.
constexpr std::size_t largestPackage = 60'000, largestText = 16'000;

class Seeds {
 public:
  explicit Seeds(fs::path folder) : folder_(std::move(folder)) {}

  void add(const std::string& target, const std::string& bytes) {
    const std::size_t largest = target == "package" ? largestPackage : largestText;
    if (bytes.empty() || bytes.size() > largest || !known_.insert(target + bytes).second) return;
    fs::create_directories(folder_ / target);
    std::ofstream(folder_ / target / ("seed" + std::to_string(known_.size())), std::ios::binary) << bytes;
  }

  void addPackage(const fs::path& file, const std::string& bytes) {
    add("package", bytes);
    quorvel::formats::ZipPackage package;
    if (!package.open(file.string()).empty()) return;
    for (const std::string& name : package.names()) {
      std::string part;
      if (!name.ends_with(".xml") || !package.read(name, part)) continue;
      add("vsdx", "== " + name.substr(1) + "\n" + part);
      addFormulas(part);
    }
  }

  /// The file with only one of its pages and one of its masters, each in turn.
  void addSingleFile(const std::string& bytes) {
    add("vdx", bytes);
    addFormulas(bytes);
    for (int place = 0; place < 40; ++place) {
      pugi::xml_document document;
      if (!document.load_string(bytes.c_str())) return;
      bool isThere = false;
      for (const char* list : {"Pages", "Masters", "StyleSheets"}) {
        pugi::xml_node parent = document.document_element().child(list);
        int at = 0;
        for (pugi::xml_node child = parent.first_child(); child;) {
          const pugi::xml_node next = child.next_sibling();
          if (at++ == place) {
            isThere = true;
          } else {
            parent.remove_child(child);
          }
          child = next;
        }
      }
      if (!isThere) return;
      document.document_element().remove_child("DocumentProperties");
      document.document_element().remove_child("VBProjectData");
      struct : pugi::xml_writer {
        std::string text;
        void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
      } writer;
      document.print(writer, "", pugi::format_raw);
      add("vdx", writer.text);
    }
  }

  /// Lines of the formula tests: "given => expected", formats "value | format => …".
  void addLines(const fs::path& file, const std::string& text) {
    const bool areFormats = file.filename() == "formats.txt";
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = std::min(text.find('\n', at), text.size());
      const std::string line = text.substr(at, end - at);
      at = end + 1;
      const std::size_t arrow = line.rfind(" => ");
      if (arrow == std::string::npos || line[0] == '#') continue;
      std::string given = line.substr(0, arrow);
      const std::size_t bar = given.find(" | ");
      if (areFormats && bar != std::string::npos) given.replace(bar, 3, "\n");
      add(areFormats ? "format" : "formula", given);
    }
  }

 private:
  void addFormulas(const std::string& xml) {
    pugi::xml_document document;
    if (!document.load_string(xml.c_str())) return;
    struct : pugi::xml_tree_walker {
      Seeds* seeds = nullptr;
      bool for_each(pugi::xml_node& node) override {
        seeds->add("formula", node.attribute("F").value());
        return true;
      }
    } walker;
    walker.seeds = this;
    document.traverse(walker);
  }

  const fs::path folder_;
  std::set<std::string> known_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: make_seeds FOLDER FILE...\n", stderr);
    return 2;
  }
  Seeds seeds(argv[1]);
  for (int i = 2; i < argc; ++i) {
    const fs::path file = argv[i];
    std::ifstream in(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (bytes.starts_with("PK")) {
      seeds.addPackage(file, bytes);
    } else if (file.extension() == ".txt") {
      seeds.addLines(file, bytes);
    } else if (bytes.starts_with("<")) {
      seeds.addSingleFile(bytes);
    }
  }
}
