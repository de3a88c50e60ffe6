#include "host/automation/in_memory_host.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quorvel::host {
namespace {

constexpr std::size_t keptRefusals = 1000;

/// Counts puts and actions inside puts and actions, which handlers of events make. Writes have a bound of their own, which
/// is met first; this one ends an endless exchange of shapes, rows or selections.
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
  if (const auto* number = std::get_if<double>(&value)) return std::isfinite(*number) ? Maybe<double>(*number) : std::nullopt;
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

InMemoryHost::InMemoryHost(EngineOptions options) : engine_(std::move(options)) { engine_.backend = this; }

bool InMemoryHost::alive(const ObjectRef& object) const {
  const Store& store = engine_.store;
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
      return store.page(PageId{object.id}) != nullptr;
    case ObjectKind::Master:
      return store.master(MasterId{object.id}) != nullptr;
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

Maybe<Variant> InMemoryHost::get(const ObjectRef& object, Member member, Arguments arguments) {
  const ObjectRef outer = std::exchange(current_, object);
  const Member outerMember = std::exchange(currentMember_, member);
  Maybe<Variant> value;
  if (infoOf(member).object != object.kind) {
    value = refuse("the object has no such member");
  } else if (!alive(object)) {
    value = refuse("the object is gone");
  } else {
    switch (object.kind) {
      case ObjectKind::Application:
        value = getApplication(member);
        break;
      case ObjectKind::Documents:
        value = getDocuments(member, arguments);
        break;
      case ObjectKind::Document:
        value = getDocument(DocumentId{object.id}, member);
        break;
      case ObjectKind::Pages:
        value = getPages(DocumentId{object.id}, member, arguments);
        break;
      case ObjectKind::Masters:
        value = getMasters(DocumentId{object.id}, member, arguments);
        break;
      case ObjectKind::Master:
        value = Variant(engine_.store.master(MasterId{object.id})->name);
        break;
      case ObjectKind::Page:
        value = getPage(PageId{object.id}, member);
        break;
      case ObjectKind::Shapes:
        value = getShapes(object, member, arguments);
        break;
      case ObjectKind::Shape:
        value = getShape(SheetId{object.id}, member, arguments);
        break;
      case ObjectKind::Characters:
        value = getShape(SheetId{object.id}, Member::Shape_Text, arguments);
        break;
      case ObjectKind::Section:
      case ObjectKind::Row:
        value = getSectionOrRow(object, member, arguments);
        break;
      case ObjectKind::Cell:
        value = getCell({SheetId{object.id}, CellKey::fromPacked(object.part)}, member, arguments);
        break;
      case ObjectKind::Selection:
        value = getSelection(object, member, arguments);
        break;
      case ObjectKind::Window:
        value = getWindow(WindowId{object.id}, member);
        break;
      case ObjectKind::Layers:
      case ObjectKind::Layer:
        value = getLayers(object, member, arguments);
        break;
      case ObjectKind::Hyperlinks:
      case ObjectKind::Hyperlink:
        value = getHyperlinks(object, member, arguments);
        break;
      default:
        value = getCommandBars(object, member, arguments);
        break;
    }
  }
  current_ = outer;
  currentMember_ = outerMember;
  return value;
}

bool InMemoryHost::put(const ObjectRef& object, Member member, Arguments indices, const Argument& value) {
  const ObjectRef outer = std::exchange(current_, object);
  const Member outerMember = std::exchange(currentMember_, member);
  const Nesting nesting(nesting_);
  bool done = false;
  if (infoOf(member).object != object.kind) {
    refuse("the object has no such member");
  } else if (!alive(object)) {
    refuse("the object is gone");
  } else if (nesting.tooDeep()) {
    refuse("calls inside calls are nested too deeply");
  } else {
    switch (object.kind) {
      case ObjectKind::Document:
        done = putDocument(DocumentId{object.id}, member, indices, value);
        break;
      case ObjectKind::Page:
        done = putPage(PageId{object.id}, member, value);
        break;
      case ObjectKind::Shape:
        done = putShape(SheetId{object.id}, member, indices, value);
        break;
      case ObjectKind::Row:
        done = putRow(object, member, value);
        break;
      case ObjectKind::Cell:
        done = putCell({SheetId{object.id}, CellKey::fromPacked(object.part)}, member, indices, value);
        break;
      case ObjectKind::Selection: {
        SelectionSnapshot* snapshot = engine_.selections.find(object.id);
        const Maybe<int> mode = integerOf(value);
        if (snapshot && mode) {
          snapshot->iterationMode = *mode;
          done = true;
        } else {
          refuse("the selection is gone or the mode is no number");
        }
        break;
      }
      case ObjectKind::Window: {
        const auto* page = std::get_if<ObjectRef>(&value);
        const Page* shown = page && page->kind == ObjectKind::Page ? engine_.store.page(PageId{page->id}) : nullptr;
        if (shown && shown->document == engine_.window(WindowId{object.id})->document && !shown->master) {
          WindowState* window = engine_.window(WindowId{object.id});
          if (window->page != shown->id) {
            window->page = shown->id;
            window->selection.clear();
            window->selectionObject = 0;
            const WindowId id = window->id;
            const UndoLog::Suspension suspension(engine_.undo);
            engine_.events.raise([&](ApplicationEvents& listener) { listener.SelectionChanged(engine_.handle(id)); });
          }
          done = true;
        } else {
          refuse("the page is no page of the window's document");
        }
        break;
      }
      case ObjectKind::Hyperlink:
        done = putHyperlink(object, member, value);
        break;
      default:
        done = putCommandBars(object, member, value);
        break;
    }
  }
  current_ = outer;
  currentMember_ = outerMember;
  return done;
}

Maybe<Variant> InMemoryHost::call(const ObjectRef& object, Member member, Arguments arguments) {
  const ObjectRef outer = std::exchange(current_, object);
  const Member outerMember = std::exchange(currentMember_, member);
  const Nesting nesting(nesting_);
  Maybe<Variant> value;
  if (infoOf(member).object != object.kind) {
    value = refuse("the object has no such member");
  } else if (!alive(object)) {
    value = refuse("the object is gone");
  } else if (nesting.tooDeep()) {
    value = refuse("calls inside calls are nested too deeply");
  } else {
    switch (object.kind) {
      case ObjectKind::Application:
        value = callApplication(member, arguments);
        break;
      case ObjectKind::Documents:
        value = callDocuments(member, arguments);
        break;
      case ObjectKind::Document:
      case ObjectKind::Pages:
        value = callDocument(DocumentId{object.id}, member, arguments);
        break;
      case ObjectKind::Page:
        value = callPage(PageId{object.id}, member, arguments);
        break;
      case ObjectKind::Shape:
      case ObjectKind::Characters:
      case ObjectKind::Cell:
        value = callShape(SheetId{object.id}, member, arguments);
        break;
      case ObjectKind::Selection:
        value = callSelection(object, member);
        break;
      case ObjectKind::Window:
        value = callWindow(WindowId{object.id}, member, arguments);
        break;
      case ObjectKind::Layers:
      case ObjectKind::Layer:
        value = callLayers(object, member, arguments);
        break;
      case ObjectKind::Hyperlinks:
      case ObjectKind::Hyperlink:
        value = callHyperlinks(object, member);
        break;
      default:
        value = callCommandBars(object, member, arguments);
        break;
    }
  }
  current_ = outer;
  currentMember_ = outerMember;
  return value;
}

std::nullopt_t InMemoryHost::refuse(std::string reason) {
  ++refusalCount_;
  refusals_.push_back({currentMember_, describe(current_), std::move(reason)});
  if (refusals_.size() > keptRefusals) refusals_.pop_front();
  return std::nullopt;
}

bool InMemoryHost::settle(const Outcome& outcome) {
  if (!outcome) refuse(outcome.reason());
  return static_cast<bool>(outcome);
}

Maybe<Variant> InMemoryHost::settled(const Outcome& outcome) {
  return settle(outcome) ? Maybe<Variant>(Variant(std::monostate())) : Maybe<Variant>();
}

std::string InMemoryHost::describe(const ObjectRef& object) const {
  const Store& store = engine_.store;
  const auto pageName = [&](PageId id) {
    const Page* page = store.page(id);
    if (!page) return std::string("a page that is gone");
    return page->master ? "master " + store.master(page->master)->name : "page " + page->name;
  };
  switch (object.kind) {
    case ObjectKind::Document:
    case ObjectKind::Pages:
    case ObjectKind::Masters: {
      const Document* document = store.document(DocumentId{object.id});
      return document ? document->name : "a document that is gone";
    }
    case ObjectKind::Page:
    case ObjectKind::Layers:
    case ObjectKind::Layer:
      return pageName(PageId{object.id});
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
      if (!sheet) return "a shape that is gone";
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
  engine_.events.raise([&](ApplicationEvents& listener) { listener.AppActivated(app()); });
}

void InMemoryHost::mouseDown(int button, int shift, double x, double y) {
  engine_.events.raise([&](ApplicationEvents& listener) { listener.MouseDown(button, shift, x, y); });
}

void InMemoryHost::mouseMove(int button, int shift, double x, double y) {
  // What follows the pointer is no step of the user's.
  const UndoLog::Suspension suspension(engine_.undo);
  engine_.events.raise([&](ApplicationEvents& listener) { listener.MouseMove(button, shift, x, y); });
}

void InMemoryHost::beginModal() {
  engine_.events.raise([&](ApplicationEvents& listener) { listener.BeforeModal(app()); });
}

void InMemoryHost::endModal() {
  engine_.events.raise([&](ApplicationEvents& listener) { listener.AfterModal(app()); });
}

}  // namespace quorvel::host
