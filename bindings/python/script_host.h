// One session for a script: calls that raise, dialogs and events that are passed to the script, and exceptions that
// are passed back through the host.
#pragma once

#include <pybind11/pybind11.h>

#include <bitset>
#include <exception>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "report/definition/available_definitions.h"
#include "script_events.h"
#include "session/session.h"
#include "trial_form.h"

namespace quorvel::python {

namespace py = pybind11;

/// A refused call on its way to the script, where it becomes a HostError.
struct Refused {
  std::string call, object, reason;
};

/// Questions and forms without an answer, raised at the end of the outermost call.
struct UnansweredTexts {
  std::vector<std::string> texts;
};

/// What happens to questions and forms that the script does not answer.
enum class Answers {
  None,  ///< forms are closed, questions get the answer that changes least, and the script gets an exception
  /// Forms are accepted as they open, and questions get Yes. A question whose Yes may do harm outside of the drawing
  /// is treated as with None.
  Defaults,
};

/// All calls come from one thread at a time, which holds the interpreter's lock.
///
/// The script's Application object owns this one, which has only a weak reference to it: its handlers would
/// otherwise make a reference cycle that the interpreter's collector can't see. Every handle of a script holds the
/// Application.
class ScriptHost {
 public:
  ScriptHost(const py::object& application, SessionOptions options, Answers answers);
  ~ScriptHost();
  ScriptHost(const ScriptHost&) = delete;
  ScriptHost& operator=(const ScriptHost&) = delete;

  // The three calls of Backend for a script: a refusal is thrown as Refused.
  py::object get(const ObjectRef& object, int member, const py::tuple& arguments);
  void put(const ObjectRef& object, int member, const py::tuple& indices, const py::object& value);
  py::object call(const ObjectRef& object, int member, const py::tuple& arguments);

  /// Shows the page in the window of its document and makes that the active one.
  void activatePage(const ObjectRef& page);
  void activateApplication();
  void mouseDown(int button, int shift, double x, double y);
  void mouseMove(int button, int shift, double x, double y);
  /// Types into cells in the dialog of shape data: texts are quoted, numbers are not.
  void editShapeData(const ObjectRef& shape, const std::vector<std::pair<std::string, py::object>>& values);
  /// Find and Replace in the active document; how many times.
  int replaceText(const std::string& find, const std::string& replacement, bool matchCase, bool wholeWords,
                  bool allPages);
  /// Draws pages into one file, whose ending says the format.
  void exportPages(const std::vector<ObjectRef>& pages, const std::string& file, const std::string& caller);
  /// The document read as a process map; see mapToPython.
  py::dict readMap(const ObjectRef& document);
  /// Number, title, description and problem of each report definition that there is for the document.
  py::list reportDefinitions(const ObjectRef& document);
  /// Runs a report and writes the table to a file, whose ending says the format.
  void writeReport(const ObjectRef& document, const std::string& definition, const std::string& file,
                   const std::string& page);
  /// What was refused to the add-in because no cell, row or member has the name, each as a sentence. The script's
  /// own refused calls were thrown, and are not among them.
  std::vector<std::string> unknownNames() const;
  /// Updates the recovery copies.
  void writeRecoveryCopies();
  /// Steps and bytes that undo keeps of each document.
  std::pair<std::size_t, std::size_t> undoLimits() const;
  void setUndoLimits(std::size_t steps, std::size_t bytes);

  // Asks as the add-in does, so that tests can try a script's answers.
  std::string ask(const std::string& text, MessageButtons buttons);
  py::object chooseFile(const std::string& title);
  /// The events that the form got.
  std::vector<std::string> showForm(const std::vector<TrialControl>& controls);

  /// Starts or stops passing the event to the script.
  void listen(ScriptEvent event, bool on) { listening_.set(static_cast<std::size_t>(event), on); }
  bool listensTo(ScriptEvent event) const { return listening_.test(static_cast<std::size_t>(event)) && !pending_; }
  template <class... Values>
  void notify(ScriptEvent event, const Values&... values) {
    runHandler([&](const py::object& application) { application.attr("_notify")(static_cast<int>(event), values...); });
  }

  /// What a user would have seen, as pairs of kind and text.
  py::list asked() const;
  const std::string& installFolder() const { return session_->installFolder(); }

  /// Runs what may call handlers of the script. Throws what one of them threw meanwhile, and at the end of the
  /// outermost call raises what was not answered.
  template <class Act>
  auto enter(Act act);

 private:
  class Depth;
  report::AvailableDefinitions definitionsOf(const ObjectRef& document, const std::string& caller) const;
  void settle();
  /// Nothing when the script has ended or has thrown already: as if the exception had left the call at once.
  template <class Handle>
  bool runHandler(Handle handle);
  void answerForm(Form& form);
  MessageAnswer answerMessage(const MessageBox& box);
  Maybe<std::string> answerFileDialog(const FileDialog& dialog);
  bool answerShellOpen(std::string_view target);
  /// Throws the refusal, which is taken out of the host's log.
  [[noreturn]] void refuse(Member member) const;
  void showPageOf(const ObjectRef& page);

  py::weakref application_;
  Answers answers_;
  int depth_ = 0;
  std::thread::id thread_;
  std::exception_ptr pending_;
  std::vector<std::string> unanswered_;
  std::bitset<scriptEventCount> listening_;
  ScriptEvents events_{*this};
  std::unique_ptr<Session> session_;
};

/// Depth of nested calls.
class ScriptHost::Depth {
 public:
  explicit Depth(ScriptHost& host) : host_(host) {
    if (host_.depth_ > 0 && host_.thread_ != std::this_thread::get_id())
      throw Refused{"Application", "the application", "another thread is inside a call"};
    host_.thread_ = std::this_thread::get_id();
    ++host_.depth_;
  }
  ~Depth() { --host_.depth_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;

 private:
  ScriptHost& host_;
};

template <class Act>
auto ScriptHost::enter(Act act) {
  std::exception_ptr refused;
  // What handlers threw, and what was not answered, comes before the refusal that may follow from it.
  const auto settleFirst = [&] {
    settle();
    if (refused) std::rethrow_exception(refused);
  };
  if constexpr (std::is_void_v<decltype(act())>) {
    try {
      const Depth depth(*this);
      act();
    } catch (...) {
      refused = std::current_exception();
    }
    settleFirst();
  } else {
    decltype(act()) result{};
    try {
      const Depth depth(*this);
      result = act();
    } catch (...) {
      refused = std::current_exception();
    }
    settleFirst();
    return result;
  }
}

template <class Handle>
bool ScriptHost::runHandler(Handle handle) {
  if (pending_) return false;
  try {
    const py::object application = application_();
    if (application.is_none()) return false;
    handle(application);
    return true;
  } catch (...) {
    pending_ = std::current_exception();
    return false;
  }
}

}  // namespace quorvel::python
