// Dialog steps read from and written to their line of text, and what a
// control shows to an expectation.
#include "scenario/scripted_user_step.h"

#include <array>
#include <charconv>
#include <cstdio>

#include "base/ole_date.h"
#include "base/runtime_text.h"
#include "scenario/answer.h"

namespace scenario {
namespace {

using qorvane::forms::Control;
using qorvane::forms::ControlKind;

struct StepWord {
  std::string_view word;
  StepKind kind;
};
constexpr std::array<StepWord, 12> kStepWords = {{{"click", StepKind::Click},
                                                  {"check", StepKind::Check},
                                                  {"uncheck", StepKind::Uncheck},
                                                  {"type", StepKind::Type},
                                                  {"set", StepKind::Set},
                                                  {"pick", StepKind::Pick},
                                                  {"select", StepKind::Select},
                                                  {"leave", StepKind::Leave},
                                                  {"press", StepKind::Press},
                                                  {"close", StepKind::Close},
                                                  {"choose", StepKind::Choose},
                                                  {"expect", StepKind::Expect}}};

std::string_view TrimLine(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r' || text.back() == '\n'))
    text.remove_suffix(1);
  return text;
}

// The first word of text, text moved past it and the blanks after it.
std::string_view TakeWord(std::string_view& text) {
  const std::size_t end = text.find_first_of(" \t");
  const std::string_view word = text.substr(0, end);
  text = end == std::string_view::npos ? std::string_view() : TrimLine(text.substr(end));
  return word;
}

// A text written in double quotes stands for what is inside them.
std::string Unquoted(std::string_view text) {
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  return std::string(text);
}

std::optional<StepKind> KindOf(std::string_view word) {
  const std::string lower = qorvane::LCase(word);
  for (const StepWord& step : kStepWords) {
    if (lower == step.word) return step.kind;
  }
  return std::nullopt;
}

std::optional<std::vector<int>> RowsOf(std::string_view text) {
  std::vector<int> rows;
  if (qorvane::LCase(text) == "none") return rows;
  while (!text.empty()) {
    const std::size_t comma = text.find(',');
    const std::string_view part = TrimLine(text.substr(0, comma));
    int row = 0;
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), row);
    if (error != std::errc() || end != part.data() + part.size() || row < 1) return std::nullopt;
    rows.push_back(row);
    text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
  }
  if (rows.empty()) return std::nullopt;
  return rows;
}

std::string DateText(double date) {
  const qorvane::CivilDate civil = qorvane::ToCivil(date);
  char text[16];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", civil.year, civil.month, civil.day);
  return text;
}

std::string TimeText(double time) {
  const qorvane::TimeOfDay clock = qorvane::ToTimeOfDay(time);
  char text[8];
  std::snprintf(text, sizeof text, "%d:%02d", clock.hour, clock.minute);
  return text;
}

std::string JoinRows(const Control& control) {
  std::string text;
  for (const auto& row : control.rows) {
    if (!text.empty()) text += "; ";
    for (std::size_t i = 0; i < row.cells.size(); ++i) text += (i ? " | " : "") + row.cells[i];
  }
  return text;
}

std::string RowsText(const std::vector<int>& rows) {
  if (rows.empty()) return "none";
  std::string text;
  for (int row : rows) text += (text.empty() ? "" : ",") + std::to_string(row);
  return text;
}

struct Failure {
  std::string message;
};

void Require(bool condition, std::string message) {
  if (!condition) throw Failure{std::move(message)};
}

Step Parse(std::string_view text) {
  const std::string_view word = TakeWord(text);
  const std::optional<StepKind> kind = KindOf(word);
  Require(kind.has_value(), "expected a step (click, type, set, pick, ...), found \"" + std::string(word) + "\"");
  Step step;
  step.kind = *kind;
  if (step.kind == StepKind::Close) {
    Require(text.empty(), "nothing may follow close");
    return step;
  }
  if (step.kind == StepKind::Choose) {
    Require(!text.empty(), "the path to choose is missing (\"\" cancels the picker)");
    step.value = Unquoted(text);
    return step;
  }
  step.control = std::string(TakeWord(text));
  Require(!step.control.empty(), "a control's name is missing");
  switch (step.kind) {
    case StepKind::Click:
    case StepKind::Check:
    case StepKind::Uncheck:
    case StepKind::Leave:
      Require(text.empty(), "unexpected \"" + std::string(text) + "\" after the control's name");
      break;
    case StepKind::Press: {
      step.control = qorvane::LCase(step.control);
      Require(step.control == "enter" || step.control == "esc" || step.control == "f1",
              "expected enter, esc or f1, found \"" + step.control + "\"");
      Require(text.empty(), "unexpected \"" + std::string(text) + "\" after the key");
      break;
    }
    case StepKind::Type:
      step.value = Unquoted(text);
      break;
    case StepKind::Set:
      step.value = std::string(text);
      step.date = DateOf(text);
      if (!step.date) step.time = TimeOf(text);
      Require(step.date || step.time, "expected a date YYYY-MM-DD or a time H:MM, found \"" + step.value + "\"");
      break;
    case StepKind::Pick:
      Require(!text.empty(), "the item to pick is missing");
      step.value = Unquoted(text);
      break;
    case StepKind::Select: {
      const auto rows = RowsOf(text);
      Require(rows.has_value(), "expected rows like 1,3 or none, found \"" + std::string(text) + "\"");
      step.rows = *rows;
      break;
    }
    case StepKind::Expect:
      if (qorvane::LCase(step.control) == "form" || qorvane::LCase(step.control) == "focus")
        step.control = qorvane::LCase(step.control);
      step.value = Unquoted(text);
      break;
    case StepKind::Close:
    case StepKind::Choose:
      break;
  }
  return step;
}

}  // namespace

bool IsStepLine(std::string_view text) {
  text = TrimLine(text);
  return KindOf(TakeWord(text)).has_value();
}

ParsedStep ParseStep(std::string_view text) {
  ParsedStep parsed;
  try {
    parsed.step = Parse(TrimLine(text));
  } catch (const Failure& failure) {
    parsed.error = failure.message + " (in \"" + std::string(TrimLine(text)) + "\")";
  }
  return parsed;
}

std::string StepText(const Step& step) {
  for (const StepWord& word : kStepWords) {
    if (word.kind != step.kind) continue;
    std::string text(word.word);
    if (step.kind == StepKind::Close) return text;
    if (step.kind == StepKind::Choose) return text + " " + (step.value.empty() ? "\"\"" : step.value);
    text += " " + step.control;
    switch (step.kind) {
      case StepKind::Type:
      case StepKind::Expect:
        return text + " " + (step.value.empty() ? "\"\"" : step.value);
      case StepKind::Pick:
        return text + " " + step.value;
      case StepKind::Set:
        return text + " " + (step.date ? DateText(*step.date) : TimeText(step.time.value_or(0.0)));
      case StepKind::Select:
        return text + " " + RowsText(step.rows);
      default:
        return text;
    }
  }
  return {};
}

std::string ShownValue(const Control& control) {
  switch (control.kind) {
    case ControlKind::TextBox: return control.text;
    case ControlKind::ComboBox:
      return control.listIndex >= 0 && static_cast<std::size_t>(control.listIndex) < control.items.size()
                 ? control.items[static_cast<std::size_t>(control.listIndex)]
                 : std::string();
    case ControlKind::DatePicker: return DateText(control.value);
    case ControlKind::TimePicker: return TimeText(control.value);
    case ControlKind::OptionButton:
    case ControlKind::CheckBox: return control.checked ? "checked" : "unchecked";
    case ControlKind::Page: return control.visible ? "shown" : "hidden";
    case ControlKind::ListView: return JoinRows(control);
    default: return control.caption;
  }
}

}  // namespace scenario
