// Without a windowing system the prompt goes to stderr and the first button
// is the answer, so a run without a user neither blocks nor loses the text.
#include <cstdio>

#include "platform/message_box.h"

namespace qorvane {
namespace {

class StderrMessageBox final : public MessageBoxService {
 public:
  long Show(const std::string& prompt, long buttons, const std::string& title) override {
    std::fprintf(stderr, "[%s] %s\n", title.c_str(), prompt.c_str());
    switch (buttons & 7) {
      case vbYesNo:
      case vbYesNoCancel: return vbYes;
      default: return vbOK;
    }
  }
};

}  // namespace

MessageBoxService& PlatformMessageBox() {
  static StderrMessageBox box;
  return box;
}

}  // namespace qorvane
