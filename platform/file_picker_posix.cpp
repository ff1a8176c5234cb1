// Without a desktop there is nothing to pick from: both pickers answer as
// a user who cancels.
#include "platform/file_picker.h"

namespace qorvane {
namespace {

class NoPicker final : public FilePickerService {
 public:
  std::string OpenFile(const OpenFileRequest&) override { return {}; }
  std::string OpenFolder(std::size_t) override { return {}; }
};

}  // namespace

FilePickerService& PlatformFilePicker() {
  static NoPicker picker;
  return picker;
}

}  // namespace qorvane
