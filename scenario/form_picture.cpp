// Drawing a form's state as text.
#include "scenario/form_picture.h"

#include "base/ole_date.h"
#include "platform/locale.h"

namespace scenario {
namespace {

using qorvane::forms::Control;
using qorvane::forms::ControlKind;
using qorvane::forms::Form;

// The caption as shown: "&" marks the next letter, "&&" shows one "&".
std::string Shown(const std::string& caption) {
  std::string text;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    text += caption[i];
  }
  return text;
}

std::string DateText(double date) { return qorvane::CurrentLocale().FormatGeneralDate(qorvane::DatePart(date)); }

// The locale's time of day without its seconds, as the pickers show it.
std::string TimeText(double time) {
  const qorvane::TimeOfDay clock = qorvane::ToTimeOfDay(time);
  const qorvane::Locale& locale = qorvane::CurrentLocale();
  std::string text = locale.FormatGeneralDate(qorvane::TimeSerial(clock.hour, clock.minute, 0));
  const std::string seconds = locale.TimeSeparator() + "00";
  const std::size_t at = text.rfind(seconds);
  if (at != std::string::npos) text.erase(at, seconds.size());
  return text;
}

std::string Rows(const Control& control) {
  std::string text = "{";
  for (std::size_t r = 0; r < control.rows.size(); ++r) {
    const auto& row = control.rows[r];
    text += (r ? "; " : "") + std::string(row.selected ? "*" : "");
    for (std::size_t c = 0; c < row.cells.size(); ++c) text += (c ? " | " : "") + row.cells[c];
  }
  return text + "}";
}

std::string Element(const Control& control) {
  switch (control.kind) {
    case ControlKind::Label: return Shown(control.caption);
    case ControlKind::Page: return "|";
    case ControlKind::Button: return "<" + Shown(control.caption) + ">";
    case ControlKind::OptionButton: return (control.checked ? "(x) " : "( ) ") + Shown(control.caption);
    case ControlKind::CheckBox: return (control.checked ? "[x]" : "[ ]") + Shown(control.caption);
    case ControlKind::TextBox: return "[" + control.text + "]";
    case ControlKind::ComboBox:
      return control.listIndex >= 0 && static_cast<std::size_t>(control.listIndex) < control.items.size()
                 ? "[" + control.items[static_cast<std::size_t>(control.listIndex)] + " v]"
                 : "[ v]";
    case ControlKind::DatePicker: return "[" + DateText(control.value) + "]";
    case ControlKind::TimePicker: return "[" + TimeText(control.value) + "]";
    case ControlKind::ListView: return Rows(control);
    case ControlKind::Group: return {};
  }
  return {};
}

// The group at the top of the containers a control sits in; "" for the form.
std::string TopGroup(const Form& form, const Control& control) {
  const Control* at = &control;
  for (std::size_t depth = 0; depth <= form.controls.size() && !at->container.empty(); ++depth) {
    if (!form.Has(at->container)) break;
    at = &form[at->container];
  }
  return at->kind == ControlKind::Group && at != &control ? at->name : std::string();
}

}  // namespace

std::string Picture(const Form& form) {
  std::string picture = "[" + form.name + "] " + form.caption;
  std::string line;
  std::string group = "\x01";  // no line begun yet
  const auto endLine = [&] {
    if (!line.empty()) picture += "\n  " + line;
    line.clear();
  };
  for (const Control& control : form.controls) {
    if (control.kind == ControlKind::Group || !form.Shown(control.name)) continue;
    const std::string top = TopGroup(form, control);
    if (top != group) {
      endLine();
      group = top;
      if (!top.empty()) {
        line = Shown(form[top].caption);
        if (!line.empty() && line.back() != '.' && line.back() != ':') line += ":";
      }
    }
    std::string element = Element(control);
    if (!control.enabled) element += " (off)";
    line += (line.empty() ? "" : " ") + element;
  }
  endLine();
  return picture;
}

}  // namespace scenario
