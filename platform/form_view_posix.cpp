// Without a window system there is nobody to answer a dialog: every form is
// loaded and closed at once, as if the user had pressed its close box, so a
// command that needs an answer ends as cancelled instead of waiting forever.
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
