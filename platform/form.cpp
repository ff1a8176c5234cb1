// Control lookup, option groups and the current form view.
#include "platform/form.h"

#include "base/runtime_error.h"

namespace qorvane::forms {
namespace {

FormView* g_current = nullptr;

template <class Controls>
auto* FindControl(Controls& controls, std::string_view controlName) {
  for (auto& control : controls) {
    if (control.name == controlName) return &control;
  }
  return static_cast<decltype(&controls.front())>(nullptr);
}

}  // namespace

Control& Form::operator[](std::string_view controlName) {
  if (Control* control = FindControl(controls, controlName)) return *control;
  Raise(err::kSubscriptOutOfRange, "No control " + std::string(controlName) + " on " + name);
}

const Control& Form::operator[](std::string_view controlName) const {
  if (const Control* control = FindControl(controls, controlName)) return *control;
  Raise(err::kSubscriptOutOfRange, "No control " + std::string(controlName) + " on " + name);
}

bool Form::Has(std::string_view controlName) const { return FindControl(controls, controlName) != nullptr; }

void Form::SelectOption(std::string_view controlName) {
  Control& chosen = (*this)[controlName];
  for (Control& control : controls) {
    if (control.kind == ControlKind::OptionButton && control.container == chosen.container) control.checked = false;
  }
  chosen.checked = true;
}

FormView& CurrentFormView() { return g_current ? *g_current : PlatformFormView(); }
void SetFormView(FormView* view) { g_current = view; }
void ShowModal(Form& form) { CurrentFormView().ShowModal(form); }

}  // namespace qorvane::forms
