// The scripted user: queued steps played into the form shown, as the
// Windows view would deliver a person's clicks and keys.
#include "scenario/scripted_user.h"

#include <algorithm>

#include "base/ole_date.h"
#include "base/runtime_text.h"
#include "base/utf8_text.h"
#include "scenario/scripted_user_decisions.h"

namespace scenario {
namespace {

using qorvane::forms::Control;
using qorvane::forms::ControlKind;
using qorvane::forms::Form;

// Focus asked for by a handler (SetFocus) moves at once, as the view does.
void ApplyFocusRequest(Form& form) {
  if (form.focusRequest.empty()) return;
  form.activeControl = form.focusRequest;
  form.focusRequest.clear();
}

// The scripted user's pickers current for one step; a step played inside
// another (a dialog shown by a handler) finds them in place already.
class ChosenPathsInPlace {
 public:
  explicit ChosenPathsInPlace(qorvane::FilePickerService& chosen, qorvane::FilePickerService*& fallback)
      : previous_(&qorvane::CurrentFilePicker()), installed_(previous_ != &chosen) {
    if (!installed_) return;
    fallback = previous_;
    qorvane::SetFilePicker(&chosen);
  }
  ~ChosenPathsInPlace() {
    if (installed_) qorvane::SetFilePicker(previous_ == &qorvane::PlatformFilePicker() ? nullptr : previous_);
  }
  ChosenPathsInPlace(const ChosenPathsInPlace&) = delete;
  ChosenPathsInPlace& operator=(const ChosenPathsInPlace&) = delete;

 private:
  qorvane::FilePickerService* previous_;
  bool installed_;
};

bool Expected(const Form& form, const Step& step, std::string& shown) {
  if (step.control == "form") return (shown = form.name) == step.value;
  if (step.control == "focus") return (shown = form.activeControl) == step.value;
  const Control& control = form[step.control];
  const std::string word = qorvane::LCase(step.value);
  if (word == "enabled" || word == "disabled") return (shown = control.enabled ? "enabled" : "disabled") == word;
  if ((word == "shown" || word == "hidden") && control.kind != ControlKind::Page)
    return (shown = form.Shown(step.control) ? "shown" : "hidden") == word;
  shown = ShownValue(control);
  if (control.kind == ControlKind::OptionButton || control.kind == ControlKind::CheckBox ||
      control.kind == ControlKind::Page)
    return shown == word;
  return shown == step.value;
}

}  // namespace

bool ScriptedUser::Queue(std::string_view text, std::string* error) {
  if (IsStepLine(text)) {
    ParsedStep parsed = ParseStep(text);
    if (!parsed.step) {
      if (error) *error = parsed.error;
      return false;
    }
    Queue(std::move(*parsed.step));
    return true;
  }
  ParsedAnswer parsed = ParseAnswer(text);
  if (!parsed.answer) {
    if (error) *error = parsed.error;
    return false;
  }
  Queue(std::move(*parsed.answer));
  return true;
}

void ScriptedUser::Queue(Answer answer) { queue_.push_back({std::move(answer), 0}); }
void ScriptedUser::Queue(Step step) { queue_.push_back({std::move(step), 0}); }

std::size_t ScriptedUser::Count(std::string_view form) const {
  return static_cast<std::size_t>(
      std::count_if(shown_.begin(), shown_.end(), [&](const ShownDialog& shown) { return shown.form == form; }));
}

void ScriptedUser::Record(const Form& form) {
  ShownDialog shown;
  shown.form = form.name;
  shown.keepOnTop = g_HandOver.m_OnTop;
  shown.openerRect = g_HandOver.m_OpenerRect;
  if (g_HandOver.m_MailProps) shown.sendTimeShown = g_HandOver.m_MailProps->m_ScheduleTime;
  shown_.push_back(std::move(shown));
}

void ScriptedUser::Notify(const Form& form, const std::string& event) const {
  if (observer_) observer_(form, event);
}

void ScriptedUser::Problem(const Form& form, const Step& step, const std::string& what) {
  problems_.push_back(form.name + ": " + StepText(step) + ": " + what);
}

void ScriptedUser::DropDecision(int decision) {
  if (decision == 0) return;
  queue_.erase(std::remove_if(queue_.begin(), queue_.end(), [&](const Entry& entry) { return entry.decision == decision; }),
               queue_.end());
}

void ScriptedUser::Expand(const Answer& answer, const Form& form) {
  const Decision decision = DecideIn(answer, form);
  const int id = ++decisions_;
  // In front of what is queued, in their order; a decision for the other
  // dialog follows the switch to it.
  if (decision.switchesDialog) queue_.push_front({answer, 0});
  for (auto step = decision.steps.rbegin(); step != decision.steps.rend(); ++step) queue_.push_front({*step, id});
}

void ScriptedUser::ShowModal(Form& form) {
  Record(form);
  form.Load();
  ApplyFocusRequest(form);
  Notify(form, "shown");
  while (!form.unloaded) {
    if (queue_.empty()) {
      form.QueryClose();
      break;
    }
    Entry entry = std::move(queue_.front());
    queue_.pop_front();
    if (const Answer* answer = std::get_if<Answer>(&entry.what)) {
      Expand(*answer, form);
      continue;
    }
    const Step& step = std::get<Step>(entry.what);
    const bool played = Play(form, step);
    Notify(form, StepText(step) + (played ? "" : " (refused)"));
    if (!played || form.unloaded) DropDecision(entry.decision);
  }
  Notify(form, "closed");
}

bool ScriptedUser::Act(Form& form, std::string_view text) {
  ParsedStep parsed = ParseStep(text);
  if (!parsed.step) {
    problems_.push_back(form.name + ": " + parsed.error);
    return false;
  }
  return Play(form, *parsed.step);
}

std::string ScriptedUser::ChosenPaths::OpenFile(const qorvane::OpenFileRequest& request) {
  if (paths.empty()) return fallback ? fallback->OpenFile(request) : std::string();
  std::string path = std::move(paths.front());
  paths.pop_front();
  return path;
}

std::string ScriptedUser::ChosenPaths::OpenFolder(std::size_t bufferChars) {
  if (paths.empty()) return fallback ? fallback->OpenFolder(bufferChars) : std::string();
  std::string path = std::move(paths.front());
  paths.pop_front();
  return path;
}

bool ScriptedUser::Play(Form& form, const Step& step) {
  const ChosenPathsInPlace pickers(chosen_, chosen_.fallback);
  try {
    const bool played = PlayStep(form, step);
    ApplyFocusRequest(form);
    return played;
  } catch (const std::exception& error) {
    // A control the form lacks (error 9) or a handler that let a failure out.
    Problem(form, step, error.what());
    return false;
  }
}

bool ScriptedUser::PlayStep(Form& form, const Step& step) {
  if (step.kind == StepKind::Choose) {
    chosen_.paths.push_back(step.value);
    return true;
  }
  if (step.kind == StepKind::Close) {
    form.QueryClose();
    return true;
  }
  if (step.kind == StepKind::Expect) {
    std::string shown;
    if (!Expected(form, step, shown)) Problem(form, step, "shows \"" + shown + "\"");
    return true;
  }
  if (step.kind == StepKind::Press) {
    if (step.control == "f1") {
      form.Help();
      return true;
    }
    const std::string& button = step.control == "enter" ? form.defaultButton : form.cancelButton;
    if (button.empty()) return true;  // the key does nothing in this dialog
    Step click{StepKind::Click, button, {}, {}, {}, {}};
    return PlayStep(form, click);
  }
  if (step.kind == StepKind::Leave) {
    if (form.activeControl != step.control) {
      Problem(form, step, "the focus is on \"" + form.activeControl + "\"");
      return false;
    }
    if (!form.Validate(step.control)) return false;
    form.activeControl.clear();
    return true;
  }

  Control& control = form[step.control];
  if (!form.Shown(step.control) || !control.enabled) {
    Problem(form, step, form.Shown(step.control) ? "the control is disabled" : "the control is not shown");
    return false;
  }
  const auto expectKind = [&](bool right) {
    if (!right) Problem(form, step, "not a control this step works on");
    return right;
  };
  // A label takes no focus: clicking one (a link) only runs its handler.
  if (control.kind == ControlKind::Label && step.kind == StepKind::Click) {
    form.Click(step.control);
    return true;
  }
  switch (step.kind) {
    case StepKind::Click:
      if (!expectKind(control.kind == ControlKind::Button || control.kind == ControlKind::OptionButton ||
                      control.kind == ControlKind::CheckBox || control.kind == ControlKind::ListView))
        return false;
      if (!qorvane::forms::MoveFocus(form, step.control)) return false;
      if (control.kind == ControlKind::OptionButton) form.SelectOption(step.control);
      if (control.kind == ControlKind::CheckBox) control.checked = !control.checked;
      form.Click(step.control);
      return true;
    case StepKind::Check:
    case StepKind::Uncheck: {
      if (!expectKind(control.kind == ControlKind::CheckBox)) return false;
      if (control.checked == (step.kind == StepKind::Check)) return true;
      Step click{StepKind::Click, step.control, {}, {}, {}, {}};
      return PlayStep(form, click);
    }
    case StepKind::Type:
      if (!expectKind(control.kind == ControlKind::TextBox)) return false;
      if (!qorvane::forms::MoveFocus(form, step.control)) return false;
      control.text = step.value;
      control.selStart = static_cast<int>(qorvane::TextLength(control.text));
      form.Change(step.control);
      return true;
    case StepKind::Set: {
      const bool date = control.kind == ControlKind::DatePicker && step.date;
      const bool time = control.kind == ControlKind::TimePicker && step.time;
      if (!expectKind(date || time)) return false;
      if (!qorvane::forms::MoveFocus(form, step.control)) return false;
      // A picker changes the fields the user edits and keeps the others.
      if (date) {
        control.value = *step.date + qorvane::TimePart(control.value);
      } else {
        const qorvane::TimeOfDay picked = qorvane::ToTimeOfDay(*step.time);
        const qorvane::TimeOfDay kept = qorvane::ToTimeOfDay(control.value);
        control.value = qorvane::DatePart(control.value) + qorvane::TimeSerial(picked.hour, picked.minute, kept.second);
      }
      form.Change(step.control);
      return true;
    }
    case StepKind::Pick: {
      if (!expectKind(control.kind == ControlKind::ComboBox)) return false;
      const auto item = std::find_if(control.items.begin(), control.items.end(), [&](const std::string& text) {
        return qorvane::LCase(text) == qorvane::LCase(step.value);
      });
      if (item == control.items.end()) {
        Problem(form, step, "the list has no such item");
        return false;
      }
      if (!qorvane::forms::MoveFocus(form, step.control)) return false;
      control.listIndex = static_cast<int>(item - control.items.begin());
      form.Click(step.control);
      return true;
    }
    case StepKind::Select: {
      if (!expectKind(control.kind == ControlKind::ListView)) return false;
      for (int row : step.rows) {
        if (static_cast<std::size_t>(row) > control.rows.size()) {
          Problem(form, step, "the list has " + std::to_string(control.rows.size()) + " rows");
          return false;
        }
      }
      if (!qorvane::forms::MoveFocus(form, step.control)) return false;
      for (std::size_t i = 0; i < control.rows.size(); ++i)
        control.rows[i].selected =
            std::find(step.rows.begin(), step.rows.end(), static_cast<int>(i + 1)) != step.rows.end();
      form.Click(step.control);
      return true;
    }
    default:
      return false;
  }
}

ScopedFormView::ScopedFormView(qorvane::forms::FormView& view) : previous_(&qorvane::forms::CurrentFormView()) {
  qorvane::forms::SetFormView(&view);
}

ScopedFormView::~ScopedFormView() {
  qorvane::forms::SetFormView(previous_ == &qorvane::forms::PlatformFormView() ? nullptr : previous_);
}

ScopedDialogService::ScopedDialogService(dialogs::DialogService& service)
    : previous_(&dialogs::CurrentDialogService()) {
  dialogs::SetDialogService(&service);
}

ScopedDialogService::~ScopedDialogService() {
  dialogs::SetDialogService(previous_ == &dialogs::FormDialogs() ? nullptr : previous_);
}

}  // namespace scenario
