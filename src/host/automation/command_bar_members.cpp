// Members of toolbars, menus and their controls.
#include <algorithm>

#include "base/text.h"
#include "host/automation/in_memory_host.h"

namespace quorvel::host {
namespace {

/// The mark of a caption's access key is not part of what it is called.
std::string withoutAccessKey(std::string caption) {
  std::erase(caption, '&');
  return caption;
}

}  // namespace

Maybe<Variant> InMemoryHost::getCommandBars(const ObjectRef& object, Member member, Arguments arguments) {
  CommandBarSet& bars = engine_.bars();
  const auto whole = [](int value) { return Variant(static_cast<std::int64_t>(value)); };
  if (object.kind == ObjectKind::CommandBars && member == Member::CommandBars_Count)
    return whole(static_cast<int>(bars.bars().size()));
  if (object.kind == ObjectKind::CommandBars && member == Member::CommandBars_Item) {
    const int index = integerAt(arguments, 0).or_(0);
    if (index < 1 || index > static_cast<int>(bars.bars().size())) return refuse("the index lies outside 1 to Count");
    return Variant(refTo(ObjectKind::CommandBar, std::next(bars.bars().begin(), index - 1)->first));
  }
  if (object.kind == ObjectKind::CommandBars && member == Member::CommandBars_ItemByName) {
    for (const auto& [id, bar] : bars.bars()) {
      if (equalIgnoringCase(bar.name, textAt(arguments, 0).or_(""))) return Variant(refTo(ObjectKind::CommandBar, id));
    }
    return refuse("no toolbar of this name");
  }
  if (object.kind == ObjectKind::CommandBars) {
    const std::uint32_t menu = bars.menuWithCommand(integerAt(arguments, 0).or_(0));
    if (!menu) return refuse("this release has no such menu");
    return Variant(refTo(ObjectKind::CommandBarControl, menu));
  }
  if (object.kind == ObjectKind::CommandBarControls) {
    const Bar* bar = bars.bar(object.id);
    const BarControl* menu = bars.control(object.id);
    if (!bar && !menu) return refuse("the toolbar is deleted");
    const auto& items = bar ? bar->items : menu->items;
    if (member == Member::CommandBarControls_Count) return whole(static_cast<int>(items.size()));
    if (member == Member::CommandBarControls_ItemByName) {
      const std::string caption = withoutAccessKey(std::string(textAt(arguments, 0).or_("")));
      for (const std::uint32_t item : items) {
        if (equalIgnoringCase(withoutAccessKey(bars.control(item)->caption), caption))
          return Variant(refTo(ObjectKind::CommandBarControl, item));
      }
      return refuse("no control of this caption");
    }
    const int index = integerAt(arguments, 0).or_(0);
    if (index < 1 || index > static_cast<int>(items.size())) return refuse("the index lies outside 1 to Count");
    return Variant(refTo(ObjectKind::CommandBarControl, items[static_cast<std::size_t>(index) - 1]));
  }
  if (object.kind == ObjectKind::CommandBar) {
    const Bar* bar = bars.bar(object.id);
    if (!bar) return refuse("the toolbar is deleted");
    switch (member) {
      case Member::CommandBar_Context:
        return Variant(bar->context);
      case Member::CommandBar_Controls:
        return Variant(refTo(ObjectKind::CommandBarControls, object.id));
      case Member::CommandBar_Name:
        return Variant(bar->name);
      case Member::CommandBar_Enabled:
        return Variant(bar->enabled);
      case Member::CommandBar_Visible:
        return Variant(bar->visible);
      case Member::CommandBar_Height:
        return whole(bar->height);
      case Member::CommandBar_Index:
        return whole(bar->index);
      case Member::CommandBar_Left:
        return whole(bar->left);
      case Member::CommandBar_Position:
        return whole(bar->position);
      case Member::CommandBar_RowIndex:
        return whole(bar->rowIndex);
      case Member::CommandBar_Top:
        return whole(bar->top);
      case Member::CommandBar_Width:
        return whole(bar->width);
      case Member::CommandBar_Protection:
        return whole(bar->protection);
      default:
        return refuse("not a property");
    }
  }
  const BarControl* control = bars.control(object.id);
  if (!control) return refuse("the control is deleted");
  switch (member) {
    case Member::CommandBarControl_BeginGroup:
      return Variant(control->beginGroup);
    case Member::CommandBarControl_Caption:
      return Variant(control->caption);
    case Member::CommandBarControl_Controls:
      if (!control->isMenu) return refuse("a button has no items");
      return Variant(refTo(ObjectKind::CommandBarControls, object.id));
    case Member::CommandBarControl_Id:
      return whole(control->commandId);
    case Member::CommandBarControl_OnAction:
      return Variant(control->onAction);
    case Member::CommandBarControl_Parameter:
      return Variant(control->parameter);
    case Member::CommandBarControl_Tag:
      return Variant(control->tag);
    case Member::CommandBarControl_TooltipText:
      return Variant(control->tooltip);
    case Member::CommandBarControl_State:
      if (control->isMenu) return refuse("a menu has no state");
      return whole(control->state);
    default:
      return refuse("not a property");
  }
}

bool InMemoryHost::putCommandBars(const ObjectRef& object, Member member, const Argument& value) {
  const Maybe<int> number = integerOf(value);
  const Maybe<std::string_view> text = textOfArgument(value);
  if (Bar* bar = object.kind == ObjectKind::CommandBar ? engine_.bars().bar(object.id) : nullptr) {
    int Bar::*field = member == Member::CommandBar_Height       ? &Bar::height
                      : member == Member::CommandBar_Left       ? &Bar::left
                      : member == Member::CommandBar_Position   ? &Bar::position
                      : member == Member::CommandBar_RowIndex   ? &Bar::rowIndex
                      : member == Member::CommandBar_Top        ? &Bar::top
                      : member == Member::CommandBar_Width      ? &Bar::width
                      : member == Member::CommandBar_Protection ? &Bar::protection
                                                                : nullptr;
    if (field && number) {
      bar->*field = *number;
      return true;
    }
    if (member == Member::CommandBar_Visible && number) {
      bar->visible = *number != 0;
      return true;
    }
    if (member == Member::CommandBar_Context && text) {
      bar->context = *text;
      return true;
    }
  }
  if (BarControl* control =
          object.kind == ObjectKind::CommandBarControl ? engine_.bars().control(object.id) : nullptr) {
    std::string BarControl::*field = member == Member::CommandBarControl_Caption       ? &BarControl::caption
                                     : member == Member::CommandBarControl_OnAction    ? &BarControl::onAction
                                     : member == Member::CommandBarControl_Parameter   ? &BarControl::parameter
                                     : member == Member::CommandBarControl_Tag         ? &BarControl::tag
                                     : member == Member::CommandBarControl_TooltipText ? &BarControl::tooltip
                                                                                       : nullptr;
    if (field && text) {
      control->*field = *text;
      return true;
    }
    if (member == Member::CommandBarControl_BeginGroup && number) {
      control->beginGroup = *number != 0;
      return true;
    }
    if (member == Member::CommandBarControl_State && number && !control->isMenu) {
      control->state = *number;
      return true;
    }
  }
  refuse("the object is deleted or the property can't be put so");
  return false;
}

Maybe<Variant> InMemoryHost::callCommandBars(const ObjectRef& object, Member member, Arguments arguments) {
  CommandBarSet& bars = engine_.bars();
  const Variant done{std::monostate()};
  switch (object.kind) {
    case ObjectKind::CommandBars: {
      const Maybe<std::string_view> name = textAt(arguments, 0);
      if (!name || name->empty()) return refuse("a toolbar needs a name");
      return Variant(refTo(ObjectKind::CommandBar, bars.addBar(std::string(*name), integerAt(arguments, 1).or_(1))));
    }
    case ObjectKind::CommandBar:
      if (!bars.bar(object.id)) return refuse("the toolbar is deleted");
      bars.removeBar(object.id);
      return done;
    case ObjectKind::CommandBarControls: {
      constexpr int buttonType = 1, menuType = 10;
      const int type = integerAt(arguments, 0).or_(0);
      if (type != buttonType && type != menuType) return refuse("no such kind of control");
      const bool isBar = bars.bar(object.id) != nullptr;
      if (!isBar && !bars.control(object.id)) return refuse("the toolbar is deleted");
      const std::uint32_t made = bars.addControl(isBar ? object.id : 0, isBar ? 0 : object.id, type == menuType,
                                                 integerAt(arguments, 1).or_(0));
      return Variant(refTo(ObjectKind::CommandBarControl, made));
    }
    default:
      break;
  }
  BarControl* control = bars.control(object.id);
  if (!control) return refuse("the control is deleted");
  switch (member) {
    case Member::CommandBarControl_Delete:
      if (control->builtIn) return refuse("the host's own items stay");
      bars.removeControl(object.id);
      return done;
    case Member::CommandBarControl_Reset:
      control->onAction.clear();
      control->parameter.clear();
      return done;
    case Member::CommandBarControl_PasteFace:
      if (!bars.clipboardFace) return refuse("there is no button face on the clipboard");
      control->face = bars.clipboardFace;
      return done;
    case Member::CommandBarControl_Execute: {
      if (control->onAction == "QueueMarkerEvent") {
        const std::string context = control->parameter;
        const int sequence = ++lastMarker_;
        engine_.events().raise([&](ApplicationEvents& listener) { listener.MarkerEvent(sequence, context); });
        return done;
      }
      if (control->hostCommand == HostCommand::Reports) return settled(showReports(engine_));
      const CommandBarButton button(this, object);
      engine_.events().raise(
          EventDispatcher::Occasion::Change, [&] { return bars.control(object.id) != nullptr; },
          [&](ApplicationEvents& listener) { listener.Click(button); });
      return done;
    }
    default:
      return refuse("not an action");
  }
}

}  // namespace quorvel::host
