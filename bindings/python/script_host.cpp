#include "script_host.h"

#include <algorithm>

#include "base/basic_text.h"
#include "base/text.h"
#include "form_access.h"
#include "formats/package/atomic_file.h"
#include "map_values.h"
#include "report/output/report_file.h"
#include "report/process_map.h"
#include "report/table/make_table.h"
#include "session/pictures.h"
#include "values.h"

namespace quorvel::python {
namespace {

constexpr const char* answerNames[] = {"OK", "Yes", "No", "Cancel"};  // in the order of MessageAnswer

std::vector<MessageAnswer> answersOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::YesNo:
      return {MessageAnswer::Yes, MessageAnswer::No};
    case MessageButtons::YesNoCancel:
      return {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel};
    case MessageButtons::OkCancel:
      return {MessageAnswer::Ok, MessageAnswer::Cancel};
    case MessageButtons::Ok:
      break;
  }
  return {MessageAnswer::Ok};
}

const char* nameOf(MessageAnswer answer) { return answerNames[static_cast<int>(answer)]; }

const char* nameOf(MessageButtons buttons) {
  constexpr const char* names[] = {"OK", "YesNo", "YesNoCancel", "OKCancel"};
  return names[static_cast<int>(buttons)];
}

const char* nameOf(MessageIcon icon) {
  constexpr const char* names[] = {"", "Stop", "Question", "Information"};
  return names[static_cast<int>(icon)];
}

/// The answer that the script's handler gave; throws a ValueError for one that the box does not offer.
MessageAnswer answerFrom(const py::object& given, const MessageBox& box) {
  const std::string name = py::str(given);
  std::string offered;
  for (const MessageAnswer answer : answersOf(box.buttons)) {
    if (equalIgnoringCase(name, nameOf(answer))) return answer;
    offered += (offered.empty() ? "" : ", ") + std::string(nameOf(answer));
  }
  throw py::value_error("OnMessage answered \"" + name + "\" to \"" + box.text + "\"; it takes one of: " + offered);
}

void acceptForm(Form& form) {
  for (const auto& control : form.controls()) {
    if (control->isDefaultButton) {
      control->click();
      return;
    }
  }
}

}  // namespace

ScriptHost::ScriptHost(const py::object& application, SessionOptions options, Answers answers)
    : application_(application), answers_(answers), session_(std::make_unique<Session>(std::move(options))) {
  HeadlessPlatform& platform = session_->platform();
  platform.onForm = [this](Form& form) { answerForm(form); };
  platform.onMessage = [this](const MessageBox& box) { return answerMessage(box); };
  platform.onFileDialog = [this](const FileDialog& dialog) { return answerFileDialog(dialog); };
  platform.onShellOpen = [this](std::string_view target) { return answerShellOpen(target); };
  session_->host().advise(events_);
}

ScriptHost::~ScriptHost() {
  // The script's objects are deleted: nothing can handle what the add-in does at the end.
  session_->host().unadvise(events_);
  session_->platform().onForm = nullptr;
  session_->platform().onMessage = nullptr;
  session_->platform().onFileDialog = nullptr;
  session_->platform().onShellOpen = nullptr;
}

void ScriptHost::refuse(Member member) const {
  const MemberInfo& info = infoOf(member);
  std::string_view name = info.memberName;
  for (const std::string_view variant : {"ByName", "ByIndex"}) {
    if (name.ends_with(variant)) name.remove_suffix(variant.size());
  }
  const Maybe<Refusal> refusal = session_->host().takeRefusalOf(member);
  throw Refused{std::string(info.objectName) + "." + std::string(name), refusal ? refusal->object : std::string(),
                refusal ? refusal->reason : "the host gave no reason"};
}

std::vector<std::string> ScriptHost::unknownNames() const {
  std::vector<std::string> names;
  for (const Refusal& refusal : session_->host().refusals()) {
    if (refusal.isUnknownName)
      names.push_back(std::string(infoOf(refusal.member).memberName) + " on " + refusal.object + ": " + refusal.reason);
  }
  return names;
}

py::object ScriptHost::get(const ObjectRef& object, int member, const py::tuple& arguments) {
  const HostArguments values(arguments);
  const auto number = static_cast<Member>(member);
  return enter([&] {
    const Maybe<Variant> value = session_->host().get(object, number, values);
    if (!value) refuse(number);
    return valueToPython(*value);
  });
}

void ScriptHost::put(const ObjectRef& object, int member, const py::tuple& indices, const py::object& value) {
  const HostArguments places(indices);
  const Argument put = argumentOf(value);
  const auto number = static_cast<Member>(member);
  enter([&] {
    if (!session_->host().put(object, number, places, put)) refuse(number);
  });
}

py::object ScriptHost::call(const ObjectRef& object, int member, const py::tuple& arguments) {
  const HostArguments values(arguments);
  const auto number = static_cast<Member>(member);
  return enter([&] {
    // The drop shows its page without an event; scripts get WindowActivated for it.
    if (number == Member::Page_Drop || number == Member::Page_DropConnected || number == Member::Page_Paste)
      showPageOf(object);
    const Maybe<Variant> value = session_->host().call(object, number, values);
    if (!value) refuse(number);
    return valueToPython(*value);
  });
}

void ScriptHost::showPageOf(const ObjectRef& page) {
  host::Engine& engine = session_->engine();
  const host::Page* shown = page.kind == ObjectKind::Page ? engine.store().page(host::PageId{page.id}) : nullptr;
  const host::WindowState* window = shown ? engine.windowOf(shown->document) : nullptr;
  if (!window) return;
  const Window handle = engine.handle(window->id);
  const bool otherPage = window->page != shown->id;
  handle.Activate();
  if (otherPage) handle.SetPage(engine.handle(host::PageId{page.id}));
}

void ScriptHost::activatePage(const ObjectRef& page) {
  enter([&] {
    host::Engine& engine = session_->engine();
    const host::Page* shown = engine.store().page(host::PageId{page.id});
    if (!shown) throw Refused{"Page.Activate", "a page that is deleted", "the object is deleted"};
    if (!engine.windowOf(shown->document))
      throw Refused{"Page.Activate", "page " + shown->name, "its document has no window"};
    showPageOf(page);
  });
}

void ScriptHost::activateApplication() {
  enter([&] { session_->host().activateApplication(); });
}

void ScriptHost::mouseDown(int button, int shift, double x, double y) {
  enter([&] { session_->host().mouseDown(button, shift, x, y); });
}

void ScriptHost::mouseMove(int button, int shift, double x, double y) {
  enter([&] { session_->host().mouseMove(button, shift, x, y); });
}

void ScriptHost::editShapeData(const ObjectRef& shape, const std::vector<std::pair<std::string, py::object>>& values) {
  std::vector<host::TypedCell> typed;
  for (const auto& [cell, value] : values) {
    std::string formula;
    if (py::isinstance<py::str>(value)) {
      formula = quoted(value.cast<std::string>());
    } else if (py::isinstance<py::bool_>(value)) {
      formula = value.cast<bool>() ? "TRUE" : "FALSE";
    } else {
      formula = shortestNumber(value.cast<double>());
    }
    typed.push_back({cell, std::move(formula)});
  }
  enter([&] {
    host::InMemoryHost& running = session_->host();
    const Shape handle(&running, shape);
    const std::string name = handle.NameID().or_("a shape that is deleted");
    if (const host::Outcome done = running.editShapeData(handle, typed); !done)
      throw Refused{"Shape.EditShapeData", name, done.reason()};
  });
}

int ScriptHost::replaceText(const std::string& find, const std::string& replacement, bool matchCase, bool wholeWords,
                            bool allPages) {
  return enter([&] {
    const host::ReplaceOutcome done =
        session_->host().replaceText(find, replacement, {matchCase, wholeWords}, allPages);
    if (!done.outcome) throw Refused{"Application.ReplaceText", "the application", done.outcome.reason()};
    return done.count;
  });
}

std::pair<std::size_t, std::size_t> ScriptHost::undoLimits() const {
  const host::UndoLimits& limits = session_->engine().undo().limits();
  return {limits.steps, limits.bytes};
}

void ScriptHost::setUndoLimits(std::size_t steps, std::size_t bytes) {
  session_->engine().undo().setLimits({.steps = steps, .bytes = bytes});
}

void ScriptHost::writeRecoveryCopies() {
  RecoveryCopies* copies = session_->recovery();
  if (!copies) throw Refused{"Application.WriteRecoveryCopies", "the application", "no folder for them was given"};
  copies->lastError.clear();
  copies->update();
  if (!copies->lastError.empty())
    throw Refused{"Application.WriteRecoveryCopies", "the application", copies->lastError};
}

void ScriptHost::exportPages(const std::vector<ObjectRef>& pages, const std::string& file, const std::string& caller) {
  const host::Store& store = session_->engine().store();
  const host::Document* document = nullptr;
  std::string what;
  for (const ObjectRef& ref : pages) {
    const host::Page* page = store.page(host::PageId{ref.id});
    if (!page) throw Refused{caller, "a page that is deleted", "the object is deleted"};
    document = store.document(page->document);
    what = pages.size() == 1 ? "page " + page->name : document->name;
  }
  const Maybe<PictureFormat> format = pictureFormatOf(file);
  if (!format) {
    throw Refused{caller, what,
                  "\"" + file + "\" is no picture that can be written; end its name with .svg, .png or .pdf"};
  }
  if (!document) throw Refused{caller, what, "there is no page to draw"};
  const WithoutSelectionMarks unmarked(*session_, session_->engine().handle(document->id));
  std::vector<render::Scene> scenes;
  for (const ObjectRef& ref : pages) scenes.push_back(sceneOfPage(store, *document, host::PageId{ref.id}));
  const std::string bytes = writePicture(scenes, *format, document->name);
  const std::string wrong =
      bytes.empty() ? "could not be painted, most often for lack of memory" : formats::replaceFile(file, bytes);
  if (!wrong.empty()) throw Refused{caller, what, file + " " + wrong};
}

py::dict ScriptHost::readMap(const ObjectRef& document) {
  const host::Store& store = session_->engine().store();
  const host::DocumentId id{document.id};
  if (document.kind != ObjectKind::Document || !store.document(id)) {
    throw Refused{"Map", "a document that is closed", "the object is deleted"};
  }
  return mapToPython(report::readProcessMap(store, id));
}

py::list ScriptHost::reportDefinitions(const ObjectRef& document) {
  py::list all;
  for (const report::AvailableDefinition& each : definitionsOf(document, "report_definitions").definitions)
    all.append(py::make_tuple(each.number, textToPython(each.definition.title),
                              textToPython(each.definition.description), textToPython(each.problem)));
  return all;
}

void ScriptHost::writeReport(const ObjectRef& document, const std::string& definition, const std::string& file,
                             const std::string& page) {
  const std::string caller = "report";
  const report::AvailableDefinition chosen = report::definitionNamed(definitionsOf(document, caller), definition);
  const host::DocumentId id{document.id};
  const std::string& name = session_->engine().store().document(id)->name;
  if (!chosen.problem.empty()) throw Refused{caller, name, chosen.problem};
  const report::MadeTable made = report::makeTable(session_->engine().store(), id, chosen.definition, {page});
  if (!made.problem.empty()) throw Refused{caller, name, made.problem};
  const std::string problem = report::writeReport(made.table, file);
  if (!problem.empty()) throw Refused{caller, name, problem};
}

report::AvailableDefinitions ScriptHost::definitionsOf(const ObjectRef& document, const std::string& caller) const {
  const host::Store& store = session_->engine().store();
  const host::DocumentId id{document.id};
  if (document.kind != ObjectKind::Document || !store.document(id)) {
    throw Refused{caller, "a document that is closed", "the object is deleted"};
  }
  return report::definitionsFor(store, id, session_->installFolder());
}

std::string ScriptHost::ask(const std::string& text, MessageButtons buttons) {
  return enter([&] {
    MessageBox box;
    box.text = text;
    box.buttons = buttons;
    return std::string(nameOf(session_->platform().showMessage(box)));
  });
}

py::object ScriptHost::chooseFile(const std::string& title) {
  return enter([&]() -> py::object {
    const Maybe<std::string> file = session_->platform().chooseFile({title, {}, {}});
    if (!file) return py::none();
    return textToPython(*file);
  });
}

std::vector<std::string> ScriptHost::showForm(const std::vector<TrialControl>& controls) {
  return enter([&] {
    TrialForm form(controls);
    session_->platform().showModal(form);
    return form.recorded;
  });
}

py::list ScriptHost::asked() const {
  using Kind = HeadlessPlatform::Asked::Kind;
  py::list all;
  for (const HeadlessPlatform::Asked& asked : session_->platform().asked) {
    const char* kind = asked.kind == Kind::Form         ? "form"
                       : asked.kind == Kind::Message    ? "message"
                       : asked.kind == Kind::FileDialog ? "file"
                       : asked.kind == Kind::Browser    ? "browser"
                                                        : "open";
    all.append(py::make_tuple(kind, textToPython(asked.text)));
  }
  return all;
}

void ScriptHost::settle() {
  if (pending_) {
    if (depth_ == 0) unanswered_.clear();
    std::rethrow_exception(std::exchange(pending_, nullptr));
  }
  if (depth_ == 0 && !unanswered_.empty()) throw UnansweredTexts{std::exchange(unanswered_, {})};
}

void ScriptHost::answerForm(Form& form) {
  const auto open = std::make_shared<OpenForm>(form, *this);
  runHandler([&](const py::object& application) { application.attr("_answer_form")(FormAccess(open)); });
  open->form = nullptr;
  if (pending_) return;
  if (form.isOpen() && answers_ == Answers::Defaults) acceptForm(form);
  if (form.isOpen() && !pending_)
    unanswered_.push_back("The form " + form.name() + " (" + form.caption() +
                          ") was closed, because it was not answered.");
}

MessageAnswer ScriptHost::answerMessage(const MessageBox& box) {
  Maybe<MessageAnswer> answer;
  runHandler([&](const py::object& application) {
    const py::object given = application.attr("_answer_message")(textToPython(box.text), textToPython(box.title),
                                                                 nameOf(box.buttons), nameOf(box.icon));
    if (!given.is_none()) answer = answerFrom(given, box);
  });
  if (answer) return *answer;
  if (!pending_ && answers_ == Answers::Defaults && !box.carefulAnswer) return answersOf(box.buttons).front();
  const MessageAnswer careful = box.carefulAnswer.or_(mostCarefulAnswer(box.buttons));
  if (!pending_) unanswered_.push_back(box.text + " [" + nameOf(careful) + ", because it was not answered]");
  return careful;
}

Maybe<std::string> ScriptHost::answerFileDialog(const FileDialog& dialog) {
  Maybe<std::string> chosen;
  bool answered = false;
  runHandler([&](const py::object& application) {
    const py::object given = application.attr("_answer_file_dialog")(
        textToPython(dialog.title), textToPython(dialog.filter), textToPython(dialog.startFolder));
    // None: the script has no handler. An empty text: its handler cancels.
    answered = !given.is_none();
    if (const std::string file = answered ? py::str(given) : py::str(); !file.empty()) chosen = file;
  });
  if (!answered && !pending_)
    unanswered_.push_back("The file dialog \"" + dialog.title + "\" was cancelled, because it was not answered.");
  return chosen;
}

bool ScriptHost::answerShellOpen(std::string_view target) {
  bool opened = false;
  runHandler([&](const py::object& application) {
    opened = application.attr("_answer_shell_open")(textToPython(std::string(target))).cast<bool>();
  });
  return opened;
}

}  // namespace quorvel::python
