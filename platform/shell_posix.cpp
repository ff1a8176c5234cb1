// Nothing to open without a desktop shell: a help page, a web page or a mail
// link is reported as not opened, which the callers take as "no help shown".
#include "platform/shell.h"

namespace qorvane {
namespace {

class NoShell final : public ShellService {
 public:
  bool Open(const std::string&) override { return false; }
  bool ShowHelpTopic(const std::string&, const std::string&) override { return false; }
};

}  // namespace

ShellService& PlatformShell() {
  static NoShell shell;
  return shell;
}

}  // namespace qorvane
