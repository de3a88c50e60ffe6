#include "host/undo/undo_log.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <unordered_set>

namespace quorvel::host {
namespace {

/// The sheets that came into being with these entries, members included. A shape that was moved into a group on the way
/// is none of those that came with the group.
std::unordered_set<SheetId> sheetsMadeIn(std::span<const Exchange> entries, const Store& store) {
  std::unordered_set<SheetId> made, moved;
  for (const Exchange& entry : entries) {
    if (const auto* standing = std::get_if<StandingExchange>(&entry)) moved.insert(standing->shape);
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

/// A shape that was made in a scope goes and comes whole: how it became what it is need not be kept. A shape that is
/// drawn takes dozens of writes, which would otherwise be most of what undo holds. Looks at the entries from `first`
/// on.
void dropTheMakingOfShapes(std::vector<Exchange>& entries, std::size_t first, const Store& store) {
  const std::unordered_set<SheetId> made = sheetsMadeIn(std::span(entries).subspan(first), store);
  if (made.empty()) return;
  std::vector<Exchange> kept;
  for (std::size_t i = first; i < entries.size(); ++i) {
    const SheetId sheet = sheetChangedBy(entries[i]);
    if (!sheet || !made.contains(sheet)) kept.push_back(std::move(entries[i]));
  }
  while (entries.size() > first) entries.pop_back();
  for (Exchange& entry : kept) entries.push_back(std::move(entry));
}

}  // namespace

int UndoLog::begin(DocumentId document, std::string name) {
  if (scopes_.empty()) open_ = {document, name, {}};
  scopes_.push_back({++lastNumber_, document, std::move(name), open_.entries.size()});
  return lastNumber_;
}

std::string_view UndoLog::name(int scope) const {
  for (const Scope& open : scopes_) {
    if (open.number == scope) return open.name;
  }
  return {};
}

bool UndoLog::end(int number, bool commit) {
  if (scopes_.empty() || scopes_.back().number != number) return false;
  if (commit) {
    dropTheMakingOfShapes(open_.entries, scopes_.back().firstEntry, store_);
  } else {
    takeBack(open_.entries, scopes_.back().firstEntry);
  }
  scopes_.pop_back();
  if (scopes_.empty() && !open_.entries.empty()) keep(std::move(open_));
  return true;
}

void UndoLog::keep(Step step) {
  step.entries.shrink_to_fit();
  std::erase_if(undone_, [&](const Step& other) { return other.document == step.document; });
  done_.push_back(std::move(step));
  open_ = {};
  tellStep();
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
  if (!open_.document && !scopes_.empty()) open_.document = scopes_.back().document;
  markChanged(open_.document);
  open_.entries.push_back(std::move(exchange));
  if (scopes_.empty()) keep(std::move(open_));
}

void UndoLog::takeBack(std::vector<Exchange>& entries, std::size_t from) {
  while (entries.size() > from) {
    apply(entries.back(), store_, graph_, placements_);
    entries.pop_back();
  }
}

bool UndoLog::move(std::vector<Step>& from, std::vector<Step>& to, DocumentId document) {
  if (isOpen()) return false;
  const auto last =
      std::find_if(from.rbegin(), from.rend(), [&](const Step& step) { return step.document == document; });
  if (last == from.rend()) return false;
  Step step = std::move(*last);
  from.erase(std::next(last).base());
  for (std::size_t i = step.entries.size(); i-- > 0;) apply(step.entries[i], store_, graph_, placements_);
  // The other way, the entries are walked the other way round.
  step.entries = std::vector<Exchange>(std::make_move_iterator(step.entries.rbegin()),
                                       std::make_move_iterator(step.entries.rend()));
  to.push_back(std::move(step));
  markChanged(document);
  tellStep();
  return true;
}

bool UndoLog::undo(DocumentId document) { return move(done_, undone_, document); }
bool UndoLog::redo(DocumentId document) { return move(undone_, done_, document); }

std::size_t UndoLog::undoCount(DocumentId document) const {
  return static_cast<std::size_t>(
      std::count_if(done_.begin(), done_.end(), [&](const Step& step) { return step.document == document; }));
}

std::size_t UndoLog::redoCount(DocumentId document) const {
  return static_cast<std::size_t>(
      std::count_if(undone_.begin(), undone_.end(), [&](const Step& step) { return step.document == document; }));
}

void UndoLog::forget(DocumentId document) {
  const auto belongs = [&](const Step& step) { return step.document == document; };
  std::erase_if(done_, belongs);
  std::erase_if(undone_, belongs);
}

}  // namespace quorvel::host
