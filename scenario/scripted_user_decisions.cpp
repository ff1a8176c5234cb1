// The control steps of each decision.
#include "scenario/scripted_user_decisions.h"

#include <string>

#include "base/ole_date.h"
#include "schedule/mail_props.h"

namespace scenario {
namespace {

Step Click(std::string control) { return Step{StepKind::Click, std::move(control), {}, {}, {}, {}}; }
Step Type(std::string control, std::string text) {
  return Step{StepKind::Type, std::move(control), std::move(text), {}, {}, {}};
}
Step Pick(std::string control, std::string item) {
  return Step{StepKind::Pick, std::move(control), std::move(item), {}, {}, {}};
}
Step SetDate(std::string control, double date) { return Step{StepKind::Set, std::move(control), {}, date, {}, {}}; }
Step SetTime(std::string control, double time) { return Step{StepKind::Set, std::move(control), {}, {}, time, {}}; }

using qorvane::forms::Control;

// The list's item for a number from 1 (an instance, a month); out of range,
// the number itself, which the list then refuses as it would a typo.
std::string ItemAt(const Control& list, std::int32_t number) {
  return number >= 1 && static_cast<std::size_t>(number) <= list.items.size()
             ? list.items[static_cast<std::size_t>(number - 1)]
             : std::to_string(number);
}

// The weekday list's item for a mask ("weekend day" for 65).
std::string ItemWithData(const Control& list, std::int32_t data) {
  for (std::size_t i = 0; i < list.itemData.size() && i < list.items.size(); ++i) {
    if (list.itemData[i] == data) return list.items[i];
  }
  return std::to_string(data);
}

std::string ButtonOf(Button button) { return button == Button::OK ? "btnOK" : "btnCancel"; }

void PatternSteps(const RecurrenceAnswer& a, const qorvane::forms::Form& form, std::vector<Step>& steps) {
  const std::string interval = std::to_string(a.interval);
  switch (a.recurrenceType) {
    case qorvane::kRecursDaily:
      steps.push_back(Click("optDaily"));
      if (a.everyWeekday) {
        steps.push_back(Click("optEveryWeekday1"));
      } else {
        steps.push_back(Type("txtInterval1", interval));
      }
      break;
    case qorvane::kRecursWeekly:
      steps.push_back(Click("optWeekly"));
      steps.push_back(Type("txtInterval2", interval));
      for (int i = 0; i < 7; ++i) {
        const bool wanted = (a.dayOfWeekMask >> i) & 1;
        steps.push_back(Step{wanted ? StepKind::Check : StepKind::Uncheck, "arWeekDays(" + std::to_string(i) + ")",
                             {}, {}, {}, {}});
      }
      break;
    case qorvane::kRecursMonthly:
      steps.push_back(Click("optMonthly"));
      steps.push_back(Type("txtDayOfMonth3", std::to_string(a.dayOfMonth)));
      steps.push_back(Type("txtInterval3", interval));
      break;
    case qorvane::kRecursMonthNth:
      steps.push_back(Click("optMonthly"));
      steps.push_back(Pick("cboInstance3", ItemAt(form["cboInstance3"], a.instance)));
      steps.push_back(Pick("cboDayOfWeekMask3", ItemWithData(form["cboDayOfWeekMask3"], a.dayOfWeekMask)));
      steps.push_back(Type("txtInterval33", interval));
      break;
    case qorvane::kRecursYearly:
      steps.push_back(Click("optYearly"));
      steps.push_back(Pick("cboMonthOfYear4", ItemAt(form["cboMonthOfYear4"], a.monthOfYear)));
      steps.push_back(Type("txtDayOfMonth4", std::to_string(a.dayOfMonth)));
      break;
    case qorvane::kRecursYearNth:
      steps.push_back(Click("optYearly"));
      steps.push_back(Pick("cboInstance4", ItemAt(form["cboInstance4"], a.instance)));
      steps.push_back(Pick("cboDayOfWeekMask4", ItemWithData(form["cboDayOfWeekMask4"], a.dayOfWeekMask)));
      steps.push_back(Pick("cboMonthOfYear44", ItemAt(form["cboMonthOfYear44"], a.monthOfYear)));
      break;
    default:
      break;
  }
}

std::vector<Step> RecurrenceSteps(const RecurrenceAnswer& a, const qorvane::forms::Form& form) {
  std::vector<Step> steps;
  if (a.startTime) steps.push_back(SetTime("ctlStartTime", *a.startTime));
  if (a.startDate) steps.push_back(SetDate("ctlStartDate", *a.startDate));
  PatternSteps(a, form, steps);
  switch (a.end) {
    case RecurrenceEnd::NoEnd:
      steps.push_back(Click("optNoEndDate"));
      break;
    case RecurrenceEnd::AfterOccurrences:
      steps.push_back(Type("txtOccurrences", std::to_string(a.occurrences)));
      steps.push_back(Step{StepKind::Leave, "txtOccurrences", {}, {}, {}, {}});
      break;
    case RecurrenceEnd::ByDate:
      steps.push_back(SetDate("ctlEndDate", a.endDate));
      break;
  }
  steps.push_back(Click(ButtonOf(a.button)));
  return steps;
}

}  // namespace

Decision DecideIn(const Answer& answer, const qorvane::forms::Form& form) {
  Decision decision;
  if (std::holds_alternative<CancelAnswer>(answer)) {
    decision.steps.push_back(form.cancelButton.empty() ? Step{StepKind::Close, {}, {}, {}, {}, {}}
                                                       : Click(form.cancelButton));
    return decision;
  }
  if (const auto* once = std::get_if<OnceAnswer>(&answer)) {
    if (form.name == "frmRecurrence") {
      decision.steps.push_back(Click("btnRemoveRec"));
      decision.switchesDialog = true;
    } else if (form.name == "frmOnce") {
      decision.steps.push_back(SetDate("ctlDate", qorvane::DatePart(once->sendTime)));
      decision.steps.push_back(SetTime("ctlTime", qorvane::TimePart(once->sendTime)));
      decision.steps.push_back(Click(once->button == Button::OK ? "btnOk" : "btnCancel"));
    } else {
      decision.steps.push_back(Step{StepKind::Close, {}, {}, {}, {}, {}});
    }
    return decision;
  }
  const auto& pattern = std::get<RecurrenceAnswer>(answer);
  if (form.name == "frmOnce") {
    decision.steps.push_back(Click("optRecurrence"));
    decision.switchesDialog = true;
  } else if (form.name == "frmRecurrence") {
    decision.steps = RecurrenceSteps(pattern, form);
  } else {
    decision.steps.push_back(Step{StepKind::Close, {}, {}, {}, {}, {}});
  }
  return decision;
}

}  // namespace scenario
