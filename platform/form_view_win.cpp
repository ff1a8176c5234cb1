// The Win32 dialogs take this place; until they are built, every form is
// loaded and closed at once, as if the user had pressed its close box.
#include "platform/form.h"

namespace qorvane::forms {
namespace {

class NoWindowView final : public FormView {
 public:
  void ShowModal(Form& form) override {
    form.Load();
    if (!form.unloaded) form.QueryClose();
  }
};

}  // namespace

FormView& PlatformFormView() {
  static NoWindowView view;
  return view;
}

}  // namespace qorvane::forms
