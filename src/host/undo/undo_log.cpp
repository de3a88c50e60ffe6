#include "host/undo/undo_log.h"

#include <algorithm>

namespace quorvel::host {
namespace {

/// Below it scopes bear the numbers of the host's own commands, to which listeners react.
constexpr int lastCommandNumber = 9999;

}  // namespace

int UndoLog::begin(DocumentId document, std::string name) {
  lastNumber_ = std::max(lastNumber_, lastCommandNumber);
  if (scopes_.empty()) open_ = {document, name, {}};
  scopes_.push_back({++lastNumber_, std::move(name), open_.entries.size()});
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
  if (!commit) takeBack(open_.entries, scopes_.back().firstEntry);
  scopes_.pop_back();
  if (scopes_.empty() && !open_.entries.empty()) keep(std::move(open_));
  return true;
}

void UndoLog::keep(Step step) {
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
  markChanged(open_.document);
  open_.entries.push_back(std::move(exchange));
  if (scopes_.empty()) keep(std::move(open_));
}

void UndoLog::takeBack(std::vector<Exchange>& entries, std::size_t from) {
  while (entries.size() > from) {
    apply(entries.back(), store_, graph_);
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
  for (std::size_t i = step.entries.size(); i-- > 0;) apply(step.entries[i], store_, graph_);
  // The other way, the entries are walked the other way round.
  std::reverse(step.entries.begin(), step.entries.end());
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
