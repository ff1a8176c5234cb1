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

Control& Form::Add(ControlKind kind, std::string controlName, std::string caption, std::string container) {
  Control& control = controls.emplace_back();
  control.kind = kind;
  control.name = std::move(controlName);
  control.caption = std::move(caption);
  control.container = std::move(container);
  return control;
}

bool Form::Shown(std::string_view controlName) const {
  // Containers nest only a few deep; the bound stops a form whose containers
  // name each other in a circle.
  const Control* control = &(*this)[controlName];
  for (std::size_t depth = 0; depth <= controls.size(); ++depth) {
    if (!control->visible) return false;
    if (control->container.empty()) return true;
    control = FindControl(controls, control->container);
    if (!control) return true;
  }
  return false;
}

void Form::SelectOption(std::string_view controlName) {
  Control& chosen = (*this)[controlName];
  for (Control& control : controls) {
    if (control.kind == ControlKind::OptionButton && control.container == chosen.container) control.checked = false;
  }
  chosen.checked = true;
}

bool MoveFocus(Form& form, std::string_view target) {
  if (form.activeControl == target) return true;
  if (!form.activeControl.empty() && form.Has(form.activeControl) && form[target].causesValidation &&
      !form.Validate(form.activeControl))
    return false;
  form.activeControl = std::string(target);
  return true;
}

FormView& CurrentFormView() { return g_current ? *g_current : PlatformFormView(); }
void SetFormView(FormView* view) { g_current = view; }
void ShowModal(Form& form) { CurrentFormView().ShowModal(form); }

}  // namespace qorvane::forms
