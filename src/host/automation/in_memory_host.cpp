#include "host/automation/in_memory_host.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/xml_characters.h"
#include "host/connector_edits/route_connectors.h"

namespace quorvel::host {
namespace {

constexpr std::size_t keptRefusals = 1000;

/// Counts puts and actions inside puts and actions, which handlers of events make. Writes have a bound of their own,
/// which is met first; this one ends an endless exchange of shapes, rows or selections.
class Nesting {
 public:
  explicit Nesting(int& depth) : depth_(depth) { ++depth_; }
  ~Nesting() { --depth_; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;
  bool tooDeep() const { return depth_ > Engine::deepestWrite + 1; }

 private:
  int& depth_;
};

}  // namespace

Maybe<double> numberOf(const Argument& value) {
  if (const auto* number = std::get_if<double>(&value))
    return std::isfinite(*number) ? Maybe<double>(*number) : std::nullopt;
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? 1.0 : 0.0;
  return {};
}

Maybe<int> integerOf(const Argument& value) {
  const Maybe<double> number = numberOf(value);
  if (!number || std::fabs(*number) > std::numeric_limits<int>::max()) return {};
  return static_cast<int>(*number);
}

Maybe<std::string_view> textOfArgument(const Argument& value) {
  if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
  return {};
}

Maybe<double> numberAt(Arguments arguments, std::size_t place) {
  return place < arguments.size() ? numberOf(arguments[place]) : Maybe<double>();
}

Maybe<int> integerAt(Arguments arguments, std::size_t place) {
  return place < arguments.size() ? integerOf(arguments[place]) : Maybe<int>();
}

Maybe<std::string_view> textAt(Arguments arguments, std::size_t place) {
  return place < arguments.size() ? textOfArgument(arguments[place]) : Maybe<std::string_view>();
}

Maybe<ObjectRef> referenceAt(Arguments arguments, std::size_t place, ObjectKind kind) {
  if (place >= arguments.size()) return {};
  const auto* reference = std::get_if<ObjectRef>(&arguments[place]);
  if (!reference || reference->kind != kind) return {};
  return *reference;
}

InMemoryHost::InMemoryHost(EngineOptions options) : engine_(std::move(options)) {
  engine_.setBackend(*this);
  engine_.setCommandObserver(routingObserver());
}

bool InMemoryHost::alive(const ObjectRef& object) const {
  const Store& store = engine_.store();
  switch (object.kind) {
    case ObjectKind::None:
      return false;
    case ObjectKind::Document:
    case ObjectKind::Pages:
    case ObjectKind::Masters:
      return store.document(DocumentId{object.id}) != nullptr;
    case ObjectKind::Page:
    case ObjectKind::Layers:
    case ObjectKind::Layer:
    case ObjectKind::Connect:
      return store.page(PageId{object.id}) != nullptr;
    case ObjectKind::Master:
      return store.master(MasterId{object.id}) != nullptr;
    case ObjectKind::Connects:
      return object.part == 0 ? store.page(PageId{object.id}) != nullptr : store.sheet(SheetId{object.id}) != nullptr;
    case ObjectKind::Shapes:
      return object.part == 1 ? store.page(PageId{object.id}) != nullptr : store.sheet(SheetId{object.id}) != nullptr;
    case ObjectKind::Shape:
    case ObjectKind::Section:
    case ObjectKind::Row:
    case ObjectKind::Cell:
    case ObjectKind::Characters:
    case ObjectKind::Hyperlinks:
    case ObjectKind::Hyperlink:
      return store.sheet(SheetId{object.id}) != nullptr;
    case ObjectKind::Window:
      return const_cast<Engine&>(engine_).window(WindowId{object.id}) != nullptr;
    default:
      return true;
  }
}

/// The current call, which a refusal names; calls nest through handlers of events.
class InMemoryHost::Current {
 public:
  Current(InMemoryHost& host, const ObjectRef& object, Member member)
      : host_(host),
        object_(std::exchange(host.current_, object)),
        member_(std::exchange(host.currentMember_, member)) {}
  ~Current() {
    host_.current_ = object_;
    host_.currentMember_ = member_;
  }
  Current(const Current&) = delete;
  Current& operator=(const Current&) = delete;

 private:
  InMemoryHost& host_;
  ObjectRef object_;
  Member member_;
};

bool InMemoryHost::admits(const ObjectRef& object, Member member) {
  if (infoOf(member).object != object.kind) {
    refuseName("the object has no such member");
    return false;
  }
  if (!alive(object)) {
    refuse("the object is deleted");
    return false;
  }
  return true;
}

bool InMemoryHost::admitsTexts(const ObjectRef& object, Arguments arguments) {
  switch (object.kind) {
    case ObjectKind::Page:
    case ObjectKind::Shape:
    case ObjectKind::Characters:
    case ObjectKind::Row:
    case ObjectKind::Cell:
    case ObjectKind::Layers:
    case ObjectKind::Hyperlink:
      break;
    case ObjectKind::Document:
      if (currentMember_ == Member::Document_HyperlinkBase) break;
      return true;
    default:
      return true;  // what is written there is kept in no drawing
  }
  for (const Argument& argument : arguments) {
    const auto* const text = std::get_if<std::string_view>(&argument);
    const std::optional<char32_t> character = text ? firstOutsideXml(*text) : std::nullopt;
    if (!character) continue;
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(*character));
    refuse(std::string("the text has the character ") + number + ", which no drawing file can hold");
    return false;
  }
  return true;
}

Maybe<Variant> InMemoryHost::get(const ObjectRef& given, Member member, Arguments arguments) {
  const ObjectRef object = engine_.present(given);
  const Current current(*this, object, member);
  if (!admits(object, member)) return {};
  switch (object.kind) {
    case ObjectKind::Application:
      return getApplication(member);
    case ObjectKind::Documents:
      return getDocuments(member, arguments);
    case ObjectKind::Document:
      return getDocument(DocumentId{object.id}, member);
    case ObjectKind::Pages:
      return getPages(DocumentId{object.id}, member, arguments);
    case ObjectKind::Masters:
      return getMasters(DocumentId{object.id}, member, arguments);
    case ObjectKind::Master:
      return Variant(member == Member::Master_NameU ? engine_.store().master(MasterId{object.id})->universalName
                                                    : engine_.store().master(MasterId{object.id})->name);
    case ObjectKind::Page:
      return getPage(PageId{object.id}, member);
    case ObjectKind::Shapes:
      return getShapes(object, member, arguments);
    case ObjectKind::Shape:
      return getShape(SheetId{object.id}, member, arguments);
    case ObjectKind::Characters:
      return getCharacters(object, member);
    case ObjectKind::Section:
    case ObjectKind::Row:
      return getSectionOrRow(object, member, arguments);
    case ObjectKind::Cell:
      return getCell({SheetId{object.id}, CellKey::fromPacked(object.part)}, member, arguments);
    case ObjectKind::Selection:
      return getSelection(object, member, arguments);
    case ObjectKind::Windows:
      return getWindows(member, arguments);
    case ObjectKind::Window:
      return getWindow(WindowId{object.id}, member);
    case ObjectKind::Layers:
    case ObjectKind::Layer:
      return getLayers(object, member, arguments);
    case ObjectKind::Hyperlinks:
    case ObjectKind::Hyperlink:
      return getHyperlinks(object, member, arguments);
    case ObjectKind::Connects:
    case ObjectKind::Connect:
      return getConnects(object, member, arguments);
    default:
      return getCommandBars(object, member, arguments);
  }
}

bool InMemoryHost::put(const ObjectRef& given, Member member, Arguments indices, const Argument& value) {
  const ObjectRef object = engine_.present(given);
  const Current current(*this, object, member);
  const Nesting nesting(nesting_);
  if (!admits(object, member) || !admitsTexts(object, {&value, 1})) return false;
  if (nesting.tooDeep()) {
    refuse("calls inside calls are nested too deeply");
    return false;
  }
  switch (object.kind) {
    case ObjectKind::Document:
      return putDocument(DocumentId{object.id}, member, indices, value);
    case ObjectKind::Page:
      return putPage(PageId{object.id}, member, value);
    case ObjectKind::Shape:
      return putShape(SheetId{object.id}, member, indices, value);
    case ObjectKind::Characters:
      return putCharacters(object, member, value);
    case ObjectKind::Row:
      return putRow(object, member, value);
    case ObjectKind::Cell:
      return putCell({SheetId{object.id}, CellKey::fromPacked(object.part)}, member, indices, value);
    case ObjectKind::Selection:
      return putSelection(object, value);
    case ObjectKind::Window:
      return putWindow(WindowId{object.id}, member, value);
    case ObjectKind::Hyperlink:
      return putHyperlink(object, member, value);
    default:
      return putCommandBars(object, member, value);
  }
}

Maybe<Variant> InMemoryHost::call(const ObjectRef& given, Member member, Arguments arguments) {
  const ObjectRef object = engine_.present(given);
  const Current current(*this, object, member);
  const Nesting nesting(nesting_);
  if (!admits(object, member) || !admitsTexts(object, arguments)) return {};
  if (nesting.tooDeep()) return refuse("calls inside calls are nested too deeply");
  switch (object.kind) {
    case ObjectKind::Application:
      return callApplication(member, arguments);
    case ObjectKind::Documents:
      return callDocuments(member, arguments);
    case ObjectKind::Document:
    case ObjectKind::Pages:
      return callDocument(DocumentId{object.id}, member, arguments);
    case ObjectKind::Page:
      return callPage(PageId{object.id}, member, arguments);
    case ObjectKind::Shape:
    case ObjectKind::Characters:
    case ObjectKind::Cell:
      return callShape(SheetId{object.id}, member, arguments);
    case ObjectKind::Selection:
      return callSelection(object, member);
    case ObjectKind::Window:
      return callWindow(WindowId{object.id}, member, arguments);
    case ObjectKind::Layers:
    case ObjectKind::Layer:
      return callLayers(object, member, arguments);
    case ObjectKind::Hyperlinks:
    case ObjectKind::Hyperlink:
      return callHyperlinks(object, member);
    default:
      return callCommandBars(object, member, arguments);
  }
}

std::nullopt_t InMemoryHost::refuse(std::string reason) {
  ++refusalCount_;
  refusals_.push_back({currentMember_, describe(current_), std::move(reason)});
  if (refusals_.size() > keptRefusals) refusals_.pop_front();
  return std::nullopt;
}

std::nullopt_t InMemoryHost::refuseName(std::string reason) {
  refuse(std::move(reason));
  refusals_.back().isUnknownName = true;
  return std::nullopt;
}

Maybe<Refusal> InMemoryHost::takeRefusalOf(Member member) {
  const auto found = std::find_if(refusals_.rbegin(), refusals_.rend(),
                                  [&](const Refusal& refusal) { return refusal.member == member; });
  if (found == refusals_.rend()) return {};
  const Refusal refusal = *found;
  refusals_.erase(std::next(found).base());
  return refusal;
}

bool InMemoryHost::settle(const Outcome& outcome) {
  if (outcome.isUnknownName()) {
    refuseName(outcome.reason());
  } else if (!outcome) {
    refuse(outcome.reason());
  }
  return static_cast<bool>(outcome);
}

Maybe<Variant> InMemoryHost::settled(const Outcome& outcome) {
  return settle(outcome) ? Maybe<Variant>(Variant(std::monostate())) : Maybe<Variant>();
}

std::string InMemoryHost::describe(const ObjectRef& object) const {
  const Store& store = engine_.store();
  const auto pageName = [&](PageId id) {
    const Page* page = store.page(id);
    if (!page) return std::string("a page that is deleted");
    return page->master ? "master " + store.master(page->master)->name : "page " + page->name;
  };
  switch (object.kind) {
    case ObjectKind::Document:
    case ObjectKind::Pages:
    case ObjectKind::Masters: {
      const Document* document = store.document(DocumentId{object.id});
      return document ? document->name : "a document that is deleted";
    }
    case ObjectKind::Page:
    case ObjectKind::Layers:
    case ObjectKind::Layer:
    case ObjectKind::Connect:
      return pageName(PageId{object.id});
    case ObjectKind::Connects:
      if (object.part == 0) return pageName(PageId{object.id});
      return describe({ObjectKind::Shape, object.id, 0});
    case ObjectKind::Shapes:
      if (object.part == 1) return pageName(PageId{object.id});
      [[fallthrough]];
    case ObjectKind::Shape:
    case ObjectKind::Section:
    case ObjectKind::Row:
    case ObjectKind::Cell:
    case ObjectKind::Characters:
    case ObjectKind::Hyperlinks:
    case ObjectKind::Hyperlink: {
      const Sheet* sheet = store.sheet(SheetId{object.id});
      if (!sheet) return "a shape that is deleted";
      if (sheet->kind == SheetKind::Document) return store.document(sheet->document)->name;
      if (sheet->kind == SheetKind::Page) return pageName(sheet->page);
      if (!sheet->isShape()) return "style " + sheet->name;
      return pageName(sheet->page) + ", shape " + store.shapeName(*sheet);
    }
    default:
      return "the application";
  }
}

void InMemoryHost::activateApplication() {
  engine_.events().raise([&](ApplicationEvents& listener) { listener.AppActivated(app()); });
}

void InMemoryHost::mouseDown(int button, int shift, double x, double y) {
  engine_.events().raise([&](ApplicationEvents& listener) { listener.MouseDown(button, shift, x, y); });
}

void InMemoryHost::mouseMove(int button, int shift, double x, double y) {
  engine_.events().raise(
      EventDispatcher::Occasion::Upkeep, [] { return true; },
      [&](ApplicationEvents& listener) { listener.MouseMove(button, shift, x, y); });
}

void InMemoryHost::beginModal() {
  engine_.events().raise([&](ApplicationEvents& listener) { listener.BeforeModal(app()); });
}

Outcome InMemoryHost::editShapeData(const Shape& shape, const std::vector<TypedCell>& cells) {
  const Nesting nesting(nesting_);
  if (nesting.tooDeep()) return Outcome::refused("calls inside calls are nested too deeply");
  if (shape.ref().kind != ObjectKind::Shape || !alive(shape.ref())) return Outcome::refused("the object is deleted");
  return host::editShapeData(engine_, SheetId{shape.ref().id}, cells);
}

ReplaceOutcome InMemoryHost::replaceText(std::string_view find, std::string_view replacement,
                                         const ReplaceOptions& options, bool allPages) {
  const Nesting nesting(nesting_);
  if (nesting.tooDeep()) return {Outcome::refused("calls inside calls are nested too deeply"), 0};
  const WindowState* window = engine_.activeWindow();
  if (!window) return {Outcome::refused("there is no window"), 0};
  return host::replaceText(engine_, window->document, allPages ? PageId{} : window->page, find, replacement, options);
}

void InMemoryHost::endModal() {
  engine_.events().raise([&](ApplicationEvents& listener) { listener.AfterModal(app()); });
}

}  // namespace quorvel::host
