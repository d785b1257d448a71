#include <shobjidl.h>
#include <windows.h>

#include "platform/uTaskbar.h"

namespace {

ITaskbarList3* MakeTaskbar() noexcept {
  void* made = nullptr;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  if (CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3, &made) != S_OK)
    return nullptr;
  auto* taskbar = static_cast<ITaskbarList3*>(made);
  return taskbar->HrInit() == S_OK ? taskbar : nullptr;
}

}  // namespace

// The one object is kept until the program ends.
void ShowTaskbarProgress(std::uintptr_t window, int percent) noexcept {
  static ITaskbarList3* const kTaskbar = MakeTaskbar();
  if (kTaskbar == nullptr) return;
  auto* handle = reinterpret_cast<HWND>(window);
  if (percent < 0) {
    kTaskbar->SetProgressState(handle, TBPF_NOPROGRESS);
  } else {
    kTaskbar->SetProgressValue(handle, static_cast<ULONGLONG>(percent), 100);
  }
}
