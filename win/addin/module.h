// The add-in DLL as a module: its handle, the COM objects and server locks
// that keep it loaded, its activation context (so that windows it makes use
// the common controls its manifest asks for), and what it must let go of
// before it may be unloaded.
//
// Windows only; every call on the client's UI thread except DllMain's.
#pragma once

#include <windows.h>

#include <string>

namespace addin_module {

// Set once by DllMain.
void SetHandle(HINSTANCE module) noexcept;
HINSTANCE Handle() noexcept;
// The DLL's full path ("" when the system cannot tell).
std::wstring Path();

// Every COM object of the DLL counts itself while it lives; when the last
// one goes, the module lets go of its hidden timer window and activation
// context, so that nothing of it is left in the client when it unloads.
void ObjectCreated() noexcept;
void ObjectDestroyed() noexcept;
void Lock(bool lock) noexcept;
// No object alive and no lock: the client may unload the DLL.
bool CanUnload() noexcept;

// The activation context of the DLL's own manifest (resource 2), made on
// first use; INVALID_HANDLE_VALUE when it cannot be made.
HANDLE ActivationContext() noexcept;

}  // namespace addin_module
