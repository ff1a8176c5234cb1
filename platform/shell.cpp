// The current shell service.
#include "platform/shell.h"

namespace qorvane {
namespace {
ShellService* g_current = nullptr;
}  // namespace

ShellService& CurrentShell() { return g_current ? *g_current : PlatformShell(); }
void SetShell(ShellService* shell) { g_current = shell; }

}  // namespace qorvane
