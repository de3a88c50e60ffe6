#include "host/undo/undo_log.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <unordered_set>

namespace quorvel::host {
namespace {

/// The sheets that were made by these entries, members included. A shape that was moved into a group meanwhile
/// is not one of those that were made with the group.
std::unordered_set<SheetId> sheetsMadeIn(std::span<const Exchange> entries, const Store& store) {
  std::unordered_set<SheetId> made, moved;
  for (const Exchange& entry : entries) {
    if (const auto* moving = std::get_if<StackPlaceExchange>(&entry)) moved.insert(moving->shape);
  }
  for (const Exchange& entry : entries) {
    const auto* subtree = std::get_if<SubtreeExchange>(&entry);
    if (!subtree) continue;
    if (!subtree->held.empty()) {
      // One that left again took its members along.
      if (!made.contains(subtree->root)) continue;
      std::unordered_set<SheetId> ofGroup{subtree->root};
      for (const auto& sheet : subtree->held) {
        if (!moved.contains(sheet->id) && ofGroup.contains(sheet->parent)) ofGroup.insert(sheet->id);
      }
      made.merge(ofGroup);
    } else if (store.sheet(subtree->root)) {
      std::vector<SheetId> ofGroup{subtree->root};
      for (std::size_t i = 0; i < ofGroup.size(); ++i) {
        made.insert(ofGroup[i]);
        for (const SheetId member : store.sheet(ofGroup[i])->children) {
          if (!moved.contains(member)) ofGroup.push_back(member);
        }
      }
    } else {
      made.insert(subtree->root);
    }
  }
  return made;
}

/// The sheet of an entry that changes what a sheet holds; none for entries of other kinds.
SheetId sheetChangedBy(const Exchange& entry) {
  if (const auto* cell = std::get_if<CellExchange>(&entry)) return cell->cell.sheet;
  if (const auto* row = std::get_if<RowExchange>(&entry)) return row->sheet;
  if (const auto* head = std::get_if<RowHeadExchange>(&entry)) return head->sheet;
  if (const auto* section = std::get_if<SectionExchange>(&entry)) return section->sheet;
  if (const auto* fields = std::get_if<SheetFieldsExchange>(&entry)) return fields->sheet;
  return {};
}

/// Of the shapes that were made with these entries, those that were deleted with them again: their own entries do
/// nothing together. None where shapes were moved between groups, because that needs the groups.
std::unordered_set<SheetId> deletedAgain(std::span<const Exchange> entries, const std::unordered_set<SheetId>& made) {
  std::unordered_set<SheetId> deleted;
  for (const Exchange& entry : entries) {
    if (std::holds_alternative<StackPlaceExchange>(entry)) return {};
    const auto* subtree = std::get_if<SubtreeExchange>(&entry);
    if (!subtree || !made.contains(subtree->root)) continue;
    for (const auto& sheet : subtree->held) deleted.insert(sheet->id);
  }
  return deleted;
}

bool isOfOne(const Exchange& entry, const std::unordered_set<SheetId>& shapes) {
  const auto* subtree = std::get_if<SubtreeExchange>(&entry);
  return subtree && shapes.contains(subtree->root);
}

/// A shape that was made in a scope is removed and restored as a whole: the changes of it need not be kept. A shape
/// that is drawn takes dozens of writes, which would otherwise be most of what undo holds. Looks at the entries from
/// `first` on.
void dropTheMakingOfShapes(std::vector<Exchange>& entries, std::size_t first, const Store& store) {
  const std::span scope = std::span(entries).subspan(first);
  const std::unordered_set<SheetId> made = sheetsMadeIn(scope, store);
  if (made.empty()) return;
  const std::unordered_set<SheetId> deleted = deletedAgain(scope, made);
  std::vector<Exchange> kept;
  for (Exchange& entry : scope) {
    const SheetId sheet = sheetChangedBy(entry);
    if (sheet && made.contains(sheet)) continue;
    if (isOfOne(entry, deleted)) continue;
    kept.push_back(std::move(entry));
  }
  while (entries.size() > first) entries.pop_back();
  for (Exchange& entry : kept) entries.push_back(std::move(entry));
}

}  // namespace

int UndoLog::begin(DocumentId document, std::string name, Owner owner) {
  if (scopes_.empty()) open_ = {document, name, {}, {}, 0};
  scopes_.push_back({++lastNumber_, owner, document, std::move(name), open_.entries.size()});
  return lastNumber_;
}

std::string_view UndoLog::name(int scope) const {
  for (const Scope& open : scopes_) {
    if (open.number == scope) return open.name;
  }
  return {};
}

bool UndoLog::end(int number, bool commit) {
  const auto scope = std::ranges::find(scopes_, number, &Scope::number);
  if (scope == scopes_.end()) return false;
  const std::size_t first = scope->firstEntry;
  scopes_.erase(scope, scopes_.end());
  if (commit) {
    dropTheMakingOfShapes(open_.entries, first, store_);
  } else {
    takeBack(open_.entries, first);
  }
  if (scopes_.empty()) finish();
  return true;
}

bool UndoLog::isInOpenStep(DocumentId id) const {
  if (!isOpen()) return false;
  return open_.document == id ||
         std::ranges::any_of(open_.touched, [&](const auto& touched) { return touched.first == id; });
}

bool UndoLog::endByScript(int number, bool commit) {
  const bool isOwn = isOpen() && scopes_.back().number == number && scopes_.back().owner == Owner::Script;
  return isOwn && end(number, commit);
}

bool UndoLog::hasLastingChangeFrom(std::size_t first) const {
  if (!isOpen()) return false;
  const std::span scope = std::span<const Exchange>(open_.entries).subspan(scopes_.back().firstEntry);
  const std::unordered_set<SheetId> made = sheetsMadeIn(scope, store_), deleted = deletedAgain(scope, made);
  return std::any_of(
      open_.entries.begin() + static_cast<std::ptrdiff_t>(std::min(first, open_.entries.size())), open_.entries.end(),
      [&](const Exchange& entry) { return !made.contains(sheetChangedBy(entry)) && !isOfOne(entry, deleted); });
}

void UndoLog::finish() {
  Step step = std::exchange(open_, {});
  if (step.entries.empty()) {
    for (const auto& [id, before] : step.touched) {
      Document* document = store_.document(id);
      if (document && before != Mark::Unsaved) document->saved = before == Mark::Saved;
    }
    return;
  }
  const auto isTouched = [&](DocumentId id) {
    return std::ranges::any_of(step.touched, [&](const auto& each) { return each.first == id; });
  };
  if (!isTouched(step.document) && !step.touched.empty()) step.document = step.touched.front().first;
  keep(std::move(step));
}

void UndoLog::keep(Step step) {
  step.entries.shrink_to_fit();
  for (const Exchange& entry : step.entries) step.bytes += sizeOf(entry);
  for (const auto& [document, mark] : step.touched) {
    const auto history = histories_.find(document);
    if (history == histories_.end()) continue;
    for (const Step& other : history->second.undone) history->second.bytes -= other.bytes;
    history->second.undone.clear();
  }
  if (store_.document(step.document)) {
    History& history = histories_[step.document];
    history.bytes += step.bytes;
    history.done.push_back(std::move(step));
    trim(history);
  }
  notifyStep();
}

void UndoLog::trim(History& history) const {
  const auto isTooMuch = [&] {
    const std::size_t steps = history.done.size() + history.undone.size();
    return steps > limits_.steps || (history.bytes > limits_.bytes && steps > 1);
  };
  while (isTooMuch()) {
    std::deque<Step>& steps = history.done.empty() ? history.undone : history.done;
    history.bytes -= steps.front().bytes;
    steps.pop_front();
  }
}

void UndoLog::setLimits(const UndoLimits& limits) {
  limits_ = limits;
  for (auto& [document, history] : histories_) trim(history);
}

std::size_t UndoLog::bytes(DocumentId document) const {
  const auto history = histories_.find(document);
  return history == histories_.end() ? 0 : history->second.bytes;
}

void UndoLog::touch(DocumentId id) {
  const Document* document = store_.document(id);
  if (!document) return;
  // The last documents are the likely ones, and there is rarely more than one.
  const auto known = std::ranges::find(open_.touched, id, &std::pair<DocumentId, Mark>::first);
  if (known == open_.touched.end()) open_.touched.emplace_back(id, document->saved ? Mark::Saved : Mark::Unsaved);
}

void UndoLog::noteSaved(DocumentId id) {
  for (auto& [document, mark] : open_.touched) {
    if (document == id) mark = Mark::SavedMeanwhile;
  }
}

void UndoLog::noteChanged(DocumentId id) {
  for (auto& [document, mark] : open_.touched) {
    if (document == id) mark = Mark::Unsaved;
  }
  markChanged(id);
}

void UndoLog::markChanged(DocumentId id) {
  Document* document = store_.document(id);
  if (!document) return;
  document->saved = false;
  if (changeCounts_.size() <= id.value) changeCounts_.resize(id.value + 1);
  ++changeCounts_[id.value];
}

void UndoLog::add(Exchange exchange) {
  if (suspended_) return;
  const DocumentId document = documentOf(exchange, store_);
  if (scopes_.empty()) open_ = {document, {}, {}, {}, 0};
  if (!open_.document && isOpen()) open_.document = scopes_.back().document;
  touch(document);
  markChanged(document);
  open_.entries.push_back(std::move(exchange));
  if (scopes_.empty()) keep(std::exchange(open_, {}));
}

void UndoLog::takeBack(std::vector<Exchange>& entries, std::size_t from) {
  while (entries.size() > from) {
    apply(entries.back(), drawing_);
    entries.pop_back();
  }
}

bool UndoLog::move(DocumentId document, std::deque<Step> History::*from, std::deque<Step> History::*to) {
  const auto found = histories_.find(document);
  if (isOpen() || found == histories_.end() || (found->second.*from).empty()) return false;
  History& history = found->second;
  Step step = std::move((history.*from).back());
  (history.*from).pop_back();
  history.bytes -= step.bytes;
  for (std::size_t i = step.entries.size(); i-- > 0;) apply(step.entries[i], drawing_);
  // The other way, the entries are walked the other way round.
  step.entries = std::vector<Exchange>(std::make_move_iterator(step.entries.rbegin()),
                                       std::make_move_iterator(step.entries.rend()));
  step.bytes = 0;
  for (const Exchange& entry : step.entries) step.bytes += sizeOf(entry);
  for (const auto& [touched, mark] : step.touched) markChanged(touched);
  history.bytes += step.bytes;
  (history.*to).push_back(std::move(step));
  trim(history);
  notifyStep();
  return true;
}

bool UndoLog::undo(DocumentId document) { return move(document, &History::done, &History::undone); }
bool UndoLog::redo(DocumentId document) { return move(document, &History::undone, &History::done); }

std::size_t UndoLog::undoCount(DocumentId document) const {
  const auto history = histories_.find(document);
  return history == histories_.end() ? 0 : history->second.done.size();
}

std::size_t UndoLog::redoCount(DocumentId document) const {
  const auto history = histories_.find(document);
  return history == histories_.end() ? 0 : history->second.undone.size();
}

void UndoLog::discard(DocumentId document) { histories_.erase(document); }

}  // namespace quorvel::host
