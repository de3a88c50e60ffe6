#include "host/cells/atom.h"

#include <deque>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <unordered_map>

#include "base/text.h"

namespace quorvel::host {
namespace {

struct AtomTable {
  struct Entry {
    std::string spelling;
    Atom folded;
  };
  std::shared_mutex mutex;
  std::deque<Entry> entries{1};  // entry 0 is no name; a deque keeps spellings where they are
  std::unordered_map<std::string_view, Atom> bySpelling;

  Atom find(std::string_view name) const {
    const auto found = bySpelling.find(name);
    return found == bySpelling.end() ? Atom{} : found->second;
  }

  Atom add(std::string_view name) {
    const Atom atom{static_cast<std::uint32_t>(entries.size())};
    entries.push_back({std::string(name), atom});
    bySpelling.emplace(entries.back().spelling, atom);
    return atom;
  }
};

AtomTable& table() {
  static AtomTable atoms;
  return atoms;
}

}  // namespace

Atom intern(std::string_view name) {
  if (name.empty()) return {};
  AtomTable& atoms = table();
  {
    std::shared_lock lock(atoms.mutex);
    if (const Atom known = atoms.find(name)) return known;
  }
  const std::string foldedName = foldCase(name);
  std::unique_lock lock(atoms.mutex);
  if (const Atom known = atoms.find(name)) return known;
  Atom foldedAtom = atoms.find(foldedName);
  if (!foldedAtom) foldedAtom = atoms.add(foldedName);
  if (foldedName == name) return foldedAtom;
  const Atom atom = atoms.add(name);
  atoms.entries[atom.value].folded = foldedAtom;
  return atom;
}

Atom folded(Atom name) {
  AtomTable& atoms = table();
  std::shared_lock lock(atoms.mutex);
  return name.value < atoms.entries.size() ? atoms.entries[name.value].folded : Atom{};
}

Atom findFolded(std::string_view name) {
  AtomTable& atoms = table();
  {
    std::shared_lock lock(atoms.mutex);
    if (const Atom known = atoms.find(name)) return atoms.entries[known.value].folded;
  }
  const std::string foldedName = foldCase(name);
  std::shared_lock lock(atoms.mutex);
  return atoms.find(foldedName);
}

std::string_view spelling(Atom name) {
  AtomTable& atoms = table();
  std::shared_lock lock(atoms.mutex);
  return name.value < atoms.entries.size() ? std::string_view(atoms.entries[name.value].spelling) : std::string_view();
}

}  // namespace quorvel::host
