// The current file pickers.
#include "platform/file_picker.h"

namespace qorvane {
namespace {
FilePickerService* g_current = nullptr;
}  // namespace

FilePickerService& CurrentFilePicker() { return g_current ? *g_current : PlatformFilePicker(); }
void SetFilePicker(FilePickerService* picker) { g_current = picker; }

}  // namespace qorvane
