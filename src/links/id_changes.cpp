#include "links/id_changes.h"

#include <utility>

#include "links/link_target.h"

namespace quorvel::addin {
namespace {

int find(const std::unordered_map<std::string, int>& places, const std::string& id) {
  const auto found = places.find(id);
  return found == places.end() ? -1 : found->second;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

IdChanges::IdChanges(std::vector<IdChange> inOrder) : changes_(std::move(inOrder)) {
  // Without an ID no hyperlink can name the Task; one to its page alone must not be taken for one of its own.
  std::erase_if(changes_, [](const IdChange& change) { return change.before.empty() || change.now.empty(); });
  ways_.resize(changes_.size());
  const int count = static_cast<int>(changes_.size());
  for (int i = count - 1; i >= 0; --i) {
    IdChange& change = changes_[static_cast<std::size_t>(i)];
    change.moves = change.moves && change.before != change.now;
    Way& here = way(i);
    here.next = first(change.moves ? change.now : change.before);
    if (here.next >= 0) {
      here.move = way(here.next).move;
      here.end = way(here.next).end;
    }
    if (change.moves) here.move = i;
    if (change.moves && here.end < 0) here.end = i;
    firstOf_[change.before] = i;
    byNewId_[change.now] = i;
  }
  // The changes form trees, each change below the next one. Numbered so that all below a change follow it directly, a
  // single comparison tells whether one is on the way of another.
  for (int i = 0; i < count; ++i) {
    if (way(i).next >= 0) way(way(i).next).length += way(i).length;
  }
  std::vector<int> freeSlot(changes_.size());
  int freeRoot = 0;
  for (int i = count - 1; i >= 0; --i) {
    Way& here = way(i);
    int& slot = here.next >= 0 ? freeSlot[static_cast<std::size_t>(here.next)] : freeRoot;
    here.slot = slot;
    slot += here.length;
    freeSlot[static_cast<std::size_t>(i)] = here.slot + 1;
  }
}

int IdChanges::first(const std::string& id) const { return find(firstOf_, id); }

int IdChanges::firstMove(const std::string& id) const {
  const int start = first(id);
  return start < 0 ? -1 : way(start).move;
}

int IdChanges::moveAfter(int move) const {
  const int next = way(move).next;
  return next < 0 ? -1 : way(next).move;
}

Maybe<std::string> IdChanges::endOf(const std::string& id) const {
  const int start = first(id);
  if (start < 0 || way(start).end < 0) return {};
  return at(way(start).end).now;
}

bool IdChanges::pass(const std::string& id, const std::string& other, bool movesOnly) const {
  const int start = first(id), change = find(byNewId_, other);
  if (start < 0 || change < 0 || (movesOnly && !at(change).moves)) return false;
  return way(change).slot <= way(start).slot && way(start).slot < way(change).slot + way(change).length;
}

/// The move at which the link's description becomes its address; it is in step from then on.
int IdChanges::describesFrom(const LinkText& link) const {
  const LinkTarget target = linkTarget(link.address);
  int move = firstMove(target.taskId);
  if (move < 0 || contains(link.description, link.address)) return move;
  // A description may name another Task of the page that the link comes to later.
  if (!contains(link.description, subAddressOf(target.page, ""))) return -1;
  do move = moveAfter(move);
  while (move >= 0 && !contains(link.description, subAddressOf(target.page, at(move).before)));
  return move;
}

Maybe<std::string> IdChanges::descriptionOf(const LinkText& link) const {
  if (describesFrom(link) < 0) return {};
  const LinkTarget target = linkTarget(link.address);
  return subAddressOf(target.page, endOf(target.taskId).or_({}));
}

Maybe<std::string> IdChanges::descriptionOf(const LinkText& link, const LinkText& first) const {
  const LinkTarget target = linkTarget(link.address), firstTarget = linkTarget(first.address);
  const int since = describesFrom(first);
  const bool isPossible = contains(first.description, subAddressOf(target.page, "")) ||
                          (since >= 0 && firstTarget.page.ends_with(target.page));
  if (!isPossible) return {};
  Maybe<std::string> description;
  std::string address = link.address, firstId = firstTarget.taskId;
  int firstsMove = firstMove(firstId);
  for (int move = firstMove(target.taskId); move >= 0; move = moveAfter(move)) {
    for (; firstsMove >= 0 && firstsMove <= move; firstsMove = moveAfter(firstsMove)) firstId = at(firstsMove).now;
    const bool isInStep = since >= 0 && move >= since;
    const bool describes = contains(isInStep ? subAddressOf(firstTarget.page, firstId) : first.description, address);
    address = subAddressOf(target.page, at(move).now);
    if (describes) description = address;
  }
  return description;
}

}  // namespace quorvel::addin
