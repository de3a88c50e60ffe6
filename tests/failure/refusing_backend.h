// A host that refuses one call on purpose: it is between the add-in and a real host, counts the calls, and refuses
// the n-th.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "model/upkeep_listener.h"

namespace quorvel {

class RefusingBackend : public Backend {
 public:
  /// Refuses nothing until a call number is set.
  explicit RefusingBackend(Backend& inner) : inner_(inner), forwarder_(*this) { inner_.advise(forwarder_); }
  ~RefusingBackend() override { inner_.unadvise(forwarder_); }
  RefusingBackend(const RefusingBackend&) = delete;
  RefusingBackend& operator=(const RefusingBackend&) = delete;

  /// Restarts the count: the call number `refused`, from 1, is refused; 0 refuses nothing.
  void refuseFromNowOn(std::size_t refused) {
    calls_ = 0;
    refused_ = refused;
  }
  /// Since the count started.
  std::size_t calls() const { return calls_; }

  Maybe<Variant> get(const ObjectRef& object, Member member, Arguments arguments) override {
    if (refuses()) return {};
    return inner_.get(object, member, arguments);
  }
  bool put(const ObjectRef& object, Member member, Arguments indices, const Argument& value) override {
    return !refuses() && inner_.put(object, member, indices, value);
  }
  Maybe<Variant> call(const ObjectRef& object, Member member, Arguments arguments) override {
    if (refuses()) return {};
    return inner_.call(object, member, arguments);
  }
  ObjectRef application() const override { return inner_.application(); }
  void advise(ApplicationEvents& listener) override { listeners_.push_back(&listener); }
  void unadvise(ApplicationEvents& listener) override { std::erase(listeners_, &listener); }
  std::vector<Refusal> refusals() const override { return inner_.refusals(); }
  std::size_t refusalCount() const override { return inner_.refusalCount(); }

 private:
  bool refuses() { return ++calls_ == refused_; }

  /// Listens to the real host and forwards events with handles of the wrapper.
  class Forwarder : public UpkeepListener {
   public:
    explicit Forwarder(RefusingBackend& outer) : outer_(outer) {}

    void DocumentCreated(Document d) override { notify(&ApplicationEvents::DocumentCreated, d); }
    void DocumentOpened(Document d) override { notify(&ApplicationEvents::DocumentOpened, d); }
    void BeforeDocumentSave(Document d) override { notify(&ApplicationEvents::BeforeDocumentSave, d); }
    void BeforeDocumentSaveAs(Document d) override { notify(&ApplicationEvents::BeforeDocumentSaveAs, d); }
    void DocumentSaved(Document d) override { notify(&ApplicationEvents::DocumentSaved, d); }
    void DocumentSavedAs(Document d) override { notify(&ApplicationEvents::DocumentSavedAs, d); }
    void BeforeDocumentClose(Document d) override { notify(&ApplicationEvents::BeforeDocumentClose, d); }
    void PageAdded(Page p) override { notify(&ApplicationEvents::PageAdded, p); }
    void PageChanged(Page p) override { notify(&ApplicationEvents::PageChanged, p); }
    void ShapeAdded(Shape s) override { notify(&ApplicationEvents::ShapeAdded, s); }
    void BeforeShapeDelete(Shape s) override { notify(&ApplicationEvents::BeforeShapeDelete, s); }
    void BeforeShapeTextEdit(Shape s) override { notify(&ApplicationEvents::BeforeShapeTextEdit, s); }
    void ShapeExitedTextEdit(Shape s) override { notify(&ApplicationEvents::ShapeExitedTextEdit, s); }
    void TextChanged(Shape s) override { notify(&ApplicationEvents::TextChanged, s); }
    void CellChanged(Cell c) override { notify(&ApplicationEvents::CellChanged, c); }
    void FormulaChanged(Cell c) override { notify(&ApplicationEvents::FormulaChanged, c); }
    void SelectionChanged(Window w) override { notify(&ApplicationEvents::SelectionChanged, w); }
    void WindowActivated(Window w) override { notify(&ApplicationEvents::WindowActivated, w); }
    void AppActivated(Application a) override { notify(&ApplicationEvents::AppActivated, a); }
    void BeforeModal(Application a) override { notify(&ApplicationEvents::BeforeModal, a); }
    void AfterModal(Application a) override { notify(&ApplicationEvents::AfterModal, a); }
    void EnterScope(int n, std::string_view d) override { notify(&ApplicationEvents::EnterScope, n, d); }
    void ExitScope(int n, std::string_view d) override { notify(&ApplicationEvents::ExitScope, n, d); }
    void MarkerEvent(int n, std::string_view c) override { notify(&ApplicationEvents::MarkerEvent, n, c); }
    void MouseDown(int b, int s, double x, double y) override { notify(&ApplicationEvents::MouseDown, b, s, x, y); }
    void MouseMove(int b, int s, double x, double y) override { notify(&ApplicationEvents::MouseMove, b, s, x, y); }
    void Click(CommandBarButton b) override { notify(&ApplicationEvents::Click, b); }

   private:
    template <class Object>
    requires std::derived_from<Object, Handle> Object through(const Object& object)
    const { return Object(&outer_, object.ref()); }
    template <class Value>
    Value through(const Value& value) const {
      return value;
    }
    template <class... Parameters>
    void notify(void (ApplicationEvents::*event)(Parameters...), const Parameters&... parameters) {
      const std::vector<ApplicationEvents*> snapshot = outer_.listeners_;
      for (ApplicationEvents* listener : snapshot) (listener->*event)(through(parameters)...);
    }
    RefusingBackend& outer_;
  };

  Backend& inner_;
  std::size_t refused_ = 0;
  std::size_t calls_ = 0;
  std::vector<ApplicationEvents*> listeners_;
  Forwarder forwarder_;
};

}  // namespace quorvel
