// Which dialog template among the add-in's resources shows which form, and
// which window of the template shows which control of the form. The
// templates are platform/form_resources/*.rc, their numbers ids.h.
//
// Windows only; kept free of Windows headers so that the tests and the
// screenshot program name controls as the forms do.
#pragma once

#include <span>
#include <string_view>

namespace qorvane::forms {

struct TemplateControl {
  std::string_view name;  // the form's control: "btnOk", "arWeekDays(3)"
  int id = 0;             // its window in the template; 0 for a page, which has none
};

struct FormTemplate {
  std::string_view form;  // "frmOnce"
  int resourceId = 0;     // the DIALOGEX resource
  std::span<const TemplateControl> controls;
};

std::span<const FormTemplate> FormTemplates();
// nullptr for a form that no template shows.
const FormTemplate* FindFormTemplate(std::string_view formName);
// The window id of a control of the template; 0 when it has no window.
int TemplateControlId(const FormTemplate& layout, std::string_view controlName);
// The control shown by a window id; empty for a window that shows none.
std::string_view TemplateControlName(const FormTemplate& layout, int id);

}  // namespace qorvane::forms
